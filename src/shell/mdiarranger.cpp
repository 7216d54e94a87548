#include "mdiarranger.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace ivr {

void MdiArranger::arrange(QMdiArea *area, int style)
{
    switch (style) {
    case Cascade:
        area->cascadeSubWindows();
        break;
    case TileHorizontal:
        tile(area, true);
        break;
    case TileVertical:
        tile(area, false);
        break;
    case ArrangeIcons:
        arrangeIcons(area);
        break;
    default:
        break;
    }
}

void MdiArranger::tile(QMdiArea *area, bool horizontal)
{
    QList<QMdiSubWindow *> windows;
    for (QMdiSubWindow *window : area->subWindowList(QMdiArea::CreationOrder)) {
        if (window->isVisible() && !window->isMinimized())
            windows << window;
    }
    if (windows.isEmpty())
        return;
    // Minimized windows keep the bottom row, as their icons do.
    const bool icons = area->subWindowList().size() != windows.size();
    QRect room = area->viewport()->rect();
    if (icons && !windows.isEmpty())
        room.setBottom(room.bottom() - windows.constFirst()->minimumSizeHint().height());
    const int count = int(windows.size());
    for (int i = 0; i < count; ++i) {
        QMdiSubWindow *window = windows.at(i);
        if (window->isMaximized())
            window->showNormal();
        QRect cell;
        if (horizontal) {
            const int top = room.top() + room.height() * i / count;
            const int bottom = room.top() + room.height() * (i + 1) / count;
            cell = QRect(room.left(), top, room.width(), bottom - top);
        } else {
            const int left = room.left() + room.width() * i / count;
            const int right = room.left() + room.width() * (i + 1) / count;
            cell = QRect(left, room.top(), right - left, room.height());
        }
        window->setGeometry(cell);
    }
}

void MdiArranger::arrangeIcons(QMdiArea *area)
{
    const QRect room = area->viewport()->rect();
    int left = room.left();
    int bottom = room.bottom() + 1;
    for (QMdiSubWindow *window : area->subWindowList(QMdiArea::CreationOrder)) {
        if (!window->isMinimized())
            continue;
        const QSize size = window->size();
        if (left + size.width() > room.right() && left > room.left()) {
            left = room.left();
            bottom -= size.height();
        }
        window->move(left, bottom - size.height());
        left += size.width();
    }
}

} // namespace ivr
