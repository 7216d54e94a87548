#pragma once

#include <QString>

namespace ivr {

// The one place where a failure that nobody caught ends up. After the main
// window is up, the user's action ends with a message and the program goes
// on; before that, the program cannot be used and ends with exit code 1.
class UnhandledFailure
{
public:
    // Shows the failure (critical icon) and clears the screen-wide pointer.
    static void show(const QString &description);
    // show(), and when the main window has not been shown yet, ends the process.
    static void report(const QString &description);

    static bool mainWindowShown();
    static void setMainWindowShown(bool shown);
};

} // namespace ivr
