#pragma once

#include <QIcon>
#include <QString>

class QAction;
class QMenu;
class QWidget;

namespace ivr {

class CommonDialog;

// What forms reach of the one main window: its status bar, the shared file
// dialog, the icon, the canvas popup menu and the help. The main window
// implements it; lower layers see only this.
class FrameServices
{
public:
    virtual ~FrameServices() = default;

    virtual QWidget *frameWidget() = 0;
    virtual QIcon frameIcon() const = 0;
    // Panel 1 of the status bar.
    virtual void setStatusText(const QString &text) = 0;
    virtual CommonDialog &dlgCommonDialog() = 0;
    // The popup of the canvas ("ScriptView") and its two entries.
    virtual QMenu *mnuScript() = 0;
    virtual QAction *mnuWaveFiles() = 0;
    virtual QAction *mnuProperty() = 0;
    // Opens the help at the topic of a help context number.
    virtual void showHelpContext(int context) = 0;
};

// The running main window, or nullptr before it exists (and in unit tests
// that need none).
FrameServices *appMain();
void setAppMain(FrameServices *frame);

} // namespace ivr
