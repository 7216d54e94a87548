#include "msgbox.h"
#include "scriptfile.h"

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

QByteArray scriptWith(const QByteArray &modules, const QByteArray &version = "1")
{
    return R"({"format": "brindlewave-ivr-script", "version": )" + version + R"(, "modules": [)"
           + modules + "]}";
}

QByteArray moduleWith(int type, const QByteArray &definition)
{
    return scriptWith(R"({"name": "x", "type": )" + QByteArray::number(type) + R"(, "definition": )"
                      + definition + "}");
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
    void commonAndUnknownKeysWrittenBackUnchanged();
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
    const QByteArray prompt = R"("isTextMsg": false, "TextToPlay": "Say \"hi\"\n1",
                                 "FileName": "/opt/w.wav", )";
    auto row = [&](const char *name, int type, QByteArray keys) {
        keys = "{" + (QList{0, 3, 4, 5, 6, 7}.contains(type) ? prompt : QByteArray()) + keys
               + R"(, "Description": "d", "Compact": true, "Left": 1000.5, "Top": 7.25})";
        QTest::newRow(name) << type << QJsonDocument::fromJson(keys).object().toVariantMap();
    };
    QByteArray digits = R"("PlayBeep": true, "TimeOut": 7, "OnStar": "[S]", "OnHash": "[H]",
                           "OnTimeOut": "[T]")";
    for (int i = 0; i <= 9; ++i)
        digits += QStringLiteral(R"(, "OnDigit%1": "[D%1]")").arg(i).toUtf8();
    row("end-call-0", 0, R"("Spare": 1)");
    row("connected-1", 1, R"("NextModule": "[W]")");
    row("play-3", 3, R"("NextModule": "[M]", "ReplayCount": 3, "PauseBetn": 2)");
    row("digits-4-thirteen-exits", 4, digits);
    row("number-5", 5, R"("OnSuccess": "[O]", "OnTimeOut": "", "PreDefBuffer": "0044",
        "PlayBeep": false, "TimeOut": 12, "MinLength": 4, "MaxLength": 16)");
    row("transfer-6", 6, R"("DefaultExt": "2301")");
    row("record-7", 7, R"("OnFinish": "[T]", "RecordLen": 45, "PlayBeep": true,
        "StopOnDigit": false)");
    row("query-8-no-record-exit-kept",
        8,
        R"("OnSuccess": "[a]", "OnFail": "[b]",
        "OnNoRecord": "[c]", "QueryString": "SELECT 1", "ConnectionString": "a;b")");
    row("mail-9",
        9,
        R"("OnSuccess": "[a]", "OnFail": "", "SendTo": "o@x.org",
        "MailFrom": "i@x.org", "Subject": "S", "Attachment": "/m.wav", "Message": "1\n2")");
    row("program-11",
        11,
        R"("OnSuccess": "[a]", "OnFail": "[b]", "FileName": "/bin/true",
        "CommandLine": "-t", "RunMode": 1)");
    row("script-call-12", 12, R"("ScriptName": "/b.ivr")");
    row("condition-13", 13, R"("OnSuccess": "[a]", "OnFail": "[b]", "Condition": "d == 3")");
}

void tst_ScriptFile::roundTripKeepsEveryKey()
{
    QFETCH(int, type);
    QFETCH(QVariantMap, keys);
    QVERIFY2(keys.size() > 4, "the row's keys are not JSON");
    auto module = std::make_shared<ModuleData>();
    module->setModuleType(type);
    module->setName("Step Ü");
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        module->definition().Properties(it.key()).setValue(it.value());
    ModuleList list;
    list.Add(module);

    bool ok = false;
    ScriptFile().Save(m_dir.filePath("roundtrip.ivr"), list, ok);
    const std::optional<ModuleList> loaded = ScriptFile().Load(m_dir.filePath("roundtrip.ivr"));
    QVERIFY(ok && loaded && loaded->count() == 1);
    QCOMPARE(loaded->at(0)->Name(), QString("[Step Ü]"));
    QCOMPARE(loaded->at(0)->ModuleType(), type);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        QCOMPARE(loaded->at(0)->definition().Properties(it.key()).Value(), it.value());
    QVERIFY(m_messages.isEmpty());
}

void tst_ScriptFile::commonAndUnknownKeysWrittenBackUnchanged()
{
    QJsonArray files = QJsonArray::fromStringList(QStringList(32, QString()));
    QJsonArray months = QJsonArray::fromStringList(QStringList(12, QString()));
    files[31] = "/w/n31.wav";
    months[11] = "/w/december.wav";
    const QJsonObject unknown{{"Volume", QJsonObject{{"level", QJsonArray{1, 2.5, "loud"}}}},
                              {"Note", QJsonValue::Null}};
    QJsonObject common = unknown;
    common.insert("FileName", files);
    common.insert("MonthFile", months);
    common.insert("BeepFileName", "/opt/beep.wav");
    common.insert("ScriptName", QJsonArray{"/a.ivr", "/b.ivr", "/a.ivr"});
    common.insert("ScriptCount", 3);
    const QJsonArray written{QJsonObject{{"name", "Play"}, {"type", 3}, {"definition", unknown}},
                             QJsonObject{{"name", "Common"}, {"type", 98}, {"definition", common}}};
    const QString path = m_dir.filePath("common.ivr");
    writeFile(path,
              QJsonDocument(QJsonObject{{"format", "brindlewave-ivr-script"},
                                        {"version", 1},
                                        {"modules", written}})
                      .toJson());

    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded && loaded->count() == 2);
    QCOMPARE(loaded->at(1)->Name(), QString("[Common]"));
    const Definition &d = loaded->at(1)->definition();
    QCOMPARE(d.FileName(31), QString("/w/n31.wav"));
    QCOMPARE(d.MonthFile(11), QString("/w/december.wav"));
    QCOMPARE(d.BeepFileName(), QString("/opt/beep.wav"));
    QCOMPARE(d.scriptNames(), (QStringList{"/a.ivr", "/b.ivr", "/a.ivr"}));

    bool ok = false;
    ScriptFile().Save(path, *loaded, ok);
    QVERIFY(ok);
    const QJsonArray saved = QJsonDocument::fromJson(readAll(path))["modules"].toArray();
    for (int i = 0; i < 2; ++i) {
        const QJsonObject before = written[i]["definition"].toObject();
        for (const QString &key : before.keys())
            QCOMPARE(saved[i]["definition"][key], before[key]);
    }
}

void tst_ScriptFile::loadRefusesWithOneMessage_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("why");
    auto row = [](const char *name, const QByteArray &content, const char *why) {
        QTest::newRow(name) << content << QString::fromUtf8(why);
    };
    row("empty-file", QByteArray(), "empty");
    row("truncated", scriptWith(R"({"name": "x", "type": 3})").chopped(3), "not JSON");
    row("wrong-format", R"({"format": "other", "version": 1, "modules": []})", "format");
    row("newer-version", scriptWith("", "2"), "newer version");
    row("number-as-text", moduleWith(4, R"({"TimeOut": "5"})"), "\"TimeOut\"");
    row("left-beyond-float", moduleWith(3, R"({"Left": 1e39})"), "float");
    row("filename-31-slots",
        moduleWith(98, R"({"FileName": [)" + QByteArray(R"("",)").repeated(30) + R"(""]})"),
        "32 texts");
    row("scriptcount-beyond-16-bit", moduleWith(98, R"({"ScriptCount": 40000})"), "ScriptCount");
}

void tst_ScriptFile::loadRefusesWithOneMessage()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, why);
    const QString path = m_dir.filePath("damaged.ivr");
    writeFile(path, content);
    QVERIFY(!ScriptFile().Load(path));
    QCOMPARE(m_messages.size(), 1);
    const QString text = m_messages.first().text;
    QCOMPARE(m_messages.first().icon, QMessageBox::Critical);
    QVERIFY2(text.contains(path) && text.contains(why), qPrintable(text));
}

void tst_ScriptFile::failedSaveKeepsOldFile_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("why");
    QTest::addColumn<int>("fileLimit"); // bytes a file may grow to, 0 for no limit
    QTest::newRow("parent-is-regular-file") << "old.ivr/new.ivr"
                                            << "not a folder" << 0;
    QTest::newRow("missing-folder") << "nowhere/new.ivr"
                                    << "does not exist" << 0;
    QTest::newRow("full-disk-short-write-not-committed") << "old.ivr"
                                                         << "old.ivr" << 4096;
}

void tst_ScriptFile::failedSaveKeepsOldFile()
{
    QFETCH(QString, target);
    QFETCH(QString, why);
    QFETCH(int, fileLimit);
    QTemporaryDir dir;
    const QByteArray old = scriptWith(R"({"name": "Connected", "type": 1})");
    writeFile(dir.filePath("old.ivr"), old);
    ModuleList list;
    for (int i = 0; i < 200; ++i)
        list.Add(ModuleData::createNew(4, QString::number(i)));

    // The child's exit code carries Ok, whether the message says why, and
    // the number of messages.
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
             QStringList{"old.ivr"});
}

QTEST_GUILESS_MAIN(tst_ScriptFile)
#include "tst_scriptfile.moc"
