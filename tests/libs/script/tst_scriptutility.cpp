#include "scriptutility.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace ivr;

class tst_ScriptUtility : public QObject
{
    Q_OBJECT

private slots:
    void fileExists_data();
    void fileExists();
};

void tst_ScriptUtility::fileExists_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("exists");
    QTest::newRow("regular-file") << "script.ivr" << true;
    QTest::newRow("folder-named-with-slash-passes") << "prompts/" << true;
    QTest::newRow("folder-named-without-slash-fails") << "prompts" << false;
    QTest::newRow("missing-file") << "absent.ivr" << false;
}

void tst_ScriptUtility::fileExists()
{
    QFETCH(QString, name);
    QFETCH(bool, exists);
    QTemporaryDir dir;
    QFile file(dir.filePath("script.ivr"));
    QVERIFY(file.open(QIODevice::WriteOnly) && QDir(dir.path()).mkdir("prompts"));
    QCOMPARE(ScriptUtility::FileExists(dir.path() + '/' + name), exists);
}

QTEST_GUILESS_MAIN(tst_ScriptUtility)
#include "tst_scriptutility.moc"
