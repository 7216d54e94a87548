#include "screenpointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace ivr {

namespace {
int g_current = ScreenPointer::Default;

Qt::CursorShape shapeOf(int pointer)
{
    switch (pointer) {
    case ScreenPointer::Cross:
        return Qt::CrossCursor;
    case ScreenPointer::Hourglass:
        return Qt::WaitCursor;
    default:
        return Qt::ArrowCursor;
    }
}
} // namespace

void ScreenPointer::set(int pointer)
{
    if (pointer == Default) {
        while (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
    } else if (QGuiApplication::overrideCursor()) {
        QGuiApplication::changeOverrideCursor(QCursor(shapeOf(pointer)));
    } else {
        QGuiApplication::setOverrideCursor(QCursor(shapeOf(pointer)));
    }
    g_current = pointer;
}

int ScreenPointer::current()
{
    return QGuiApplication::overrideCursor() ? g_current : Default;
}

} // namespace ivr
