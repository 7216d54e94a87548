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
    void readsFirstRow_data();
    void readsFirstRow();
    void writeRoundTrip_data();
    void writeRoundTrip();
    void missingDatabaseIsNeverCreated();
};

void tst_CallLog::readsFirstRow_data()
{
    QTest::addColumn<Flags>("flags");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty-table-reads-false") << Flags::EmptyTable << false;
    QTest::newRow("row-one-reads-true") << Flags::Hidden << true;
    QTest::newRow("row-zero-reads-false") << Flags::Shown << false;
}

void tst_CallLog::readsFirstRow()
{
    QFETCH(Flags, flags);
    QFETCH(bool, expected);
    ProgramFolder folder({flags});
    QVERIFY(folder.isValid());
    QCOMPARE(CallLog::readShowRegForm(), expected);
    QVERIFY2(!CallLog::CallLogConnection().isOpen(), "the connection is closed between uses");
}

void tst_CallLog::writeRoundTrip_data()
{
    QTest::addColumn<Flags>("flags");
    QTest::addColumn<bool>("value");
    QTest::newRow("empty-table-gets-a-row") << Flags::EmptyTable << true;
    QTest::newRow("existing-row-cleared") << Flags::Hidden << false;
    QTest::newRow("existing-row-set") << Flags::Shown << true;
}

void tst_CallLog::writeRoundTrip()
{
    QFETCH(Flags, flags);
    QFETCH(bool, value);
    ProgramFolder folder({flags});
    CallLog::writeShowRegForm(value);
    CallLog::writeShowRegForm(value);
    QCOMPARE(CallLog::readShowRegForm(), value);
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
