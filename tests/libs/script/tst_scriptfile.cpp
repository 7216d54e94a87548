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

} // namespace

class tst_ScriptFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
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
    void fullDiskKeepsOldFile();

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

void tst_ScriptFile::cleanup()
{
    MsgBox::clearHook();
}

void tst_ScriptFile::roundTripKeepsEveryKey_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariantMap>("keys");
    const QVariantMap prompt{{"isTextMsg", false},
                             {"TextToPlay", "Welcome to \"Brindlewave\"\nPress 1"},
                             {"FileName", "/opt/ivr/Greeting/welcome.wav"}};
    const QVariantMap canvas{{"Description", "first step"},
                             {"Compact", true},
                             {"Left", float(240)},
                             {"Top", float(360)}};
    auto with = [&](QVariantMap keys, bool hasPrompt) {
        keys.insert(canvas);
        if (hasPrompt)
            keys.insert(prompt);
        return keys;
    };
    QVariantMap digits{{"PlayBeep", true}, {"TimeOut", 7.0}};
    for (int i = 0; i <= 9; ++i)
        digits.insert("OnDigit" + QString::number(i), "[Digit " + QString::number(i) + "]");
    digits.insert({{"OnStar", "[Star]"}, {"OnHash", "[Hash]"}, {"OnTimeOut", "[Slow]"}});

    QTest::newRow("end-call-0") << 0 << with({}, true);
    QTest::newRow("connected-1") << 1 << with({{"NextModule", "[Welcome]"}}, false);
    QTest::newRow("play-3")
            << 3
            << with({{"NextModule", "[Menu]"}, {"ReplayCount", 3.0}, {"PauseBetn", 2.0}}, true);
    QTest::newRow("digits-4-thirteen-exits") << 4 << with(digits, true);
    QTest::newRow("number-5") << 5
                              << with({{"OnSuccess", "[Ok]"},
                                       {"OnTimeOut", ""},
                                       {"PreDefBuffer", "0044"},
                                       {"PlayBeep", false},
                                       {"TimeOut", 12.0},
                                       {"MinLength", 4.0},
                                       {"MaxLength", 16.0}},
                                      true);
    QTest::newRow("transfer-6") << 6 << with({{"DefaultExt", "2301"}}, true);
    QTest::newRow("record-7") << 7
                              << with({{"OnFinish", "[Thanks]"},
                                       {"RecordLen", 45.0},
                                       {"PlayBeep", true},
                                       {"StopOnDigit", false}},
                                      true);
    QTest::newRow("query-8-no-record-exit-kept")
            << 8
            << with({{"OnSuccess", "[a]"},
                     {"OnFail", "[b]"},
                     {"OnNoRecord", "[c]"},
                     {"QueryString", "SELECT 1;\nSELECT 2"},
                     {"ConnectionString", "Driver=QSQLITE;Database=\"/srv/a;b.db\""}},
                    false);
    QTest::newRow("mail-9") << 9
                            << with({{"OnSuccess", "[a]"},
                                     {"OnFail", ""},
                                     {"SendTo", "ops@example.org"},
                                     {"MailFrom", "ivr@example.org"},
                                     {"Subject", "Voice mail"},
                                     {"Attachment", "/tmp/msg.wav"},
                                     {"Message", "Line 1\nLine 2"}},
                                    false);
    QTest::newRow("program-11") << 11
                                << with({{"OnSuccess", "[a]"},
                                         {"OnFail", "[b]"},
                                         {"FileName", "/usr/bin/logger"},
                                         {"CommandLine", "-t ivr called"},
                                         {"RunMode", qint32(1)}},
                                        false);
    QTest::newRow("script-call-12") << 12 << with({{"ScriptName", "/srv/ivr/billing.ivr"}}, false);
    QTest::newRow("condition-13")
            << 13
            << with({{"OnSuccess", "[a]"}, {"OnFail", "[b]"}, {"Condition", "digits == 3"}}, false);
}

void tst_ScriptFile::roundTripKeepsEveryKey()
{
    QFETCH(int, type);
    QFETCH(QVariantMap, keys);
    auto module = std::make_shared<ModuleData>();
    module->setModuleType(type);
    module->setName("Step Ünïcode");
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        module->definition().Properties(it.key()).setValue(it.value());
    ModuleList list;
    list.Add(module);

    const QString path = m_dir.filePath("roundtrip.ivr");
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    QVERIFY(ok);
    const QJsonObject saved = QJsonDocument::fromJson(readAll(path)).object();
    QCOMPARE(saved["modules"][0]["name"].toString(), QString("Step Ünïcode"));

    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->count(), 1);
    const ModuleDataPtr back = loaded->at(0);
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

    const QString path = m_dir.filePath("common.ivr");
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    QVERIFY(ok);
    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->count(), 2);
    const ModuleDataPtr back = loaded->at(1);
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
    QTest::newRow("negative-fraction") << -3.75f << 0.1f;
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
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    QVERIFY(ok);
    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded);
    QCOMPARE(loaded->at(0)->definition().Left(), left);
    QCOMPARE(loaded->at(0)->definition().Top(), top);

    ScriptFile().Save(path, *loaded, ok);
    QVERIFY(ok);
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
    const QByteArray slots31 = "[" + QByteArray(R"("",)").repeated(30) + R"(""])";
    QTest::newRow("empty-file") << QByteArray() << "empty";
    QTest::newRow("not-json") << QByteArray("[Connected]\nNextModule=[End Call]\n") << "not JSON";
    QTest::newRow("json-but-not-object") << QByteArray("[1, 2]") << "not a JSON object";
    QTest::newRow("wrong-format") << QByteArray(
            R"({"format": "other", "version": 1, "modules": []})")
                                  << "format";
    QTest::newRow("newer-version")
            << QByteArray(R"({"format": "brindlewave-ivr-script", "version": 2, "modules": []})")
            << "newer version";
    QTest::newRow("version-as-text")
            << QByteArray(R"({"format": "brindlewave-ivr-script", "version": "1", "modules": []})")
            << "version";
    QTest::newRow("modules-not-a-list")
            << QByteArray(R"({"format": "brindlewave-ivr-script", "version": 1, "modules": {}})")
            << "modules";
    QTest::newRow("name-missing") << scriptWith(R"({"type": 3})") << "no name";
    QTest::newRow("type-unknown") << scriptWith(R"({"name": "x", "type": 50})") << "type";
    QTest::newRow("type-fraction") << scriptWith(R"({"name": "x", "type": 3.5})") << "type";
    QTest::newRow("exit-as-number")
            << scriptWith(R"({"name": "x", "type": 3, "definition": {"NextModule": 4}})")
            << "\"NextModule\"";
    QTest::newRow("flag-as-number")
            << scriptWith(R"({"name": "x", "type": 3, "definition": {"isTextMsg": 1}})")
            << "true or false";
    QTest::newRow("number-as-text")
            << scriptWith(R"({"name": "x", "type": 4, "definition": {"TimeOut": "5"}})")
            << "\"TimeOut\"";
    QTest::newRow("number-overflowing-double")
            << scriptWith(R"({"name": "x", "type": 4, "definition": {"TimeOut": 1e999}})")
            << "not JSON";
    QTest::newRow("runmode-beyond-32-bit")
            << scriptWith(R"({"name": "x", "type": 11, "definition": {"RunMode": 2147483648}})")
            << "32 bits";
    QTest::newRow("left-beyond-float")
            << scriptWith(R"({"name": "x", "type": 3, "definition": {"Left": 1e39}})") << "float";
    QTest::newRow("filename-31-slots") << scriptWith(
            R"({"name": "C", "type": 98, "definition": {"FileName": )" + slots31 + "}}")
                                       << "32 texts";
    QTest::newRow("monthfile-13-slots")
            << scriptWith(QByteArray(R"({"name": "C", "type": 98, "definition": {"MonthFile": [)")
                          + QByteArray(R"("",)").repeated(12) + R"(""]}})")
            << "12 texts";
    QTest::newRow("scriptcount-beyond-16-bit")
            << scriptWith(R"({"name": "C", "type": 98, "definition": {"ScriptCount": 40000}})")
            << "ScriptCount";
    QTest::newRow("scriptname-not-texts")
            << scriptWith(R"({"name": "C", "type": 98, "definition": {"ScriptName": [1]}})")
            << "ScriptName";
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
    QTest::newRow("parent-is-regular-file") << "old.ivr/new.ivr"
                                            << "not a folder";
    QTest::newRow("missing-folder") << "nowhere/new.ivr"
                                    << "does not exist";
    QTest::newRow("target-is-folder") << "folder.ivr"
                                      << "folder";
}

void tst_ScriptFile::failedSaveKeepsOldFile()
{
    QFETCH(QString, target);
    QFETCH(QString, why);
    QTemporaryDir dir;
    const QByteArray old = scriptWith(R"({"name": "Connected", "type": 1})");
    writeFile(dir.filePath("old.ivr"), old);
    QVERIFY(QDir(dir.path()).mkdir("folder.ivr"));
    ModuleList list;
    list.Add(ModuleData::createNew(3, "Play"));

    bool ok = true;
    ScriptFile().Save(dir.filePath(target), list, ok);
    QVERIFY(!ok);
    QCOMPARE(m_messages.size(), 1);
    QVERIFY2(m_messages.first().text.contains(why), qPrintable(m_messages.first().text));
    QCOMPARE(readAll(dir.filePath("old.ivr")), old);
    QCOMPARE(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
             (QStringList{"folder.ivr", "old.ivr"}));
}

void tst_ScriptFile::fullDiskKeepsOldFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("script.ivr");
    const QByteArray old = scriptWith(R"({"name": "Connected", "type": 1})");
    writeFile(path, old);
    ModuleList list;
    for (int i = 0; i < 200; ++i)
        list.Add(ModuleData::createNew(4, QString::number(i)));

    // The child sees a disk that takes 4 KiB per file; it reports Ok and the
    // number of messages in its exit code.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &limit);
        bool ok = true;
        ScriptFile().Save(path, list, ok);
        _exit((ok ? 100 : 0) + int(m_messages.size()));
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 1);
    QCOMPARE(readAll(path), old);
    QCOMPARE(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
             QStringList{"script.ivr"});
}

QTEST_GUILESS_MAIN(tst_ScriptFile)
#include "tst_scriptfile.moc"
