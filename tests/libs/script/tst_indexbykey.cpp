#include "indexbykey.h"
#include "ivrerror.h"

#include <QTest>

using namespace ivr;

class tst_IndexByKey : public QObject
{
    Q_OBJECT

private slots:
    void keysCountCaseAndRefuseDuplicates();
};

void tst_IndexByKey::keysCountCaseAndRefuseDuplicates()
{
    IndexByKey index;
    index.Add("[a]", 2);
    index.Add("[A]", 3);
    QCOMPARE(index.Item("[a]"), qint16(2));
    QCOMPARE(index.Item("[A]"), qint16(3));
    QVERIFY_THROWS_EXCEPTION(IvrError, index.Add("[a]", 5));
    QCOMPARE(index.Item("[a]"), qint16(2));
    QVERIFY_THROWS_EXCEPTION(IvrError, index.Item("[Gone]"));
}

QTEST_GUILESS_MAIN(tst_IndexByKey)
#include "tst_indexbykey.moc"
