#pragma once

#include <QSqlDatabase>
#include <QString>

namespace ivr {

// The small database beside the program. The connection object lives for
// the process; it is opened and closed around each use.
class CallLog
{
public:
    // The database beside the program, or, when the program folder is not
    // the user's to write (an installed program), the user's own copy in the
    // data folder, made from the installed one at first use.
    static QString path();
    // Opens the connection unless it is open; false if the file is missing or
    // cannot be opened. Never creates the file.
    static bool OpenCallLog();
    static void CloseCallLog();
    static QSqlDatabase CallLogConnection();

    // The first row's show_reg_form; false when the table is empty. Throws
    // ivr::IvrError when the database cannot be read (a missing file among them).
    static bool readShowRegForm();
    // Writes show_reg_form into the first row, adding one to an empty table.
    // Throws ivr::IvrError when the database cannot be written.
    static void writeShowRegForm(bool value);
};

} // namespace ivr
