#include "calllog.h"
#include "ivrerror.h"
#include "programfolder.h"

#include <QFile>
#include <QTest>

using namespace ivr;
using Flags = ProgramFolder::Options::Flags;

class tst_CallLog : public QObject
{
    Q_OBJECT

private slots:
    void flagRoundTrip_data();
    void flagRoundTrip();
    void missingDatabaseIsNeverCreated();
};

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

QTEST_MAIN(tst_CallLog)
#include "tst_calllog.moc"
