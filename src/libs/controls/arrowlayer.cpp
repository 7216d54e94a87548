#include "arrowlayer.h"

#include "twips.h"
#include "voreldirection.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

namespace {

using MouseSignal
        = void (VorelDirection::*)(qint16, Qt::MouseButton, Qt::KeyboardModifiers, float, float);

// Tells an arrow of a press or release as a control of its own reports one:
// in twips inside its box.
void report(VorelDirection *arrow, MouseSignal signal, const QMouseEvent &mouse)
{
    const QPointF inside = mouse.position() - arrow->geometry().topLeft();
    emit(arrow->*signal)(arrow->Index(),
                         mouse.button(),
                         mouse.modifiers(),
                         Twips::fromPixels(inside.x()),
                         Twips::fromPixels(inside.y()));
}

} // namespace

ArrowLayer::ArrowLayer(QWidget *canvas)
    : QObject(canvas)
    , m_canvas(canvas)
{
    if (m_canvas)
        m_canvas->installEventFilter(this);
}

ArrowLayer::~ArrowLayer()
{
    // The arrows still loaded go with the layer as its children; they have
    // no layer left to leave.
    for (VorelDirection *arrow : m_arrows)
        arrow->m_layer = nullptr;
}

void ArrowLayer::attach(VorelDirection *arrow)
{
    arrow->m_slot = m_arrows.size();
    m_arrows.push_back(arrow);
}

void ArrowLayer::detach(VorelDirection *arrow)
{
    VorelDirection *last = m_arrows.back();
    m_arrows[arrow->m_slot] = last;
    last->m_slot = arrow->m_slot;
    m_arrows.pop_back();
}

void ArrowLayer::repaint(const QRect &box)
{
    // Cheap when the canvas is hidden or holds its updates, as it does
    // while a script opens or a module with many arrows moves.
    if (m_canvas)
        m_canvas->update(box);
}

void ArrowLayer::paint(QPainter &painter, const QRect &exposed) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    for (const VorelDirection *arrow : m_arrows) {
        if (arrow->m_visible && arrow->geometry().intersects(exposed))
            arrow->paint(painter);
    }
}

VorelDirection *ArrowLayer::arrowAt(QPoint pos) const
{
    for (VorelDirection *arrow : m_arrows) {
        if (arrow->m_visible && arrow->geometry().contains(pos) && arrow->grip().contains(pos))
            return arrow;
    }
    return nullptr;
}

bool ArrowLayer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_canvas)
        return false;
    switch (event->type()) {
    case QEvent::Paint: {
        // The canvas has filled its background; its children paint after.
        QPainter painter(m_canvas);
        paint(painter, static_cast<QPaintEvent *>(event)->rect());
        return false;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        const QPoint pos = mouse->position().toPoint();
        VorelDirection *arrow = arrowAt(pos);
        // A click that a module let through is the canvas's, even over an
        // arrow: the arrows lie beneath the modules.
        if (!arrow || m_canvas->childAt(pos))
            return false;
        m_pressed = arrow;
        m_held = true;
        report(arrow, &VorelDirection::MouseDown, *mouse);
        return true;
    }
    case QEvent::MouseButtonRelease: {
        if (!m_held)
            return false;
        auto *mouse = static_cast<QMouseEvent *>(event);
        // An arrow unloaded while held still keeps the release from the
        // canvas.
        VorelDirection *arrow = m_pressed;
        if (mouse->buttons() == Qt::NoButton) {
            m_pressed.clear();
            m_held = false;
        }
        if (!arrow)
            return true;
        report(arrow, &VorelDirection::MouseUp, *mouse);
        return true;
    }
    default:
        return false;
    }
}
