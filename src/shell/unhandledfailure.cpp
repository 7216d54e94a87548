#include "unhandledfailure.h"

#include "msgbox.h"
#include "screenpointer.h"

#include <cstdlib>

namespace ivr {

namespace {
bool g_shown = false;
}

void UnhandledFailure::show(const QString &description)
{
    // An hourglass left over from the failed action would stay on screen.
    ScreenPointer::set(ScreenPointer::Default);
    MsgBox::show(description, QMessageBox::Critical);
}

void UnhandledFailure::report(const QString &description)
{
    show(description);
    if (!g_shown) {
        // Unwinding through the event loop is not possible, and nothing is
        // there yet that could be lost.
        std::_Exit(1);
    }
}

bool UnhandledFailure::mainWindowShown()
{
    return g_shown;
}

void UnhandledFailure::setMainWindowShown(bool shown)
{
    g_shown = shown;
}

} // namespace ivr
