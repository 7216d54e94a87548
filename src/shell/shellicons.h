#pragma once

#include <QIcon>
#include <QPixmap>

namespace ivr {

// The pictures of the main window, drawn in one style: the seven toolbar
// buttons, the window icon and the splash picture.
class ShellIcons
{
public:
    // cmdMain(index): 0 new, 1 open, 2 save, 3 delete, 4 property, 5 run, 6 exit.
    static QIcon toolbar(int index);
    static QIcon window();
    static QPixmap splash(const QSize &size);
};

} // namespace ivr
