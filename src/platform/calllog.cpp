#include "calllog.h"

#include "appfolder.h"
#include "ivrerror.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>

namespace ivr {

namespace {
const char kConnection[] = "CallLogConnection";

QString failure(const QString &what, const QSqlError &error)
{
    return QStringLiteral("The call log \"%1\" %2: %3")
            .arg(CallLog::path(), what, error.text().trimmed());
}

bool holdsFlags(const QString &file)
{
    const QString name = QStringLiteral("CallLogCopyCheck");
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(file);
        ok = db.open() && QSqlQuery(db).exec(QStringLiteral("select show_reg_form from flags"));
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}

// Copies the installed database into the user's data folder. Only a copy
// that reads is put in place: a missing or damaged installed file stays the
// one named in the start's failure, and nothing of it is left to outlive a
// repair.
QString userCopy(const QString &installed)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QString copy = folder + QStringLiteral("/CallLog.db");
    if (QFileInfo(copy).isFile())
        return copy;
    const QString partial = copy + QStringLiteral(".partial");
    QFile::remove(partial);
    const auto writable = QFile::ReadOwner | QFile::WriteOwner;
    const bool made = QFileInfo(installed).isFile() && QDir().mkpath(folder)
                      && QFile::copy(installed, partial)
                      && QFile::setPermissions(partial, QFile::permissions(partial) | writable)
                      && holdsFlags(partial) && QFile::rename(partial, copy);
    if (made)
        return copy;
    QFile::remove(partial);
    return installed;
}

// Why the connection did not open. Nothing here opens the path: a FIFO
// would block the opener until someone writes to it.
QString openFailure(const QSqlDatabase &db)
{
    const QFileInfo info(CallLog::path());
    QString reason;
    if (info.isDir())
        reason = QStringLiteral("It is a folder, not a database file.");
    else if (info.exists() && !info.isFile())
        reason = QStringLiteral("It is not a regular file.");
    else if (!info.exists())
        reason = QStringLiteral("The file does not exist.");
    else
        reason = db.lastError().text().trimmed();
    return QStringLiteral("The call log \"%1\" cannot be opened: %2").arg(CallLog::path(), reason);
}
} // namespace

QString CallLog::path()
{
    const QString installed = AppFolder::file(QStringLiteral("CallLog.db"));
    return AppFolder::isWritable() ? installed : userCopy(installed);
}

QSqlDatabase CallLog::CallLogConnection()
{
    if (QSqlDatabase::contains(kConnection))
        return QSqlDatabase::database(kConnection, false);
    return QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kConnection);
}

bool CallLog::OpenCallLog()
{
    QSqlDatabase db = CallLogConnection();
    if (db.isOpen())
        return true;
    // Qt's SQLite driver would quietly make an empty file; the database is
    // part of the installation, so a missing one is a failure.
    if (!QFileInfo(path()).isFile())
        return false;
    db.setDatabaseName(path());
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY=0"));
    return db.open();
}

void CallLog::CloseCallLog()
{
    QSqlDatabase db = CallLogConnection();
    if (db.isOpen())
        db.close();
}

bool CallLog::readShowRegForm()
{
    OpenCallLog();
    QSqlDatabase db = CallLogConnection();
    if (!db.isOpen())
        throw IvrError(openFailure(db));
    bool flag = false;
    {
        QSqlQuery query(db);
        if (!query.exec(QStringLiteral("select show_reg_form from flags"))) {
            const QString message = failure(QStringLiteral("cannot be read"), query.lastError());
            query.finish();
            CloseCallLog();
            throw IvrError(message);
        }
        if (query.next())
            flag = query.value(0).toInt() != 0;
    }
    CloseCallLog();
    return flag;
}

void CallLog::writeShowRegForm(bool value)
{
    OpenCallLog();
    QSqlDatabase db = CallLogConnection();
    if (!db.isOpen())
        throw IvrError(openFailure(db));
    QString message;
    {
        QSqlQuery query(db);
        bool ok = query.exec(QStringLiteral("select rowid from flags limit 1"));
        if (ok) {
            if (query.next()) {
                const qint64 rowid = query.value(0).toLongLong();
                query.finish();
                query.prepare(QStringLiteral("update flags set show_reg_form = ? where rowid = ?"));
                query.addBindValue(value ? 1 : 0);
                query.addBindValue(rowid);
            } else {
                query.finish();
                query.prepare(QStringLiteral("insert into flags (show_reg_form) values (?)"));
                query.addBindValue(value ? 1 : 0);
            }
            ok = query.exec();
        }
        if (!ok)
            message = failure(QStringLiteral("cannot be written"), query.lastError());
    }
    CloseCallLog();
    if (!message.isEmpty())
        throw IvrError(message);
}

} // namespace ivr
