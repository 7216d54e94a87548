#pragma once

#include <QObject>
#include <QPointF>
#include <QRect>
#include <QRegion>

class ArrowLayer;
class QPainter;

// One arrow on the canvas, an element of its own. Its box is placed at Left,
// Top (twips) and is x2 by y2 twips large; arrowcode tells in which corner of
// the box the line starts (the head is in the opposite one) or that it is a
// loop of a module linked to itself. The canvas's arrow layer draws it and
// hands it the clicks on its stroke; what lies under the rest of the box
// keeps its clicks. A fresh arrow is hidden.
class VorelDirection : public QObject
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

    // Without a layer the arrow is only its geometry, drawn nowhere.
    explicit VorelDirection(qint16 index, ArrowLayer *layer = nullptr);
    ~VorelDirection() override;

    qint16 Index() const { return m_index; }
    float Top() const { return m_top; }
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);

    // One call reshapes the arrow once. The box is kept within the reach of
    // the canvas (Twips::Reach), so that its picture stays within what Qt
    // draws.
    void reshape(float left, float top, float x2, float y2, int arrowcode);
    // The straight arrow from one canvas point to another, in twips; points
    // beyond the reach of the canvas are taken at its edge.
    void setLine(QPointF from, QPointF to);
    // Where the line starts and ends, in canvas twips.
    QPointF startPoint() const;
    QPointF endPoint() const;

    // The pixels of the canvas the arrow may cover: its box with room for
    // the stroke and the head.
    QRect geometry() const;
    // The canvas pixels whose clicks the arrow takes: a strip around the
    // stroke and the head.
    QRegion grip() const;
    // Draws the arrow with a painter on the canvas.
    void paint(QPainter &painter) const;

signals:
    void
    MouseDown(qint16 index, Qt::MouseButton button, Qt::KeyboardModifiers shift, float x, float y);
    void
    MouseUp(qint16 index, Qt::MouseButton button, Qt::KeyboardModifiers shift, float x, float y);

private:
    friend class ArrowLayer;
    struct Shape;
    Shape shape(bool withGrip) const;
    void changed(const QRect &before);

    ArrowLayer *m_layer = nullptr;
    size_t m_slot = 0; // the arrow's place in its layer
    qint16 m_index;
    bool m_visible = false;
    float m_left = 0;
    float m_top = 0;
    float m_x2 = 1860;
    float m_y2 = 1110;
    int m_arrowcode = FromTopLeft;
};
