#pragma once

#include <QtMath>

// Positions on the canvas are kept in twips, 15 to a pixel at 96 dpi.
namespace Twips {
constexpr float PerPixel = 15.0f;
// How far from the canvas origin anything is shown: a million pixels, far
// beyond any canvas, well inside what Qt's int geometry and its raster
// engine take. A script may hold any float position; the control keeps it
// as given and only its picture stops here.
constexpr float Reach = 1'000'000 * PerPixel;

inline float bounded(float twips)
{
    return qBound(-Reach, twips, Reach);
}
inline int toPixels(float twips)
{
    return qRound(bounded(twips) / PerPixel);
}
inline float fromPixels(qreal pixels)
{
    return float(pixels * PerPixel);
}
} // namespace Twips
