#pragma once

class VorelDirection;
class VorelModule;

// Shapes an arrow so that it leads from one module to another: along the
// line between their centres, from the edge of the first box to the edge of
// the second, as the boxes are shown. A module linked to itself gets a small
// loop over its top right corner. Visibility is the caller's business.
class ArrowPlacer
{
public:
    static void Place(VorelModule *fromModule, VorelModule *toModule, VorelDirection *arrow);
};
