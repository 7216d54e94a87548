#include "moduledata.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ivr;

// What a module placed on the canvas starts with.
class tst_ModuleData : public QObject
{
    Q_OBJECT

private slots:
    void newModuleDefaults_data();
    void newModuleDefaults();
};

void tst_ModuleData::newModuleDefaults_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("expected"); // every stored key with its value
    const QByteArray prompt = R"("isTextMsg": true, "TextToPlay": "", "FileName": "", )";
    const QByteArray canvas = R"("Description": "", "Compact": false)";
    const QByteArray digits = R"("OnDigit0": "", "OnDigit1": "", "OnDigit2": "", "OnDigit3": "",
        "OnDigit4": "", "OnDigit5": "", "OnDigit6": "", "OnDigit7": "", "OnDigit8": "",
        "OnDigit9": "", "OnStar": "", "OnHash": "", "OnTimeOut": "", )";
    const auto row = [](const char *name, int type, const QByteArray &keys) {
        QTest::newRow(name) << type << "{" + keys + "}";
    };
    const QByteArray next = R"("NextModule": "", )";
    const QByteArray wait = R"("PlayBeep": false, "TimeOut": 5, )";
    const QByteArray successFail = R"("OnSuccess": "", "OnFail": "", )";
    const QByteArray number = R"("PreDefBuffer": "", "MinLength": 1, "MaxLength": 10, )";
    const QByteArray record = R"("RecordLen": 30, "PlayBeep": true, "StopOnDigit": true, )";
    const QByteArray program = R"("FileName": "", "CommandLine": "", "RunMode": 0, )";
    row("end-call-prompt-only", 0, prompt + canvas);
    row("connected-next", 1, next + canvas);
    row("type-2-next-as-play", 2, next + canvas);
    row("play-once-one-second-apart",
        3,
        next + prompt + R"("ReplayCount": 1, "PauseBetn": 1, )" + canvas);
    row("digits-thirteen-exits-five-seconds", 4, digits + prompt + wait + canvas);
    row("number-one-to-ten-digits",
        5,
        R"("OnSuccess": "", "OnTimeOut": "", )" + prompt + wait + number + canvas);
    row("transfer-no-exits", 6, prompt + R"("DefaultExt": "", )" + canvas);
    row("record-thirty-seconds-with-beep", 7, R"("OnFinish": "", )" + prompt + record + canvas);
    row("query-three-exits", 8, successFail + R"("OnNoRecord": "", )" + canvas);
    row("mail-two-exits", 9, successFail + canvas);
    row("type-10-nothing-of-its-own", 10, canvas);
    row("program-two-exits-run-mode-0", 11, successFail + program + canvas);
    row("script-call-no-exits", 12, R"("ScriptName": "", )" + canvas);
    row("condition-two-exits", 13, successFail + canvas);
    row("common-module-no-canvas-keys", 98, "");
}

void tst_ModuleData::newModuleDefaults()
{
    QFETCH(int, type);
    QFETCH(QByteArray, expected);
    QJsonParseError error;
    const QJsonObject want = QJsonDocument::fromJson(expected, &error).object();
    QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));

    const ModuleDataPtr module = ModuleData::createNew(type, QStringLiteral("7"));
    QCOMPARE(module->ModuleType(), type);
    QCOMPARE(module->Name(), QStringLiteral("7"));
    const QJsonObject have = module->definition().storedValues();
    QStringList haveKeys = have.keys();
    QStringList wantKeys = want.keys();
    haveKeys.sort();
    wantKeys.sort();
    QCOMPARE(haveKeys, wantKeys);
    for (auto it = want.begin(); it != want.end(); ++it) {
        // A number compares by value, whether it was stored whole or not.
        const QJsonValue value = have.value(it.key());
        QVERIFY2(it->isDouble() ? value.isDouble() && value.toDouble() == it->toDouble()
                                : value == *it,
                 qPrintable(it.key()));
    }
}

QTEST_GUILESS_MAIN(tst_ModuleData)
#include "tst_moduledata.moc"
