#include "moduleicon.h"

#include <QPainter>
#include <QPainterPath>

#include <functional>

namespace {

// Every picture is drawn on a 70 x 35 grid: a rounded tile in the type's
// colour and a white sign in its middle.
constexpr qreal W = 70.0;
constexpr qreal H = 35.0;

QColor tileColour(int type)
{
    switch (type) {
    case 0:
        return QColor(0xc0, 0x39, 0x2b); // End Call: red
    case 1:
        return QColor(0x27, 0xae, 0x60); // Connected: green
    case 3:
        return QColor(0x29, 0x80, 0xb9); // prompts and input: blue family
    case 4:
        return QColor(0x1f, 0x6f, 0xa8);
    case 5:
        return QColor(0x16, 0x5e, 0x8f);
    case 6:
        return QColor(0x8e, 0x44, 0xad); // transfer: purple
    case 7:
        return QColor(0xd3, 0x54, 0x00); // record: orange
    case 8:
        return QColor(0x2c, 0x3e, 0x50); // query: slate
    case 9:
        return QColor(0x16, 0xa0, 0x85); // e-mail: teal
    case 11:
        return QColor(0x7f, 0x8c, 0x8d); // program: grey
    case 12:
        return QColor(0x34, 0x49, 0x5e); // other script
    case 13:
        return QColor(0xb7, 0x95, 0x0b); // condition: ochre
    default:
        return QColor(0x95, 0xa5, 0xa6);
    }
}

QPainterPath handset()
{
    // A telephone handset lying across the tile: two ear pieces and a grip.
    QPainterPath p;
    p.addRoundedRect(QRectF(22, 11, 26, 6), 3, 3);
    p.addRoundedRect(QRectF(19, 12, 9, 13), 3, 3);
    p.addRoundedRect(QRectF(42, 12, 9, 13), 3, 3);
    return p.simplified();
}

void drawSign(QPainter &p, int type)
{
    const QPen stroke(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(stroke);
    p.setBrush(Qt::NoBrush);
    switch (type) {
    case 0: {
        p.save();
        p.translate(35, 18);
        p.rotate(180);
        p.translate(-35, -18);
        p.fillPath(handset(), Qt::white);
        p.restore();
        p.drawLine(QPointF(29, 29), QPointF(41, 29));
        break;
    }
    case 1:
        p.fillPath(handset(), Qt::white);
        p.drawArc(QRectF(27, 3, 16, 10), 30 * 16, 120 * 16);
        break;
    case 3: {
        QPainterPath speaker;
        speaker.addPolygon(QPolygonF({{20, 14}, {25, 14}, {32, 8}, {32, 27}, {25, 21}, {20, 21}}));
        speaker.closeSubpath();
        p.fillPath(speaker, Qt::white);
        p.drawArc(QRectF(30, 11, 10, 13), -50 * 16, 100 * 16);
        p.drawArc(QRectF(30, 6, 18, 23), -50 * 16, 100 * 16);
        break;
    }
    case 4:
        // A keypad: three by four keys.
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        for (int row = 0; row < 4; ++row)
            for (int col = 0; col < 3; ++col)
                p.drawRoundedRect(QRectF(25 + col * 7, 5 + row * 6.5, 5, 4.5), 1, 1);
        break;
    case 5:
        // A buffer of digits: a row of boxes, the first ones filled.
        for (int i = 0; i < 5; ++i) {
            const QRectF box(14 + i * 8.5, 12, 7, 11);
            if (i < 3)
                p.fillRect(box, Qt::white);
            else
                p.drawRect(box);
        }
        break;
    case 6:
        p.fillPath(handset().translated(-9, 0), Qt::white);
        p.drawLine(QPointF(44, 18), QPointF(56, 18));
        p.drawLine(QPointF(51, 13), QPointF(56, 18));
        p.drawLine(QPointF(51, 23), QPointF(56, 18));
        break;
    case 7:
        p.setBrush(Qt::white);
        p.drawEllipse(QPointF(35, 17.5), 8, 8);
        p.setBrush(tileColour(7));
        p.setPen(Qt::NoPen);
        p.drawEllipse(QPointF(35, 17.5), 4, 4);
        break;
    case 8:
        // A database drum.
        p.drawEllipse(QRectF(25, 5, 20, 7));
        p.drawLine(QPointF(25, 8.5), QPointF(25, 26.5));
        p.drawLine(QPointF(45, 8.5), QPointF(45, 26.5));
        p.drawArc(QRectF(25, 23, 20, 7), 180 * 16, 180 * 16);
        p.drawArc(QRectF(25, 14, 20, 7), 180 * 16, 180 * 16);
        break;
    case 9:
        p.drawRect(QRectF(21, 8, 28, 19));
        p.drawPolyline(QPolygonF({QPointF(21, 8), QPointF(35, 19), QPointF(49, 8)}));
        break;
    case 11:
        // A program window with a prompt in it.
        p.drawRoundedRect(QRectF(20, 6, 30, 23), 2, 2);
        p.drawLine(QPointF(20, 11), QPointF(50, 11));
        p.drawPolyline(QPolygonF({QPointF(25, 15), QPointF(29, 19), QPointF(25, 23)}));
        p.drawLine(QPointF(31, 23), QPointF(38, 23));
        break;
    case 12: {
        // A page with a folded corner and an arrow leaving it.
        QPainterPath page;
        page.addPolygon(QPolygonF({{19, 5}, {31, 5}, {37, 11}, {37, 30}, {19, 30}}));
        page.closeSubpath();
        p.drawPath(page);
        p.drawLine(QPointF(31, 5), QPointF(31, 11));
        p.drawLine(QPointF(31, 11), QPointF(37, 11));
        p.drawLine(QPointF(41, 18), QPointF(53, 18));
        p.drawLine(QPointF(48, 13), QPointF(53, 18));
        p.drawLine(QPointF(48, 23), QPointF(53, 18));
        break;
    }
    case 13:
        // A decision diamond with its two ways out.
        p.drawPolygon(
                QPolygonF({QPointF(35, 5), QPointF(47, 17.5), QPointF(35, 30), QPointF(23, 17.5)}));
        p.drawLine(QPointF(14, 17.5), QPointF(23, 17.5));
        p.drawLine(QPointF(47, 17.5), QPointF(56, 17.5));
        break;
    default:
        p.drawRoundedRect(QRectF(24, 7, 22, 21), 3, 3);
        p.drawLine(QPointF(30, 17.5), QPointF(40, 17.5));
        break;
    }
}

QPixmap
render(QSize size, const QColor &tile, bool hover, const std::function<void(QPainter &)> &sign)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size.width() / W, size.height() / H);
    const QColor fill = hover ? tile.lighter(125) : tile;
    p.setPen(QPen(tile.darker(140), 1));
    p.setBrush(fill);
    p.drawRoundedRect(QRectF(0.5, 0.5, W - 1, H - 1), 6, 6);
    sign(p);
    return pixmap;
}

} // namespace

QPixmap ModuleIcon::picture(int moduleType, QSize size, bool hover)
{
    if (size.isEmpty())
        size = SourceSize;
    return render(size, tileColour(moduleType), hover, [moduleType](QPainter &p) {
        drawSign(p, moduleType);
    });
}

QPixmap ModuleIcon::selectTool(QSize size, bool hover)
{
    if (size.isEmpty())
        size = SourceSize;
    return render(size, QColor(0xec, 0xf0, 0xf1), hover, [](QPainter &p) {
        // The mouse pointer, dark on a light tile.
        QPainterPath arrow;
        arrow.addPolygon(
                QPolygonF({{30, 5}, {30, 27}, {35, 22}, {39, 30}, {42, 28.5}, {38, 21}, {45, 21}}));
        arrow.closeSubpath();
        p.setPen(QPen(Qt::white, 1));
        p.setBrush(QColor(0x2c, 0x3e, 0x50));
        p.drawPath(arrow);
    });
}
