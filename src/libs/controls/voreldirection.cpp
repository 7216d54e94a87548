#include "voreldirection.h"

#include "arrowlayer.h"
#include "twips.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <QtMath>

#include <limits>

namespace {

// Room around the line's box for the stroke and the head.
constexpr int Margin = 8;
constexpr qreal HeadLength = 10.0;
constexpr qreal HeadHalfWidth = 4.5;
// Half the width of the strip around the stroke that takes clicks.
constexpr qreal GripHalfWidth = 3.0;
const QColor ArrowColour(0x1a, 0x25, 0x4a);

QPointF unit(QPointF v)
{
    const qreal length = std::hypot(v.x(), v.y());
    return length > 0 ? v / length : QPointF(1, 0);
}

QPolygonF headAt(QPointF tip, QPointF direction, qreal grow = 0)
{
    const QPointF d = unit(direction);
    const QPointF n(-d.y(), d.x());
    const QPointF base = tip - d * (HeadLength + grow);
    const QPointF t = tip + d * grow;
    return QPolygonF({t, base + n * (HeadHalfWidth + grow), base - n * (HeadHalfWidth + grow)});
}

// The x extent of a convex polygon within the rows [top, bottom].
void widenByPolygon(const QPolygonF &piece, qreal top, qreal bottom, qreal &left, qreal &right)
{
    for (qsizetype i = 0; i < piece.size(); ++i) {
        const QPointF a = piece.at(i);
        const QPointF b = piece.at((i + 1) % piece.size());
        const qreal lo = qMax(qMin(a.y(), b.y()), top);
        const qreal hi = qMin(qMax(a.y(), b.y()), bottom);
        if (lo > hi)
            continue;
        const qreal dy = b.y() - a.y();
        if (qFuzzyIsNull(dy)) {
            left = qMin(left, qMin(a.x(), b.x()));
            right = qMax(right, qMax(a.x(), b.x()));
            continue;
        }
        for (const qreal scan : {lo, hi}) {
            const qreal x = a.x() + (scan - a.y()) * (b.x() - a.x()) / dy;
            left = qMin(left, x);
            right = qMax(right, x);
        }
    }
}

// The grip of a straight arrow: the strip around the stroke and the head, in
// bands of pixel rows, one rectangle a band. Qt's polygon scan conversion
// costs tens of microseconds for a long line, too slow for a module with
// hundreds of arrows; the strip's span in a band is worked out directly, and
// only the few bands of the head walk its edges. A long arrow gets taller
// bands, so that no grip has more than about a hundred rectangles: it
// widens a little where it runs slanted, which a hand does not notice.
QRegion straightGrip(QPointF start, QPointF base, const QPolygonF &head)
{
    const int Band = qMax(2, qCeil(qAbs(base.y() - start.y()) / 100));
    const QPointF d = base - start;
    const qreal length = std::hypot(d.x(), d.y());
    const QPointF n = length > 0 ? QPointF(-d.y(), d.x()) / length * GripHalfWidth
                                 : QPointF(0, GripHalfWidth);
    const QRectF strip = QPolygonF({start + n, base + n, base - n, start - n}).boundingRect();
    const QRectF headBox = head.boundingRect();
    const qreal centreTop = qMin(start.y(), base.y());
    const qreal centreBottom = qMax(start.y(), base.y());
    // Across a row, the strip is this wide on each side of its centre line.
    const qreal across = qFuzzyIsNull(d.y()) ? strip.width() : GripHalfWidth * length / qAbs(d.y());

    const int first = qFloor(qMin(strip.top(), headBox.top()));
    const int last = qCeil(qMax(strip.bottom(), headBox.bottom()));
    QList<QRect> rects;
    rects.reserve((last - first) / Band + 2);
    for (int y = first; y < last; y += Band) {
        const qreal top = y;
        const qreal bottom = y + Band;
        qreal left = std::numeric_limits<qreal>::max();
        qreal right = std::numeric_limits<qreal>::lowest();
        if (bottom >= strip.top() && top <= strip.bottom()) {
            if (qFuzzyIsNull(d.y())) {
                left = strip.left();
                right = strip.right();
            } else {
                const qreal xTop
                        = start.x()
                          + (qBound(centreTop, top, centreBottom) - start.y()) * d.x() / d.y();
                const qreal xBottom
                        = start.x()
                          + (qBound(centreTop, bottom, centreBottom) - start.y()) * d.x() / d.y();
                left = qMax(qMin(xTop, xBottom) - across, strip.left());
                right = qMin(qMax(xTop, xBottom) + across, strip.right());
            }
        }
        if (bottom >= headBox.top() && top <= headBox.bottom())
            widenByPolygon(head, top, bottom, left, right);
        if (left > right)
            continue;
        const int x0 = qFloor(left);
        const int x1 = qMax(x0, qCeil(right) - 1);
        if (!rects.isEmpty() && rects.last().left() == x0 && rects.last().right() == x1
            && rects.last().bottom() == y - 1) {
            rects.last().setBottom(y + Band - 1);
        } else {
            rects.append(QRect(QPoint(x0, y), QPoint(x1, y + Band - 1)));
        }
    }
    QRegion region;
    region.setRects(rects.constData(), int(rects.size()));
    return region;
}

} // namespace

struct VorelDirection::Shape
{
    QPainterPath stroke; // the line or the loop, ending where the head begins
    QPointF tip;
    QPointF direction;
    QRegion grip;
};

VorelDirection::VorelDirection(qint16 index, ArrowLayer *layer)
    : QObject(layer)
    , m_layer(layer)
    , m_index(index)
{
    if (m_layer)
        m_layer->attach(this);
}

VorelDirection::~VorelDirection()
{
    if (m_layer) {
        m_layer->detach(this);
        if (m_visible)
            m_layer->repaint(geometry());
    }
}

void VorelDirection::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    if (m_layer)
        m_layer->repaint(geometry());
}

void VorelDirection::changed(const QRect &before)
{
    if (m_layer && m_visible)
        m_layer->repaint(before.united(geometry()));
}

void VorelDirection::reshape(float left, float top, float x2, float y2, int arrowcode)
{
    const QRect before = geometry();
    m_left = Twips::bounded(left);
    m_top = Twips::bounded(top);
    m_x2 = qBound(0.0f, x2, Twips::Reach - m_left);
    m_y2 = qBound(0.0f, y2, Twips::Reach - m_top);
    m_arrowcode = (arrowcode >= FromTopLeft && arrowcode <= Loop) ? arrowcode : FromTopLeft;
    changed(before);
}

void VorelDirection::setLine(QPointF from, QPointF to)
{
    const auto bounded = [](QPointF p) {
        constexpr qreal Reach = Twips::Reach;
        return QPointF(qBound(-Reach, p.x(), Reach), qBound(-Reach, p.y(), Reach));
    };
    from = bounded(from);
    to = bounded(to);
    const bool leftToRight = from.x() <= to.x();
    const bool topToBottom = from.y() <= to.y();
    int code = FromTopLeft;
    if (leftToRight && !topToBottom)
        code = FromBottomLeft;
    else if (!leftToRight && topToBottom)
        code = FromTopRight;
    else if (!leftToRight && !topToBottom)
        code = FromBottomRight;
    reshape(float(qMin(from.x(), to.x())),
            float(qMin(from.y(), to.y())),
            float(qAbs(to.x() - from.x())),
            float(qAbs(to.y() - from.y())),
            code);
}

QPointF VorelDirection::startPoint() const
{
    switch (m_arrowcode) {
    case FromTopRight:
        return {m_left + m_x2, m_top};
    case FromBottomLeft:
        return {m_left, m_top + m_y2};
    case FromBottomRight:
        return {m_left + m_x2, m_top + m_y2};
    case Loop:
        return {m_left + m_x2 / 4, m_top + m_y2 / 2};
    default:
        return {m_left, m_top};
    }
}

QPointF VorelDirection::endPoint() const
{
    switch (m_arrowcode) {
    case FromTopRight:
        return {m_left, m_top + m_y2};
    case FromBottomLeft:
        return {m_left + m_x2, m_top};
    case FromBottomRight:
        return {m_left, m_top};
    case Loop:
        return {m_left + m_x2 / 2, m_top + 3 * m_y2 / 4};
    default:
        return {m_left + m_x2, m_top + m_y2};
    }
}

QRect VorelDirection::geometry() const
{
    return QRect(QPoint(Twips::toPixels(m_left) - Margin, Twips::toPixels(m_top) - Margin),
                 QPoint(Twips::toPixels(m_left + m_x2) + Margin,
                        Twips::toPixels(m_top + m_y2) + Margin));
}

// In canvas pixels.
VorelDirection::Shape VorelDirection::shape(bool withGrip) const
{
    const auto toPixels = [](QPointF twips) {
        return twips / Twips::PerPixel;
    };
    const QPointF start = toPixels(startPoint());
    const QPointF end = toPixels(endPoint());

    Shape shape;
    shape.tip = end;
    if (m_arrowcode == Loop) {
        const qreal w = m_x2 / Twips::PerPixel;
        const qreal h = m_y2 / Twips::PerPixel;
        const QPointF boxCorner = toPixels(QPointF(m_left, m_top));
        const QPointF c1 = boxCorner + QPointF(w / 4, 0);
        const QPointF c2 = boxCorner + QPointF(w, 3 * h / 4);
        shape.direction = end - c2;
        shape.stroke.moveTo(start);
        shape.stroke.cubicTo(c1, c2, end - unit(shape.direction) * HeadLength);
        if (withGrip) {
            QPainterPathStroker stroker;
            stroker.setWidth(2 * GripHalfWidth);
            const QPolygon outline = stroker.createStroke(shape.stroke).toFillPolygon().toPolygon();
            shape.grip = QRegion(outline, Qt::WindingFill)
                         + QRegion(headAt(shape.tip, shape.direction, 1.5).toPolygon(),
                                   Qt::WindingFill);
        }
    } else {
        shape.direction = end - start;
        const qreal length = std::hypot(shape.direction.x(), shape.direction.y());
        const QPointF d = unit(shape.direction);
        const QPointF base = length > HeadLength ? end - d * HeadLength : start;
        shape.stroke.moveTo(start);
        shape.stroke.lineTo(base);
        if (withGrip)
            shape.grip = straightGrip(start, base, headAt(shape.tip, shape.direction, 1.5));
    }
    return shape;
}

QRegion VorelDirection::grip() const
{
    return shape(true).grip;
}

void VorelDirection::paint(QPainter &painter) const
{
    const Shape line = shape(false);
    // A one-pixel pen takes the raster engine's line path, which clips the
    // line to what is exposed; a wider one strokes the whole path of a long
    // arrow each time, and hundreds of arrows repaint several times slower.
    painter.setPen(QPen(ArrowColour, 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(line.stroke);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ArrowColour);
    painter.drawPolygon(headAt(line.tip, line.direction));
}
