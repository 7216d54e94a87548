#include "shellicons.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QResource>

#include <cmath>

namespace ivr {

namespace {

// Every toolbar picture is drawn on a 40 x 40 grid and shown at 42 x 42.
constexpr int Grid = 40;
constexpr int ToolbarSize = 42;
constexpr int WindowIconSize = 32;
const QColor Ink(0x1f, 0x3a, 0x5f);

QPen inkPen(qreal width = 2.0)
{
    return QPen(Ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void page(QPainter &p)
{
    QPainterPath sheet;
    sheet.addPolygon(QPolygonF({{9, 4}, {25, 4}, {32, 11}, {32, 36}, {9, 36}}));
    sheet.closeSubpath();
    p.setPen(inkPen());
    p.setBrush(Qt::white);
    p.drawPath(sheet);
    p.drawPolyline(QPolygonF({QPointF(25, 4), QPointF(25, 11), QPointF(32, 11)}));
}

void drawNew(QPainter &p)
{
    page(p);
    p.setPen(inkPen(3));
    p.setPen(QPen(QColor(0x27, 0xae, 0x60), 3.5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(20.5, 16), QPointF(20.5, 30));
    p.drawLine(QPointF(13.5, 23), QPointF(27.5, 23));
}

void drawOpen(QPainter &p)
{
    p.setPen(inkPen());
    p.setBrush(QColor(0xf1, 0xc4, 0x0f));
    QPainterPath back;
    back.addPolygon(QPolygonF({{4, 10}, {14, 10}, {17, 14}, {33, 14}, {33, 33}, {4, 33}}));
    back.closeSubpath();
    p.drawPath(back);
    p.setBrush(QColor(0xf7, 0xdc, 0x6f));
    p.drawPolygon(QPolygonF({QPointF(4, 33), QPointF(10, 19), QPointF(37, 19), QPointF(33, 33)}));
}

void drawSave(QPainter &p)
{
    p.setPen(inkPen());
    p.setBrush(QColor(0x29, 0x80, 0xb9));
    p.drawRoundedRect(QRectF(6, 6, 28, 28), 3, 3);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(11, 6, 18, 11));
    p.setBrush(QColor(0xec, 0xf0, 0xf1));
    p.drawRect(QRectF(11, 22, 18, 12));
    p.setBrush(Ink);
    p.drawRect(QRectF(23, 8, 3, 7));
}

void drawDelete(QPainter &p)
{
    p.setPen(QPen(QColor(0xc0, 0x39, 0x2b), 5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(10, 10), QPointF(30, 30));
    p.drawLine(QPointF(30, 10), QPointF(10, 30));
}

void drawProperty(QPainter &p)
{
    page(p);
    p.setPen(inkPen(1.5));
    for (int y = 16; y <= 31; y += 5) {
        p.drawLine(QPointF(13, y), QPointF(16, y));
        p.drawLine(QPointF(19, y), QPointF(28, y));
    }
}

void drawRun(QPainter &p)
{
    p.setPen(inkPen());
    p.setBrush(QColor(0x27, 0xae, 0x60));
    p.drawPolygon(QPolygonF({QPointF(11, 6), QPointF(34, 20), QPointF(11, 34)}));
}

void drawExit(QPainter &p)
{
    p.setPen(inkPen());
    p.setBrush(QColor(0xa0, 0x6a, 0x3c));
    p.drawRect(QRectF(6, 4, 17, 32));
    p.setPen(QPen(QColor(0xc0, 0x39, 0x2b), 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawLine(QPointF(18, 20), QPointF(35, 20));
    p.drawPolyline(QPolygonF({QPointF(29, 14), QPointF(35, 20), QPointF(29, 26)}));
}

QImage transparentImage(int size)
{
    QImage image(size, size, ShellIcons::IconFormat);
    image.fill(Qt::transparent);
    return image;
}

void drawWave(QPainter &p, const QRectF &area, const QColor &colour, qreal width)
{
    QPainterPath wave;
    const int steps = 48;
    for (int i = 0; i <= steps; ++i) {
        const qreal x = area.left() + area.width() * i / steps;
        const qreal phase = qreal(i) / steps * 6.2831853 * 3;
        const qreal envelope = 0.3 + 0.7 * (1.0 - qAbs(i - steps / 2.0) / (steps / 2.0));
        const qreal y = area.center().y() - std::sin(phase) * area.height() / 2 * envelope;
        if (i == 0)
            wave.moveTo(x, y);
        else
            wave.lineTo(x, y);
    }
    p.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(wave);
}

} // namespace

QImage ShellIcons::paintToolbar(int index)
{
    QImage image = transparentImage(ToolbarSize);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(qreal(ToolbarSize) / Grid, qreal(ToolbarSize) / Grid);
    switch (index) {
    case 0:
        drawNew(p);
        break;
    case 1:
        drawOpen(p);
        break;
    case 2:
        drawSave(p);
        break;
    case 3:
        drawDelete(p);
        break;
    case 4:
        drawProperty(p);
        break;
    case 5:
        drawRun(p);
        break;
    case 6:
        drawExit(p);
        break;
    default:
        break;
    }
    p.end();
    return image;
}

QImage ShellIcons::paintWindow()
{
    QImage image = transparentImage(WindowIconSize);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x1f, 0x3a, 0x5f));
    p.drawRoundedRect(QRectF(1, 1, 30, 30), 6, 6);
    drawWave(p, QRectF(5, 8, 22, 16), QColor(0xf3, 0x9c, 0x12), 2.5);
    p.end();
    return image;
}

QImage ShellIcons::paintSplash(const QSize &size)
{
    QImage image(size, SplashFormat);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(0x1f, 0x3a, 0x5f));
    sky.setColorAt(1, QColor(0x0b, 0x15, 0x26));
    p.fillRect(image.rect(), sky);
    const QRectF band(24, size.height() * 0.52, size.width() - 48, size.height() * 0.30);
    drawWave(p, band, QColor(0xf3, 0x9c, 0x12), 3);
    drawWave(p, band.adjusted(0, 10, 0, -10), QColor(0x5d, 0xad, 0xe2), 1.5);

    p.setPen(Qt::white);
    QFont title(QStringLiteral("DejaVu Sans"));
    title.setPixelSize(qMax(12, size.height() / 9));
    title.setBold(true);
    p.setFont(title);
    const QRectF top(0, size.height() * 0.10, size.width(), size.height() * 0.22);
    p.drawText(top, Qt::AlignCenter, QStringLiteral("Brindlewave"));
    QFont subtitle = title;
    subtitle.setBold(false);
    subtitle.setPixelSize(qMax(10, size.height() / 14));
    p.setFont(subtitle);
    p.setPen(QColor(0xd6, 0xe4, 0xf0));
    const QRectF middle(0, size.height() * 0.32, size.width(), size.height() * 0.16);
    p.drawText(middle, Qt::AlignCenter, QStringLiteral("IVR Script Designer"));
    p.setPen(QPen(QColor(0x5d, 0xad, 0xe2), 2));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(1, 1, size.width() - 2, size.height() - 2));
    p.end();
    return image;
}

QString ShellIcons::prerenderedPath(const QString &name)
{
    return QStringLiteral(":/ivr/shell/pictures/") + name + QStringLiteral(".raw");
}

QImage ShellIcons::prerendered(const QString &name, const QSize &size, QImage::Format format)
{
    // The pixels lie uncompressed in the program's image, so the picture
    // only points at them: nothing is decoded, no image plugin is asked. A
    // missing or odd-sized picture (a build without them, another size asked
    // for) is drawn here instead.
    const QResource resource(prerenderedPath(name));
    const qint64 bytes = qint64(size.width()) * size.height() * 4;
    if (!resource.isValid() || resource.compressionAlgorithm() != QResource::NoCompression
        || resource.size() != bytes) {
        return {};
    }
    return QImage(resource.data(), size.width(), size.height(), size.width() * 4, format);
}

QIcon ShellIcons::toolbar(int index)
{
    QImage image = prerendered(
            QStringLiteral("toolbar-%1").arg(index), QSize(ToolbarSize, ToolbarSize), IconFormat);
    if (image.isNull())
        image = paintToolbar(index);
    return QIcon(QPixmap::fromImage(std::move(image)));
}

QIcon ShellIcons::window()
{
    QImage image = prerendered(
            QStringLiteral("window"), QSize(WindowIconSize, WindowIconSize), IconFormat);
    if (image.isNull())
        image = paintWindow();
    return QIcon(QPixmap::fromImage(std::move(image)));
}

QPixmap ShellIcons::splash(const QSize &size)
{
    QImage image = size == SplashSize ? prerendered(QStringLiteral("splash"), size, SplashFormat)
                                      : QImage();
    if (image.isNull())
        image = paintSplash(size);
    return QPixmap::fromImage(std::move(image));
}

} // namespace ivr
