#include "programfolder.h"

#include "appfolder.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace {
bool writeScript(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size()
           && file.setPermissions(QFileDevice::Permissions(0x7055)); // rwxr-xr-x
}

bool makeDatabase(const QString &path, ProgramFolder::Options::Flags flags)
{
    using Flags = ProgramFolder::Options::Flags;
    if (flags == Flags::NoDatabase)
        return true;
    const QString name = QUuid::createUuid().toString();
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", name);
        db.setDatabaseName(path);
        ok = db.open();
        QSqlQuery q(db);
        ok = ok && q.exec("CREATE TABLE flags (show_reg_form INTEGER)")
             && (flags == Flags::EmptyTable
                 || q.exec(QStringLiteral("INSERT INTO flags VALUES (%1)")
                                   .arg(flags == Flags::Hidden ? 1 : 0)));
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}

bool copyIfThere(const QString &relative, const QDir &to)
{
    const QString from = ProgramFolder::buildProgramDir() + '/' + relative;
    if (!QFile::exists(from))
        return true;
    to.mkpath(QFileInfo(relative).path());
    QFile::remove(to.filePath(relative));
    return QFile::copy(from, to.filePath(relative));
}

QStringList readLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromLocal8Bit(file.readAll()).split('\n');
    if (lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}
} // namespace

QString ProgramFolder::buildProgramDir()
{
    return QStringLiteral(IVR_BUILD_PROGRAM_DIR);
}

bool ProgramFolder::make(const QString &folder, const Options &options)
{
    QDir dir(folder);
    return dir.mkpath("home") && makeDatabase(dir.filePath("CallLog.db"), options.flags)
           && (options.realRegSvr
                       ? copyIfThere("regSvr.sh", dir)
                       : writeScript(
                               dir.filePath("regSvr.sh"),
                               "#!/bin/sh\necho \"$PWD\" >> \"$(dirname \"$0\")/regSvr.log\"\n"))
           && (!options.runner
               || writeScript(
                       dir.filePath("VorelRun"),
                       "#!/bin/sh\n{ echo \"$PWD\"; for a in \"$@\"; do echo \"$a\"; done; } "
                       "> \"$(dirname \"$0\")/VorelRun.log\"\n"))
           && copyIfThere("BdwIVRS.qch", dir) && copyIfThere("Greeting/beep.wav", dir);
}

ProgramFolder::ProgramFolder()
    : ProgramFolder(Options())
{}

ProgramFolder::ProgramFolder(const Options &options)
{
    if (!m_dir.isValid())
        return;
    m_valid = make(m_dir.path(), options);
    ivr::AppFolder::setOverride(m_dir.path());
    const auto put = [this](const char *name, const char *under) {
        qputenv(name, (home() + under).toLocal8Bit());
    };
    put("HOME", "");
    put("XDG_CONFIG_HOME", "/.config");
    put("XDG_DATA_HOME", "/.local/share");
    put("XDG_CACHE_HOME", "/.cache");
}

ProgramFolder::~ProgramFolder()
{
    ivr::AppFolder::clearOverride();
}

QStringList ProgramFolder::regSvrLog() const
{
    return readLines(file("regSvr.log"));
}

QStringList ProgramFolder::runnerLog() const
{
    return readLines(file("VorelRun.log"));
}
