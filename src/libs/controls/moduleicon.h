#pragma once

#include <QPixmap>
#include <QSize>

// The pictures of the module types, drawn by hand in one style so that the
// toolbox, the canvas and the dialogs show the same sign for a type. The
// source size is 70 x 35; other sizes are drawn afresh, not stretched.
class ModuleIcon
{
public:
    static constexpr QSize SourceSize{70, 35};

    static QPixmap picture(int moduleType, QSize size = SourceSize, bool hover = false);
    // The toolbox's Select tool, which stands for no module type.
    static QPixmap selectTool(QSize size = SourceSize, bool hover = false);
};
