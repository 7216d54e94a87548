#pragma once

#include <QPointF>
#include <QWidget>

class ArrowLayer;

namespace ivr {

// The drawing surface of a script window (picMain): modules are its
// children, its arrow layer draws the arrows beneath them, and scrolling
// moves it as a whole. It only reports the pointer; the window decides what
// a move or a release means.
class ScriptCanvas : public QWidget
{
    Q_OBJECT

public:
    explicit ScriptCanvas(QWidget *parent = nullptr);

    ArrowLayer *arrows() const { return m_arrows; }

signals:
    void mouseMoved();
    void mouseReleased(Qt::MouseButton button, QPointF pos, QPointF globalPos);

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    ArrowLayer *m_arrows;
};

} // namespace ivr
