#include "indexbykey.h"
#include "ivrerror.h"

#include <QTest>

using namespace ivr;

class tst_IndexByKey : public QObject
{
    Q_OBJECT

private slots:
    void namesDifferingInCaseAreTwoKeys();
    void duplicateKeyIsRefused();
    void missingKeyIsRefused();
};

void tst_IndexByKey::namesDifferingInCaseAreTwoKeys()
{
    IndexByKey index;
    index.Add("[a]", 2);
    index.Add("[A]", 3);
    QCOMPARE(index.Item("[a]"), qint16(2));
    QCOMPARE(index.Item("[A]"), qint16(3));
}

void tst_IndexByKey::duplicateKeyIsRefused()
{
    IndexByKey index;
    index.Add("[Menu]", 2);
    QVERIFY_THROWS_EXCEPTION(IvrError, index.Add("[Menu]", 5));
    QCOMPARE(index.Item("[Menu]"), qint16(2));
}

void tst_IndexByKey::missingKeyIsRefused()
{
    IndexByKey index;
    index.Add("[Menu]", 2);
    QVERIFY_THROWS_EXCEPTION(IvrError, index.Item("[menu]"));
    QVERIFY(!index.contains("[Gone]"));
}

QTEST_GUILESS_MAIN(tst_IndexByKey)
#include "tst_indexbykey.moc"
