#pragma once

#include <QString>
#include <QTemporaryDir>

// A test's own program folder in a temporary folder, with the application
// folder pointed at it and HOME and the XDG folders moved into it.
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
    // Makes the folder at a given place; leaves the override and environment alone.
    static bool make(const QString &folder, const Options &options);
    ~ProgramFolder();

    bool isValid() const { return m_valid; }
    QString path() const { return m_dir.path(); }
    QString file(const QString &relative) const { return m_dir.filePath(relative); }
    QString home() const { return m_dir.filePath(QStringLiteral("home")); }

    // regSvr.sh: its working folder per start; VorelRun: its folder, then each argument.
    QStringList regSvrLog() const;
    QStringList runnerLog() const;

    // Where the build keeps the real files that lie beside the program.
    static QString buildProgramDir();

private:
    QTemporaryDir m_dir;
    bool m_valid = false;
};
