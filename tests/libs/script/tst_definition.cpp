#include "definition.h"

#include <QTest>

using namespace ivr;

class tst_Definition : public QObject
{
    Q_OBJECT

private slots:
    void memberAndNameReachOneValue();
    void ascendingRemoveWalkEmptiesList();
};

void tst_Definition::memberAndNameReachOneValue()
{
    Definition d;
    d.setOnDigit7("[Sales]");
    QCOMPARE(d.Properties("OnDigit7").Value(), QVariant("[Sales]"));
    QCOMPARE(d.OnDigit6(), QString());
    d.Properties("isTextMsg").setValue(true);
    QVERIFY(d.isTextMsg());
    d.Properties("Left").setValue(1000.5);
    QCOMPARE(d.Left(), 1000.5f);
    QCOMPARE(d.Properties("Left").Value().typeId(), QMetaType::Float);
}

void tst_Definition::ascendingRemoveWalkEmptiesList()
{
    const QStringList scripts{"a.ivr", "b.ivr", "a.ivr", "c.ivr", "b.ivr"};
    Definition common;
    for (const QString &s : scripts)
        common.AddScript(s);
    const qint16 n = common.ScriptCount();
    for (int i = 1; i <= n; ++i) {
        QCOMPARE(common.ScriptName(i), scripts.at(i - 1));
        common.RemoveScript(common.ScriptName(i));
    }
    QCOMPARE(common.ScriptCount(), qint16(0));
    common.AddScript("new.ivr");
    QCOMPARE(common.ScriptName(1), QString("new.ivr"));
}

QTEST_GUILESS_MAIN(tst_Definition)
#include "tst_definition.moc"
