#pragma once

#include <QIcon>
#include <QImage>
#include <QPixmap>

namespace ivr {

// The pictures of the main window, drawn in one style: the seven toolbar
// buttons, the window icon and the splash picture. The build draws each of
// them once, ahead of time, into the program's resources (the text of the
// splash needs the whole font machinery, which the start would otherwise
// load before its first window); the paint functions are what it runs, and
// what the program falls back on when a picture is not there.
class ShellIcons
{
public:
    // 7380 x 4245 twips: the splash window's client area.
    static constexpr QSize SplashSize{492, 283};

    // cmdMain(index): 0 new, 1 open, 2 save, 3 delete, 4 property, 5 run, 6 exit.
    static QIcon toolbar(int index);
    static QIcon window();
    static QPixmap splash(const QSize &size);

    static QImage paintToolbar(int index);
    static QImage paintWindow();
    static QImage paintSplash(const QSize &size);
    // Where the build puts the picture called name in the resources: its
    // pixels as they lie in a QImage of the format below, row after row.
    static QString prerenderedPath(const QString &name);
    static constexpr QImage::Format SplashFormat = QImage::Format_RGB32;
    static constexpr QImage::Format IconFormat = QImage::Format_ARGB32_Premultiplied;

private:
    static QImage prerendered(const QString &name, const QSize &size, QImage::Format format);
};

} // namespace ivr
