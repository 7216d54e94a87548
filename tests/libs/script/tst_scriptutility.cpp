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
    QTest::addColumn<QString>("relative");
    QTest::addColumn<bool>("exists");
    QTest::newRow("regular-file") << "script.ivr" << true;
    QTest::newRow("folder-named-with-slash-passes") << "prompts/" << true;
    QTest::newRow("folder-named-without-slash-fails") << "prompts" << false;
    QTest::newRow("missing-file") << "absent.ivr" << false;
    QTest::newRow("empty-path") << "" << false;
}

void tst_ScriptUtility::fileExists()
{
    QFETCH(QString, relative);
    QFETCH(bool, exists);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFile file(dir.filePath("script.ivr"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(QDir(dir.path()).mkdir("prompts"));

    const QString path = relative.isEmpty() ? QString() : dir.path() + '/' + relative;
    QCOMPARE(ScriptUtility::FileExists(path), exists);
}

QTEST_GUILESS_MAIN(tst_ScriptUtility)
#include "tst_scriptutility.moc"
