#pragma once

#include <QString>

class QSettings;

namespace ivr {

// The main window's remembered geometry (in twips) and view flags, in the
// per-user store, group "Settings", each value as text.
class MainSettings
{
public:
    float MainLeft = 1000;
    float MainTop = 1000;
    float MainWidth = 6500;
    float MainHeight = 6500;
    bool ShowToolBar = true;
    bool ShowStatusBar = true;
    bool ShowToolBox = true;

    // Text in the store that is neither a number nor a Boolean, or a number
    // whose pixels the window system cannot take, is not guessed at: it
    // throws ivr::IvrError naming the key and the text.
    void read();
    // The geometry is left as the store holds it when the window is minimized.
    // A store that cannot be written is said in a warning; false then.
    bool write(bool minimized) const;

    static QString organisation() { return QStringLiteral("Brindlewave"); }
    static QString application() { return QStringLiteral("IVR Script Designer"); }
    static QString group() { return QStringLiteral("Settings"); }

    static QString floatText(float value);
    static QString boolText(bool value);
};

} // namespace ivr
