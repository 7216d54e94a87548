#include "scriptcanvas.h"

#include "arrowlayer.h"

#include <QMouseEvent>

namespace ivr {

ScriptCanvas::ScriptCanvas(QWidget *parent)
    : QWidget(parent)
    , m_arrows(new ArrowLayer(this))
{
    setObjectName(QStringLiteral("picMain"));
    setAccessibleName(tr("Script canvas"));
    // The pointer shape follows the armed tool even with no button down.
    setMouseTracking(true);
    setAutoFillBackground(true);
}

void ScriptCanvas::mouseMoveEvent(QMouseEvent *event)
{
    event->accept(); // passed on, the window and the frame would reset the pointer
    emit mouseMoved();
}

void ScriptCanvas::mouseReleaseEvent(QMouseEvent *event)
{
    emit mouseReleased(event->button(), event->position(), event->globalPosition());
}

} // namespace ivr
