#include "toolpictureengine.h"

#include "moduleicon.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>

namespace ivr {

ToolPictureEngine::ToolPictureEngine(int index, QSize size)
    : m_index(index)
    , m_size(size)
{}

QPixmap ToolPictureEngine::picture(bool hover) const
{
    const QString key = QStringLiteral("ivr-tool-%1-%2x%3-%4")
                                .arg(m_index)
                                .arg(m_size.width())
                                .arg(m_size.height())
                                .arg(hover ? 1 : 0);
    QPixmap drawn;
    if (QPixmapCache::find(key, &drawn))
        return drawn;
    // Index 0 is the Select tool, which stands for no module type.
    drawn = m_index == 0 ? ModuleIcon::selectTool(m_size, hover)
                         : ModuleIcon::picture(m_index, m_size, hover);
    QPixmapCache::insert(key, drawn);
    return drawn;
}

QSize ToolPictureEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    // As with a picture added to a plain icon: shrunk to fit, never grown.
    if (m_size.width() <= size.width() && m_size.height() <= size.height())
        return m_size;
    return m_size.scaled(size, Qt::KeepAspectRatio);
}

QPixmap ToolPictureEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap shown = picture(mode == QIcon::Active);
    const QSize fitted = actualSize(size, mode, state);
    if (fitted != shown.size())
        shown = shown.scaled(fitted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (mode == QIcon::Disabled) {
        QStyleOption option;
        option.palette = QApplication::palette();
        shown = QApplication::style()->generatedIconPixmap(mode, shown, &option);
    }
    return shown;
}

void ToolPictureEngine::paint(QPainter *painter,
                              const QRect &rect,
                              QIcon::Mode mode,
                              QIcon::State state)
{
    const QPixmap shown = pixmap(rect.size(), mode, state);
    QRect target(QPoint(0, 0), shown.size());
    target.moveCenter(rect.center());
    painter->drawPixmap(target, shown);
}

QIconEngine *ToolPictureEngine::clone() const
{
    return new ToolPictureEngine(m_index, m_size);
}

QString ToolPictureEngine::key() const
{
    return QStringLiteral("ivr-tool-picture");
}

} // namespace ivr
