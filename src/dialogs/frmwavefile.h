#pragma once

#include "definition.h"
#include "propertydialog.h"

#include <array>
#include <memory>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace Ui {
class frmWaveFile;
}

namespace ivr {

// The script's table of spoken-number and month wave files and its beep
// file (Select Wave Files). Modal: Popup returns once it has ended. The two
// slot tables are edited in working copies; only a browse marks the dialog
// as edited, so typed paths alone are not written.
class frmWaveFile : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmWaveFile(QWidget *parent = nullptr);
    ~frmWaveFile() override;

    int helpContext() const override { return 14; }

    // The texts of cboNumber, in slot order.
    static QStringList numberSlots();

protected:
    void Load() override;
    void CommitFields() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // How a browse treats the picker's title and name before it shows.
    enum class Picker { Fresh, AsItStands };
    void browse(QLineEdit *target, Picker picker);

    std::unique_ptr<Ui::frmWaveFile> ui;
    std::array<QString, Definition::FileNameSlots> m_numbers;
    std::array<QString, Definition::MonthFileSlots> m_months;
};

} // namespace ivr
