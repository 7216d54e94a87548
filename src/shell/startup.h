#pragma once

#include <QStringList>

namespace ivr {

// The program's entry procedure and the enquiry step of the start.
class Startup
{
public:
    // Runs the start-up in its fixed order with the program's arguments (the
    // program name left out). 0 when the main window is up and the event
    // loop may run; 1 when the start failed (the failure has been shown).
    static int Main(const QStringList &arguments);

    // Shows the enquiry form modally unless the call log says it is not wanted.
    // Throws ivr::IvrError when the call log cannot be read.
    static void ShowEnquiryFormIfWanted();

    // The arguments joined by single blanks: one path, never parsed.
    static QString commandTail(const QStringList &arguments);
};

} // namespace ivr
