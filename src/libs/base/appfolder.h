#pragma once

#include <QString>

namespace ivr {

// The folder the program lives in, where everything it ships with lies
// (the call-log database, the help, the beep, the runner). Tests point it
// at a folder of their own so that they can run side by side.
class AppFolder
{
public:
    static QString path();
    // Joins a name such as "CallLog.db" or "Greeting/beep.wav" to the folder.
    static QString file(const QString &relative);
    // False for an installed folder, which belongs to root: what the program
    // writes then goes to the user's own data folder instead.
    static bool isWritable();
    static void setOverride(const QString &folder);
    // Root may write everywhere, so a test run as root takes an installed
    // folder on trust this way. clearOverride() ends it too.
    static void setReadOnlyOverride(bool readOnly);
    static void clearOverride();
};

} // namespace ivr
