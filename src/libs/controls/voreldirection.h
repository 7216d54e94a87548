#pragma once

#include <QPointF>
#include <QWidget>

// One arrow on the canvas, a control of its own. Its box is placed at Left,
// Top (twips) and is x2 by y2 twips large; arrowcode tells in which corner of
// the box the line starts (the head is in the opposite one) or that it is a
// loop of a module linked to itself. Only the stroke belongs to the arrow: the
// widget is masked to it, so what lies under the rest of the box stays
// visible and keeps its clicks.
class VorelDirection : public QWidget
{
    Q_OBJECT

public:
    enum ArrowCode : int {
        FromTopLeft = 0,
        FromTopRight = 1,
        FromBottomLeft = 2,
        FromBottomRight = 3,
        Loop = 4,
    };

    explicit VorelDirection(qint16 index, QWidget *parent = nullptr);

    qint16 Index() const { return m_index; }
    float Top() const { return m_top; }

    // One call reshapes the arrow once; each setter alone would rebuild the
    // stroke mask. The box is kept within the reach of the canvas
    // (Twips::Reach), so that its mask and its picture stay small.
    void reshape(float left, float top, float x2, float y2, int arrowcode);
    // The straight arrow from one canvas point to another, in twips; points
    // beyond the reach of the canvas are taken at its edge.
    void setLine(QPointF from, QPointF to);
    // Where the line starts and ends, in canvas twips.
    QPointF startPoint() const;
    QPointF endPoint() const;

signals:
    void
    MouseDown(qint16 index, Qt::MouseButton button, Qt::KeyboardModifiers shift, float x, float y);
    void
    MouseUp(qint16 index, Qt::MouseButton button, Qt::KeyboardModifiers shift, float x, float y);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    struct Shape;
    Shape shapeInWidget(bool withGrip) const;
    void applyShape();

    qint16 m_index;
    float m_left = 0;
    float m_top = 0;
    float m_x2 = 1860;
    float m_y2 = 1110;
    int m_arrowcode = FromTopLeft;
};
