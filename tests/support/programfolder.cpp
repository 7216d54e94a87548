#include "programfolder.h"

#include "appfolder.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace {
bool writeScript(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    file.write(text);
    file.close();
    return file.setPermissions(QFileDevice::Permissions(0x7055)); // rwxr-xr-x
}

bool makeDatabase(const QString &path, ProgramFolder::Options::Flags flags)
{
    using Flags = ProgramFolder::Options::Flags;
    if (flags == Flags::NoDatabase)
        return true;
    const QString name = QUuid::createUuid().toString();
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        if (db.open()) {
            QSqlQuery q(db);
            ok = q.exec(QStringLiteral("CREATE TABLE flags (show_reg_form INTEGER)"));
            if (ok && flags != Flags::EmptyTable)
                ok = q.exec(QStringLiteral("INSERT INTO flags VALUES (%1)")
                                    .arg(flags == Flags::Hidden ? 1 : 0));
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}

bool copyIfThere(const QString &from, const QString &to)
{
    if (!QFile::exists(from))
        return true;
    QDir().mkpath(QFileInfo(to).absolutePath());
    QFile::remove(to);
    return QFile::copy(from, to);
}
} // namespace

QString ProgramFolder::buildProgramDir()
{
    return QStringLiteral(IVR_BUILD_PROGRAM_DIR);
}
bool ProgramFolder::make(const QString &folder, const Options &options)
{
    QDir dir(folder);
    if (!dir.mkpath(QStringLiteral(".")) || !dir.mkpath(QStringLiteral("home")))
        return false;
    const QString build = buildProgramDir();
    bool ok = makeDatabase(dir.filePath(QStringLiteral("CallLog.db")), options.flags);
    if (options.realRegSvr) {
        ok = ok && copyIfThere(build + QStringLiteral("/regSvr.sh"), dir.filePath("regSvr.sh"));
    } else {
        ok = ok
             && writeScript(dir.filePath(QStringLiteral("regSvr.sh")),
                            "#!/bin/sh\necho \"$PWD\" >> \"$(dirname \"$0\")/regSvr.log\"\n");
    }
    if (options.runner) {
        ok = ok
             && writeScript(dir.filePath(QStringLiteral("VorelRun")),
                            "#!/bin/sh\n{ echo \"$PWD\"; for a in \"$@\"; do echo \"$a\"; done; } "
                            "> \"$(dirname \"$0\")/VorelRun.log\"\n");
    }
    ok = ok && copyIfThere(build + QStringLiteral("/BdwIVRS.qch"), dir.filePath("BdwIVRS.qch"));
    ok = ok
         && copyIfThere(build + QStringLiteral("/Greeting/beep.wav"),
                        dir.filePath(QStringLiteral("Greeting/beep.wav")));
    return ok;
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
    qputenv("HOME", home().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home() + QStringLiteral("/.config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home() + QStringLiteral("/.local/share")).toLocal8Bit());
    qputenv("XDG_CACHE_HOME", (home() + QStringLiteral("/.cache")).toLocal8Bit());
}

ProgramFolder::~ProgramFolder()
{
    ivr::AppFolder::clearOverride();
}

static QStringList readLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromLocal8Bit(file.readAll()).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}

QStringList ProgramFolder::regSvrLog() const
{
    return readLines(file(QStringLiteral("regSvr.log")));
}

QStringList ProgramFolder::runnerLog() const
{
    return readLines(file(QStringLiteral("VorelRun.log")));
}
