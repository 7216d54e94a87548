#pragma once

#include <QLineF>
#include <QRectF>

class VorelDirection;
class VorelModule;

// Shapes an arrow so that it leads from one module to another: along the
// line between their centres, from the edge of the first box to the edge of
// the second. A module linked to itself gets a small loop over its top right
// corner. Visibility is the caller's business.
class ArrowPlacer
{
public:
    static void Place(VorelModule *fromModule, VorelModule *toModule, VorelDirection *arrow);

    // The geometry alone, in twips: the segment between the centres of two
    // boxes, clipped to both. Boxes that overlap give the unclipped segment.
    static QLineF edgeToEdge(const QRectF &from, const QRectF &to);
    // Half the side of the square box of a loop, in twips.
    static constexpr float LoopReach = 300.0f;
};
