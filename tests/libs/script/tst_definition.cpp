#include "definition.h"
#include "moduledata.h"

#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace ivr;

using Getter = std::function<QVariant(const Definition &)>;
using Setter = std::function<void(Definition &, const QVariant &)>;
Q_DECLARE_METATYPE(Getter)
Q_DECLARE_METATYPE(Setter)

class tst_Definition : public QObject
{
    Q_OBJECT

private slots:
    void memberAndNameReachOneValue_data();
    void memberAndNameReachOneValue();
    void removeWalkEmptiesList_data();
    void removeWalkEmptiesList();
    void slotsOutOfRangeAreHarmless();
};

void tst_Definition::memberAndNameReachOneValue_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Getter>("get");
    QTest::addColumn<Setter>("set");
    // The member and its setter, named once: a row wires them to a key.
#define MEMBER_ROW(name, key, value, to)                                                           \
    QTest::newRow(name) << QString(#key) << QVariant(value)                                        \
                        << Getter([](const Definition &d) { return QVariant(d.key()); })           \
                        << Setter([](Definition &d, const QVariant &v) { d.set##key(v.to()); })
    MEMBER_ROW("OnDigit7-wired-to-its-own-slot", OnDigit7, QStringLiteral("[Sales]"), toString);
    MEMBER_ROW("isTextMsg-kept-as-boolean", isTextMsg, true, toBool);
    MEMBER_ROW("TimeOut-keeps-fraction", TimeOut, 2.5, toDouble);
    MEMBER_ROW("RunMode-stays-integer", RunMode, qint32(1), toInt);
    MEMBER_ROW("Left-half-pixel-not-rounded", Left, 1000.5f, toFloat);
#undef MEMBER_ROW
}

void tst_Definition::memberAndNameReachOneValue()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(Getter, get);
    QFETCH(Setter, set);

    Definition byName;
    byName.Properties(key).setValue(value);
    QCOMPARE(get(byName), value);

    Definition byMember;
    set(byMember, value);
    QCOMPARE(byMember.Properties(key).Value(), value);
    QCOMPARE(byMember.Properties(key).Value().typeId(), value.typeId());
}

void tst_Definition::removeWalkEmptiesList_data()
{
    QTest::addColumn<QStringList>("scripts");
    QTest::newRow("equal-names-each-removed-once") << QStringList{"a.ivr", "a.ivr", "a.ivr"};
    QTest::newRow("equal-names-between-others")
            << QStringList{"a.ivr", "b.ivr", "a.ivr", "c.ivr", "b.ivr"};
    QTest::newRow("empty-names") << QStringList{"", "x.ivr", ""};
}

void tst_Definition::removeWalkEmptiesList()
{
    QFETCH(QStringList, scripts);
    Definition common;
    for (const QString &s : scripts)
        common.AddScript(s);

    const qint16 n = common.ScriptCount();
    QCOMPARE(n, scripts.size());
    for (int i = 1; i <= n; ++i) {
        QCOMPARE(common.ScriptName(i), scripts.at(i - 1));
        common.RemoveScript(common.ScriptName(i));
    }
    QCOMPARE(common.ScriptCount(), qint16(0));

    common.AddScript("new.ivr");
    QCOMPARE(common.ScriptCount(), qint16(1));
    QCOMPARE(common.ScriptName(1), QString("new.ivr"));
}

void tst_Definition::slotsOutOfRangeAreHarmless()
{
    Definition common;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("IVR_CHECK failed"));
    common.setFileName(Definition::FileNameSlots, "/tmp/x.wav");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("IVR_CHECK failed"));
    common.setMonthFile(-1, "/tmp/x.wav");
    QCOMPARE(common.FileName(Definition::FileNameSlots), QString());
    QCOMPARE(common.MonthFile(12), QString());
    QCOMPARE(common.ScriptName(1), QString());
}

QTEST_GUILESS_MAIN(tst_Definition)
#include "tst_definition.moc"
