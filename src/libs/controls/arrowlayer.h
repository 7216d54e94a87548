#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

class QPainter;
class VorelDirection;

// The arrows of one canvas, drawn by the canvas itself in one pass over its
// background and under its child widgets, the modules. An arrow is an
// element of its own that is shown, hidden, placed and unloaded by itself,
// but it is not a window: hundreds of masked child windows cost Qt far more
// to repaint than the lines they show. The layer also gives each arrow the
// clicks that land on its stroke, so that the canvas beneath sees none of
// them, as it would not under a control of its own.
class ArrowLayer : public QObject
{
    Q_OBJECT

public:
    explicit ArrowLayer(QWidget *canvas);
    ~ArrowLayer() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    friend class VorelDirection;
    void attach(VorelDirection *arrow);
    void detach(VorelDirection *arrow);
    void repaint(const QRect &box);
    void paint(QPainter &painter, const QRect &exposed) const;
    // A shown arrow whose stroke takes a click at that canvas pixel, or none.
    VorelDirection *arrowAt(QPoint pos) const;

    QPointer<QWidget> m_canvas;
    // Unordered: a detached arrow's place is taken by the last one.
    std::vector<VorelDirection *> m_arrows;
    QPointer<VorelDirection> m_pressed;
    bool m_held = false; // a button went down on an arrow and is not up yet
};
