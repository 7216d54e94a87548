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
    const int dialog = int(ExitWalk::DialogWrites);
    // Only what the canvas tests cannot see through a rename or an open.
    QTest::newRow("digit-menu-thirteen-in-order") << 4 << open << digits;
    QTest::newRow("number-success-before-timeout")
            << 5 << dialog << QStringList{"OnSuccess", "OnTimeOut"};
    QTest::newRow("unknown-type-has-no-exit") << 57 << int(ExitWalk::Rename) << QStringList{};
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
