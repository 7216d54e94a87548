#pragma once

#include <QDoubleSpinBox>

#include <optional>
#include <utility>

namespace ivr {

// The dialogs' spin control. A stored value outside the stated range is held
// as it is (the range widens to take it, and enough decimals show it), so an
// OK without an edit writes back what was read; the arrows still step
// within the stated range.
class SpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit SpinBox(QWidget *parent = nullptr);

    void setStoredValue(double value);
    void stepBy(int steps) override;

private:
    std::pair<double, double> statedRange();

    std::optional<std::pair<double, double>> m_stated;
};

} // namespace ivr
