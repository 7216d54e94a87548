#include "spinbox.h"

#include <cmath>

namespace ivr {

namespace {

// The fewest decimals that show the value exactly (up to six).
int decimalsFor(double value)
{
    for (int decimals = 0; decimals < 6; ++decimals) {
        const double scale = std::pow(10.0, decimals);
        if (std::nearbyint(value * scale) / scale == value)
            return decimals;
    }
    return 6;
}

} // namespace

SpinBox::SpinBox(QWidget *parent)
    : QDoubleSpinBox(parent)
{
    setDecimals(0);
    setKeyboardTracking(true);
}

std::pair<double, double> SpinBox::statedRange()
{
    if (!m_stated)
        m_stated = std::make_pair(minimum(), maximum());
    return *m_stated;
}

void SpinBox::setStoredValue(double value)
{
    const auto [low, high] = statedRange();
    setDecimals(qMax(decimals(), decimalsFor(value)));
    setRange(qMin(low, value), qMax(high, value));
    setValue(value);
}

void SpinBox::stepBy(int steps)
{
    const auto [low, high] = statedRange();
    setValue(qBound(low, value() + steps * singleStep(), high));
}

} // namespace ivr
