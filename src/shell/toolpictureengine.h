#pragma once

#include <QIconEngine>
#include <QSize>

namespace ivr {

// The icon of a toolbox button: the tool's picture at one size, plain or
// lit for the pointer over it. Each picture is drawn when a button first
// shows it, not when the icon is made, and kept for the whole process, so
// that building the toolbox draws nothing and a click that resizes eleven
// pictures draws each size once.
class ToolPictureEngine : public QIconEngine
{
public:
    ToolPictureEngine(int index, QSize size);

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;
    QString key() const override;

private:
    QPixmap picture(bool hover) const;

    int m_index;
    QSize m_size;
};

} // namespace ivr
