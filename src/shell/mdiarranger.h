#pragma once

class QMdiArea;

namespace ivr {

// The four arrangements of the Window menu. QMdiArea tiles only as a grid,
// so the two tilings are laid out here: horizontal puts the windows one
// above the other, each as wide as the area; vertical puts them side by side.
class MdiArranger
{
public:
    enum Style { Cascade = 0, TileHorizontal = 1, TileVertical = 2, ArrangeIcons = 3 };

    static void arrange(QMdiArea *area, int style);

private:
    static void tile(QMdiArea *area, bool horizontal);
    static void arrangeIcons(QMdiArea *area);
};

} // namespace ivr
