#include "exittables.h"
#include "moduletypes.h"

#include <QTest>

using namespace ivr;

class tst_ExitTables : public QObject
{
    Q_OBJECT

private slots:
    void walkersKeepTheirDifferences_data();
    void walkersKeepTheirDifferences();
    void everyWalkedKeyIsAnExitOfTheType();
};

void tst_ExitTables::walkersKeepTheirDifferences_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("walk");
    QTest::addColumn<QStringList>("keys");

    QStringList digits;
    for (int d = 0; d <= 9; ++d)
        digits << QStringLiteral("OnDigit%1").arg(d);
    digits << "OnStar"
           << "OnHash"
           << "OnTimeOut";
    const int open = int(ExitWalk::OpenScript);
    const int rename = int(ExitWalk::Rename);
    const int dialog = int(ExitWalk::DialogWrites);
    QTest::newRow("query-open-skips-no-record") << 8 << open << QStringList{"OnSuccess", "OnFail"};
    QTest::newRow("query-rename-walks-no-record")
            << 8 << rename << QStringList{"OnSuccess", "OnFail", "OnNoRecord"};
    QTest::newRow("program-open-rebuilds-nothing") << 11 << open << QStringList{};
    QTest::newRow("program-rename-walks-both")
            << 11 << rename << QStringList{"OnSuccess", "OnFail"};
    QTest::newRow("type-2-walked-as-play") << 2 << rename << QStringList{"NextModule"};
    QTest::newRow("digit-menu-thirteen-in-order") << 4 << open << digits;
    QTest::newRow("number-success-before-timeout")
            << 5 << dialog << QStringList{"OnSuccess", "OnTimeOut"};
    QTest::newRow("end-call-has-no-exit") << 0 << rename << QStringList{};
    QTest::newRow("unknown-type-has-no-exit") << 57 << rename << QStringList{};
}

void tst_ExitTables::walkersKeepTheirDifferences()
{
    QFETCH(int, type);
    QFETCH(int, walk);
    QFETCH(QStringList, keys);
    QCOMPARE(ExitTables::keys(type, ExitWalk(walk)), keys);
}

void tst_ExitTables::everyWalkedKeyIsAnExitOfTheType()
{
    // No walker may reach a key that the type's own table does not have:
    // that is how a rename would spill into another type's exit.
    for (int type : ModuleTypes::types()) {
        const QStringList exits = ModuleTypes::info(type).exitKeys;
        for (ExitWalk walk : {ExitWalk::DialogWrites, ExitWalk::Rename, ExitWalk::OpenScript}) {
            for (const QString &key : ExitTables::keys(type, walk))
                QVERIFY2(exits.contains(key), qPrintable(QString("%1 %2").arg(type).arg(key)));
        }
        QCOMPARE(ExitTables::keys(type, ExitWalk::DialogWrites), exits);
    }
}

QTEST_MAIN(tst_ExitTables)
#include "tst_exittables.moc"
