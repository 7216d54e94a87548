#pragma once

#include <QString>
#include <QTemporaryDir>

// A program folder of a test's own: everything the designer finds beside
// itself, in a temporary folder, with the application folder pointed at it and
// HOME and the XDG folders moved into it, so that nothing touches the user's.
class ProgramFolder
{
public:
    struct Options
    {
        // show_reg_form in the flags table: 1 keeps the enquiry form away.
        enum class Flags { Hidden, Shown, EmptyTable, NoDatabase };
        Flags flags = Flags::Hidden;
        bool realRegSvr = false; // the real registration script, not the recording stand-in
        bool runner = true;      // a recording VorelRun stand-in
    };

    ProgramFolder();
    explicit ProgramFolder(const Options &options);
    // Makes the folder at a given place (for whole-program checks); does not
    // touch the application folder override or the environment.
    static bool make(const QString &folder, const Options &options);
    ~ProgramFolder();

    bool isValid() const { return m_valid; }
    QString path() const { return m_dir.path(); }
    QString file(const QString &relative) const { return m_dir.filePath(relative); }
    QString home() const { return m_dir.filePath(QStringLiteral("home")); }

    // What the stand-ins wrote: one line per start of regSvr.sh (its working
    // folder); for VorelRun its working folder and then each argument.
    QStringList regSvrLog() const;
    QStringList runnerLog() const;

    // Where the build keeps the real files that lie beside the program.
    static QString buildProgramDir();

private:
    QTemporaryDir m_dir;
    bool m_valid = false;
};
