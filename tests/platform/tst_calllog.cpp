#include "appfolder.h"
#include "calllog.h"
#include "ivrerror.h"
#include "programfolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <sys/stat.h>

using namespace ivr;
using Flags = ProgramFolder::Options::Flags;

static QString userDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

class tst_CallLog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { AppFolder::setReadOnlyOverride(false); }

    void flagRoundTrip_data()
    {
        QTest::addColumn<Flags>("flags");
        QTest::addColumn<int>("written"); // -1: nothing written
        QTest::addColumn<bool>("expected");
        QTest::newRow("empty-table-reads-true") << Flags::EmptyTable << -1 << false;
        QTest::newRow("row-one-reads-false") << Flags::Hidden << -1 << true;
        QTest::newRow("row-zero-reads-true") << Flags::Shown << -1 << false;
        QTest::newRow("empty-table-gets-no-row") << Flags::EmptyTable << 1 << true;
        QTest::newRow("existing-row-not-cleared") << Flags::Hidden << 0 << false;
    }
    void flagRoundTrip()
    {
        QFETCH(Flags, flags);
        QFETCH(int, written);
        QFETCH(bool, expected);
        ProgramFolder folder({flags});
        QVERIFY(folder.isValid());
        for (int i = 0; written >= 0 && i < 2; ++i)
            CallLog::writeShowRegForm(written == 1);
        QCOMPARE(CallLog::readShowRegForm(), expected);
    }

    void installedFolderWrittenThroughUserCopy_data()
    {
        QTest::addColumn<bool>("readOnly");
        QTest::newRow("installed-folder-loses-its-flag") << true;
        QTest::newRow("writable-folder-written-through-copy") << false;
    }
    // The installed database says "hidden"; the user's answer says "shown".
    void installedFolderWrittenThroughUserCopy()
    {
        QFETCH(bool, readOnly);
        ProgramFolder folder({Flags::Hidden});
        QVERIFY(folder.isValid());
        AppFolder::setReadOnlyOverride(readOnly);
        QVERIFY(CallLog::readShowRegForm());
        CallLog::writeShowRegForm(false);
        QVERIFY(!CallLog::readShowRegForm());
        QCOMPARE(QFile::exists(userDataFolder() + "/CallLog.db"), readOnly);
        AppFolder::setReadOnlyOverride(false);
        QCOMPARE(CallLog::readShowRegForm(), readOnly);
    }

    // Reading and writing both fail with the file's path, and nothing is made
    // of a broken file: neither the file nor a user copy.
    void brokenDatabaseNamedAndNeverMade_data()
    {
        QTest::addColumn<QString>("made"); // what stands at the path
        QTest::addColumn<bool>("installed");
        QTest::addColumn<QString>("said");
        QTest::newRow("missing-database-created") << "" << false << "";
        QTest::newRow("missing-installed-file-copied") << "" << true << "";
        QTest::newRow("damaged-installed-file-copied") << "damaged" << true << "";
        QTest::newRow("folder-called-missing")
                << "folder" << false << "is a folder, not a database";
        // Opening a FIFO would wait for a writer that never comes.
        QTest::newRow("fifo-called-missing-or-blocking")
                << "fifo" << false << "is not a regular file";
    }
    void brokenDatabaseNamedAndNeverMade()
    {
        QFETCH(QString, made);
        QFETCH(bool, installed);
        QFETCH(QString, said);
        ProgramFolder folder({Flags::NoDatabase});
        const QString path = folder.file("CallLog.db");
        const QByteArray name = QFile::encodeName(path);
        if (made == "damaged") {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(4096, 'x')) == 4096);
        }
        QVERIFY(made != "folder" || mkdir(name.constData(), 0700) == 0);
        QVERIFY(made != "fifo" || mkfifo(name.constData(), 0600) == 0);
        AppFolder::setReadOnlyOverride(installed);
        for (int write = 0; write < 2; ++write) {
            try {
                write ? CallLog::writeShowRegForm(true) : void(CallLog::readShowRegForm());
                QFAIL("the call log was taken for a database");
            } catch (const IvrError &error) {
                QVERIFY2(error.description().contains(path) && error.description().contains(said),
                         qPrintable(error.description()));
            }
        }
        QVERIFY(!made.isEmpty() || !CallLog::OpenCallLog());
        QCOMPARE(QFile::exists(path), !made.isEmpty());
        QCOMPARE(QDir(userDataFolder()).entryList(QDir::Files), QStringList());
    }
};

QTEST_MAIN(tst_CallLog)
#include "tst_calllog.moc"
