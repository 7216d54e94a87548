#include "msgbox.h"
#include "scriptfile.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace ivr;

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &data)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(data), data.size());
}

QByteArray scriptWith(const QByteArray &modules)
{
    return R"({"format": "brindlewave-ivr-script", "version": 1, "modules": [)" + modules + "]}";
}

QByteArray moduleWith(int type, const QByteArray &definition)
{
    return scriptWith(R"({"name": "x", "type": )" + QByteArray::number(type) + R"(, "definition": )"
                      + definition + "}");
}

// Saves and loads again; an empty list when either step failed.
ModuleList saveAndLoad(const QString &path, const ModuleList &list)
{
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    const std::optional<ModuleList> loaded = ok ? ScriptFile().Load(path) : std::nullopt;
    return loaded.value_or(ModuleList());
}

} // namespace

class tst_ScriptFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { MsgBox::clearHook(); }
    void roundTripKeepsEveryKey_data();
    void roundTripKeepsEveryKey();
    void commonModuleRoundTrip();
    void unknownKeysWrittenBackUnchanged();
    void positionsKeptToTheFraction_data();
    void positionsKeptToTheFraction();
    void missingKeysTakeDefaults();
    void loadRefusesWithOneMessage_data();
    void loadRefusesWithOneMessage();
    void failedSaveKeepsOldFile_data();
    void failedSaveKeepsOldFile();

private:
    QTemporaryDir m_dir;
    QList<MsgBox::Message> m_messages;
};

void tst_ScriptFile::init()
{
    m_messages.clear();
    MsgBox::setHook([this](const MsgBox::Message &m) {
        m_messages << m;
        return QMessageBox::Ok;
    });
}

void tst_ScriptFile::roundTripKeepsEveryKey_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariantMap>("keys");
    // Every type with the canvas keys, its own keys and, where it plays one,
    // the prompt's.
    const QByteArray prompt
            = R"("isTextMsg": false, "TextToPlay": "Welcome to \"Brindlewave\"\nPress 1",
                                 "FileName": "/opt/ivr/Greeting/welcome.wav", )";
    auto row = [&](const char *name, int type, QByteArray keys, bool hasPrompt = false) {
        keys = "{" + (hasPrompt ? prompt : QByteArray()) + keys
               + R"(, "Description": "first step", "Compact": true, "Left": 240, "Top": 360})";
        QTest::newRow(name) << type << QJsonDocument::fromJson(keys).object().toVariantMap();
    };
    QByteArray digits = R"("PlayBeep": true, "TimeOut": 7, "OnStar": "[Star]", "OnHash": "[Hash]",
                           "OnTimeOut": "[Slow]")";
    for (int i = 0; i <= 9; ++i)
        digits += QStringLiteral(R"(, "OnDigit%1": "[Digit %1]")").arg(i).toUtf8();
    row("end-call-0", 0, R"("Spare": 1)", true);
    row("connected-1", 1, R"("NextModule": "[Welcome]")");
    row("play-3", 3, R"("NextModule": "[Menu]", "ReplayCount": 3, "PauseBetn": 2)", true);
    row("digits-4-thirteen-exits", 4, digits, true);
    row("number-5",
        5,
        R"("OnSuccess": "[Ok]", "OnTimeOut": "", "PreDefBuffer": "0044",
        "PlayBeep": false, "TimeOut": 12, "MinLength": 4, "MaxLength": 16)",
        true);
    row("transfer-6", 6, R"("DefaultExt": "2301")", true);
    row("record-7",
        7,
        R"("OnFinish": "[Thanks]", "RecordLen": 45, "PlayBeep": true,
        "StopOnDigit": false)",
        true);
    row("query-8-no-record-exit-kept", 8, R"("OnSuccess": "[a]", "OnFail": "[b]",
        "OnNoRecord": "[c]", "QueryString": "SELECT 1;\nSELECT 2",
        "ConnectionString": "Driver=QSQLITE;Database=\"/srv/a;b.db\"")");
    row("mail-9", 9, R"("OnSuccess": "[a]", "OnFail": "", "SendTo": "ops@example.org",
        "MailFrom": "ivr@example.org", "Subject": "Voice mail", "Attachment": "/tmp/msg.wav",
        "Message": "Line 1\nLine 2")");
    row("program-11", 11, R"("OnSuccess": "[a]", "OnFail": "[b]", "FileName": "/usr/bin/logger",
        "CommandLine": "-t ivr called", "RunMode": 1)");
    row("script-call-12", 12, R"("ScriptName": "/srv/ivr/billing.ivr")");
    row("condition-13", 13, R"("OnSuccess": "[a]", "OnFail": "[b]", "Condition": "digits == 3")");
}

void tst_ScriptFile::roundTripKeepsEveryKey()
{
    QFETCH(int, type);
    QFETCH(QVariantMap, keys);
    QVERIFY2(keys.size() > 4, "the row's keys are not JSON");
    auto module = std::make_shared<ModuleData>();
    module->setModuleType(type);
    module->setName("Step Ünïcode");
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        module->definition().Properties(it.key()).setValue(it.value());
    ModuleList list;
    list.Add(module);

    const QString path = m_dir.filePath("roundtrip.ivr");
    const ModuleList loaded = saveAndLoad(path, list);
    QCOMPARE(loaded.count(), 1);
    const QJsonObject saved = QJsonDocument::fromJson(readAll(path)).object();
    QCOMPARE(saved["modules"][0]["name"].toString(), QString("Step Ünïcode"));
    const ModuleDataPtr back = loaded.at(0);
    QCOMPARE(back->Name(), QString("[Step Ünïcode]"));
    QCOMPARE(back->ModuleType(), type);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        QCOMPARE(back->definition().Properties(it.key()).Value(), it.value());
    QVERIFY(m_messages.isEmpty());
}

void tst_ScriptFile::commonModuleRoundTrip()
{
    auto common = std::make_shared<ModuleData>();
    common->setModuleType(98);
    common->setName("Common");
    Definition &d = common->definition();
    for (int i = 0; i < Definition::FileNameSlots; i += 3)
        d.setFileName(i, QString("/w/n%1.wav").arg(i));
    d.setMonthFile(11, "/w/december.wav");
    d.setBeepFileName("/opt/ivr/Greeting/beep.wav");
    for (const char *s : {"/a.ivr", "/b.ivr", "/a.ivr", "/gone.ivr"})
        d.AddScript(s);
    d.RemoveScript("/gone.ivr");
    ModuleList list;
    list.Add(ModuleData::createNew(1, "Connected"));
    list.Add(common);

    const ModuleList loaded = saveAndLoad(m_dir.filePath("common.ivr"), list);
    QCOMPARE(loaded.count(), 2);
    const ModuleDataPtr back = loaded.at(1);
    QCOMPARE(back->ModuleType(), 98);
    QCOMPARE(back->Name(), QString("[Common]"));
    const Definition &b = back->definition();
    for (int i = 0; i < Definition::FileNameSlots; ++i)
        QCOMPARE(b.FileName(i), d.FileName(i));
    QCOMPARE(b.MonthFile(11), QString("/w/december.wav"));
    QCOMPARE(b.MonthFile(0), QString());
    QCOMPARE(b.BeepFileName(), d.BeepFileName());
    QCOMPARE(b.ScriptCount(), qint16(3));
    QCOMPARE(b.scriptNames(), (QStringList{"/a.ivr", "/b.ivr", "/a.ivr"}));
}

void tst_ScriptFile::unknownKeysWrittenBackUnchanged()
{
    const QByteArray extra = R"({"Volume": {"level": [1, 2.5, "loud"]}, "Big": 9007199254740993,
                                 "Note": null})";
    const QString path = m_dir.filePath("newer.ivr");
    writeFile(path,
              scriptWith(R"({"name": "Play", "type": 3, "definition": )" + extra
                         + R"(}, {"name": "Common", "type": 98, "definition": )" + extra + "}"));
    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->at(0)->definition().Properties("Note").Value(), QVariant::fromValue(nullptr));

    const QString copy = m_dir.filePath("copy.ivr");
    bool ok = false;
    ScriptFile().Save(copy, *loaded, ok);
    QVERIFY(ok);
    const QJsonObject expected = QJsonDocument::fromJson(extra).object();
    const QJsonArray modules = QJsonDocument::fromJson(readAll(copy)).object()["modules"].toArray();
    for (const QJsonValue &module : modules) {
        for (const QString &key : expected.keys())
            QCOMPARE(module["definition"][key], expected[key]);
    }
}

void tst_ScriptFile::positionsKeptToTheFraction_data()
{
    QTest::addColumn<float>("left");
    QTest::addColumn<float>("top");
    QTest::newRow("half-pixel-not-rounded") << 1000.5f << 7.25f;
    QTest::newRow("beyond-int-precision") << 16777216.0f << 3.0e38f;
}

void tst_ScriptFile::positionsKeptToTheFraction()
{
    QFETCH(float, left);
    QFETCH(float, top);
    ModuleDataPtr module = ModuleData::createNew(3, "Play");
    module->definition().setLeft(left);
    module->definition().setTop(top);
    ModuleList list;
    list.Add(module);
    const QString path = m_dir.filePath("position.ivr");
    const ModuleList once = saveAndLoad(path, list);
    QCOMPARE(once.count(), 1);
    const ModuleList twice = saveAndLoad(path, once);
    QCOMPARE(twice.count(), 1);
    QCOMPARE(twice.at(0)->definition().Left(), left);
    QCOMPARE(twice.at(0)->definition().Top(), top);
    const QJsonValue saved = QJsonDocument::fromJson(readAll(path)).object()["modules"][0];
    QCOMPARE(saved["definition"]["Left"].toDouble(), double(left));
}

void tst_ScriptFile::missingKeysTakeDefaults()
{
    const QString path = m_dir.filePath("handmade.ivr");
    writeFile(path, scriptWith(R"({"name": "Connected", "type": 1},
                            {"name": "Common", "type": 98, "definition": {}})"));
    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->at(0)->definition().NextModule(), QString());
    QCOMPARE(loaded->at(0)->definition().isTextMsg(), false);
    QCOMPARE(loaded->at(1)->definition().FileName(31), QString());
    QCOMPARE(loaded->at(1)->definition().ScriptCount(), qint16(0));
}

void tst_ScriptFile::loadRefusesWithOneMessage_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("why");
    auto row = [](const char *name, const QByteArray &content, const char *why) {
        QTest::newRow(name) << content << QString::fromUtf8(why);
    };
    auto header = [](const QByteArray &format, const QByteArray &version, const char *modules) {
        return R"({"format": ")" + format + R"(", "version": )" + version + R"(, "modules": )"
               + modules + "}";
    };
    const QByteArray ours = "brindlewave-ivr-script";
    row("empty-file", QByteArray(), "empty");
    row("not-json", "[Connected]\nNextModule=[End Call]\n", "not JSON");
    row("truncated", scriptWith(R"({"name": "x", "type": 3})").chopped(3), "not JSON");
    row("wrong-format", header("other", "1", "[]"), "format");
    row("newer-version", header(ours, "2", "[]"), "newer version");
    row("modules-not-a-list", header(ours, "1", "{}"), "modules");
    row("name-missing", scriptWith(R"({"type": 3})"), "no name");
    row("type-unknown", scriptWith(R"({"name": "x", "type": 50})"), "type");
    row("type-fraction", scriptWith(R"({"name": "x", "type": 3.5})"), "type");
    row("exit-as-number", moduleWith(3, R"({"NextModule": 4})"), "\"NextModule\"");
    row("flag-as-number", moduleWith(3, R"({"isTextMsg": 1})"), "true or false");
    row("number-as-text", moduleWith(4, R"({"TimeOut": "5"})"), "\"TimeOut\"");
    row("runmode-beyond-32-bit", moduleWith(11, R"({"RunMode": 2147483648})"), "32 bits");
    row("left-beyond-float", moduleWith(3, R"({"Left": 1e39})"), "float");
    row("filename-31-slots",
        moduleWith(98, R"({"FileName": [)" + QByteArray(R"("",)").repeated(30) + R"(""]})"),
        "32 texts");
    row("scriptcount-beyond-16-bit", moduleWith(98, R"({"ScriptCount": 40000})"), "ScriptCount");
    row("scriptname-not-texts", moduleWith(98, R"({"ScriptName": [1]})"), "ScriptName");
}

void tst_ScriptFile::loadRefusesWithOneMessage()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, why);
    const QString path = m_dir.filePath("damaged.ivr");
    writeFile(path, content);
    QVERIFY(!ScriptFile().Load(path));
    QCOMPARE(m_messages.size(), 1);
    QCOMPARE(m_messages.first().icon, QMessageBox::Critical);
    QVERIFY2(m_messages.first().text.contains(path), qPrintable(m_messages.first().text));
    QVERIFY2(m_messages.first().text.contains(why), qPrintable(m_messages.first().text));
}

void tst_ScriptFile::failedSaveKeepsOldFile_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("why");
    QTest::addColumn<int>("fileLimit"); // bytes a file may grow to, 0 for no limit
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    row("parent-is-regular-file", "old.ivr/new.ivr", "not a folder", 0);
    row("missing-folder", "nowhere/new.ivr", "does not exist", 0);
    row("target-is-folder", "folder.ivr", "folder", 0);
    row("full-disk-short-write-not-committed", "old.ivr", "old.ivr", 4096);
}

void tst_ScriptFile::failedSaveKeepsOldFile()
{
    QFETCH(QString, target);
    QFETCH(QString, why);
    QFETCH(int, fileLimit);
    QTemporaryDir dir;
    const QByteArray old = scriptWith(R"({"name": "Connected", "type": 1})");
    writeFile(dir.filePath("old.ivr"), old);
    QVERIFY(QDir(dir.path()).mkdir("folder.ivr"));
    ModuleList list;
    for (int i = 0; i < 200; ++i)
        list.Add(ModuleData::createNew(4, QString::number(i)));

    // The save runs in a child that sees a disk taking fileLimit bytes per
    // file; it reports Ok, the number of messages and whether the message
    // says why in its exit code.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        if (fileLimit) {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{rlim_t(fileLimit), rlim_t(fileLimit)};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        bool ok = true;
        ScriptFile().Save(dir.filePath(target), list, ok);
        const bool says = !m_messages.isEmpty() && m_messages.first().text.contains(why);
        _exit((ok ? 100 : 0) + (says ? 10 : 0) + int(m_messages.size()));
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 11);
    QCOMPARE(readAll(dir.filePath("old.ivr")), old);
    QCOMPARE(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
             (QStringList{"folder.ivr", "old.ivr"}));
}

QTEST_GUILESS_MAIN(tst_ScriptFile)
#include "tst_scriptfile.moc"
