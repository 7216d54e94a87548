#pragma once

#include <QtMath>

// Positions on the canvas are kept in twips, 15 to a pixel at 96 dpi.
namespace Twips {
constexpr float PerPixel = 15.0f;
inline int toPixels(float twips)
{
    return qRound(twips / PerPixel);
}
inline float fromPixels(qreal pixels)
{
    return float(pixels * PerPixel);
}
} // namespace Twips
