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

class tst_CallLog : public QObject
{
    Q_OBJECT

private slots:
    void flagRoundTrip_data();
    void flagRoundTrip();
    void missingDatabaseIsNeverCreated();
    void installedFolderWrittenThroughUserCopy_data();
    void installedFolderWrittenThroughUserCopy();
    void brokenInstallationIsNamedAndNotCopied_data();
    void brokenInstallationIsNamedAndNotCopied();
    void databaseThatIsNoFileSaysWhatItIs_data();
    void databaseThatIsNoFileSaysWhatItIs();
};

namespace {
QString userDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}
} // namespace

void tst_CallLog::flagRoundTrip_data()
{
    QTest::addColumn<Flags>("flags");
    QTest::addColumn<int>("written"); // -1: nothing written
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty-table-reads-false") << Flags::EmptyTable << -1 << false;
    QTest::newRow("row-one-reads-true") << Flags::Hidden << -1 << true;
    QTest::newRow("row-zero-reads-false") << Flags::Shown << -1 << false;
    QTest::newRow("empty-table-gets-a-row") << Flags::EmptyTable << 1 << true;
    QTest::newRow("existing-row-cleared") << Flags::Hidden << 0 << false;
}

void tst_CallLog::flagRoundTrip()
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

void tst_CallLog::missingDatabaseIsNeverCreated()
{
    ProgramFolder folder({Flags::NoDatabase});
    QVERIFY(!CallLog::OpenCallLog());
    QVERIFY_THROWS_EXCEPTION(IvrError, CallLog::readShowRegForm());
    QVERIFY(!QFile::exists(folder.file("CallLog.db")));
}

void tst_CallLog::installedFolderWrittenThroughUserCopy_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("installedAfter");
    QTest::addColumn<bool>("copyMade");
    QTest::newRow("installed-folder-keeps-its-flag") << true << true << true;
    QTest::newRow("writable-folder-written-in-place") << false << false << false;
}

// The installed database says "hidden"; the user's answer says "shown".
void tst_CallLog::installedFolderWrittenThroughUserCopy()
{
    QFETCH(bool, readOnly);
    QFETCH(bool, installedAfter);
    QFETCH(bool, copyMade);
    ProgramFolder folder({Flags::Hidden});
    QVERIFY(folder.isValid());
    AppFolder::setReadOnlyOverride(readOnly);
    QVERIFY(CallLog::readShowRegForm());
    CallLog::writeShowRegForm(false);
    QVERIFY(!CallLog::readShowRegForm());
    QCOMPARE(QFile::exists(userDataFolder() + "/CallLog.db"), copyMade);
    AppFolder::setReadOnlyOverride(false);
    QCOMPARE(CallLog::readShowRegForm(), installedAfter);
}

void tst_CallLog::brokenInstallationIsNamedAndNotCopied_data()
{
    QTest::addColumn<QByteArray>("installed"); // empty: no file
    QTest::newRow("missing-installed-file") << QByteArray();
    QTest::newRow("damaged-installed-file") << QByteArray(4096, 'x');
}

void tst_CallLog::brokenInstallationIsNamedAndNotCopied()
{
    QFETCH(QByteArray, installed);
    ProgramFolder folder({Flags::NoDatabase});
    if (!installed.isEmpty()) {
        QFile file(folder.file("CallLog.db"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(installed) == installed.size());
    }
    AppFolder::setReadOnlyOverride(true);
    try {
        CallLog::readShowRegForm();
        QFAIL("a broken installation was read");
    } catch (const IvrError &error) {
        QVERIFY2(error.description().contains(folder.file("CallLog.db")),
                 qPrintable(error.description()));
    }
    QCOMPARE(QDir(userDataFolder()).entryList(QDir::Files), QStringList());
}

void tst_CallLog::databaseThatIsNoFileSaysWhatItIs_data()
{
    QTest::addColumn<bool>("fifo");
    QTest::addColumn<QString>("said");
    QTest::newRow("folder-called-missing") << false << "is a folder, not a database file";
    // Opening a FIFO would wait for a writer that never comes.
    QTest::newRow("fifo-called-missing-or-blocking") << true << "is not a regular file";
}

void tst_CallLog::databaseThatIsNoFileSaysWhatItIs()
{
    QFETCH(bool, fifo);
    QFETCH(QString, said);
    ProgramFolder folder({Flags::NoDatabase});
    const QByteArray path = QFile::encodeName(folder.file("CallLog.db"));
    QCOMPARE(fifo ? mkfifo(path.constData(), 0600) : mkdir(path.constData(), 0700), 0);
    for (int write = 0; write < 2; ++write) {
        try {
            write ? CallLog::writeShowRegForm(true) : void(CallLog::readShowRegForm());
            QFAIL("the call log was taken for a database");
        } catch (const IvrError &error) {
            QVERIFY2(error.description().contains(said), qPrintable(error.description()));
            QVERIFY(error.description().contains(folder.file("CallLog.db")));
        }
    }
}

QTEST_MAIN(tst_CallLog)
#include "tst_calllog.moc"
