#include "appfolder.h"
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
#include <sys/stat.h>
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

// Load, then save to another file, as the window does: names without their
// brackets, and with or without the positions copied back through the float
// members first.
QByteArray resaved(const QString &from, const QString &to, bool copyPositions)
{
    const std::optional<ModuleList> list = ScriptFile().Load(from);
    if (!list)
        return {};
    for (const ModuleDataPtr &module : *list) {
        module->setName(module->Name().mid(1, module->Name().size() - 2));
        Definition &d = module->definition();
        if (copyPositions && module->ModuleType() != ModuleData::CommonModuleType) {
            d.setLeft(d.Left());
            d.setTop(d.Top());
        }
    }
    bool ok = false;
    ScriptFile().Save(to, *list, ok);
    return ok ? readAll(to) : QByteArray();
}

QJsonValue valueAt(const QByteArray &json, const QStringList &path)
{
    QJsonValue value = QJsonDocument::fromJson(json).object();
    for (const QString &step : path)
        value = value.isArray() ? value[step.toInt()] : value[step];
    return value;
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
    void positionKeepsItsText_data();
    void positionKeepsItsText();
    void unknownKeyKeptAtEveryLevel_data();
    void unknownKeyKeptAtEveryLevel();
    void savedFileIsQtsIndentedJson_data();
    void savedFileIsQtsIndentedJson();
    void commonWithoutBeepTakesDefaultBeep();
    void loadRefusesWhatIsNoScriptFile_data();
    void loadRefusesWhatIsNoScriptFile();
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
    const ModuleDataPtr back = *loaded->begin();
    QCOMPARE(back->Name(), QString("[Step Ü]"));
    QCOMPARE(back->ModuleType(), type);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        QCOMPARE(back->definition().Properties(it.key()).Value(), it.value());
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
    const ModuleDataPtr commonBack = *std::next(loaded->begin());
    QCOMPARE(commonBack->Name(), QString("[Common]"));
    const Definition &d = commonBack->definition();
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

void tst_ScriptFile::positionKeepsItsText_data()
{
    QTest::addColumn<QByteArray>("inFile");
    QTest::addColumn<QByteArray>("saved");
    QTest::newRow("one-decimal-not-seventeen-digits") << QByteArray("33.3") << QByteArray("33.3");
    QTest::newRow("tenth") << QByteArray("0.1") << QByteArray("0.1");
    QTest::newRow("tiny-exponent") << QByteArray("1e-07") << QByteArray("1e-07");
    QTest::newRow("far-off-canvas") << QByteArray("-3.4e+38") << QByteArray("-3.4e+38");
    QTest::newRow("largest-float-not-refused")
            << QByteArray("3.4028235e+38") << QByteArray("3.4028235e+38");
    QTest::newRow("negative-zero-is-zero") << QByteArray("-0") << QByteArray("0");
}

void tst_ScriptFile::positionKeepsItsText()
{
    QFETCH(QByteArray, inFile);
    QFETCH(QByteArray, saved);
    const QString path = m_dir.filePath("floats.ivr");
    writeFile(path, moduleWith(3, R"({"Left": )" + inFile + R"(, "Top": )" + inFile + "}"));

    // A save without edits copies each position through its float member.
    const QByteArray first = resaved(path, m_dir.filePath("first.ivr"), false);
    const QByteArray copied = resaved(path, m_dir.filePath("copied.ivr"), true);
    const QByteArray again
            = resaved(m_dir.filePath("copied.ivr"), m_dir.filePath("again.ivr"), true);
    QVERIFY2(copied.contains("\"Left\": " + saved + ","), copied.constData());
    QCOMPARE(copied, first);
    QCOMPARE(again, copied);
    QVERIFY(m_messages.isEmpty());
}

void tst_ScriptFile::unknownKeyKeptAtEveryLevel_data()
{
    QTest::addColumn<QStringList>("path");
    QTest::newRow("top-level-beside-modules") << QStringList{"generator"};
    QTest::newRow("module-entry-beside-name") << QStringList{"modules", "0", "colour"};
    QTest::newRow("common-entry-beside-type") << QStringList{"modules", "1", "layer"};
    QTest::newRow("inside-definition") << QStringList{"modules", "0", "definition", "Volume"};
}

void tst_ScriptFile::unknownKeyKeptAtEveryLevel()
{
    QFETCH(QStringList, path);
    const QJsonObject extra{{"build", QJsonArray{1, 2.5, "b"}}, {"by", QJsonValue::Null}};
    const QJsonArray modules{
            QJsonObject{{"name", "Play"},
                        {"type", 3},
                        {"colour", "#ff0000"},
                        {"definition", QJsonObject{{"Volume", extra}, {"Left", 33.3}}}},
            QJsonObject{{"name", "Common"}, {"type", 98}, {"layer", extra}}};
    const QString path0 = m_dir.filePath("unknown.ivr");
    writeFile(path0,
              QJsonDocument(QJsonObject{{"format", "brindlewave-ivr-script"},
                                        {"version", 1},
                                        {"modules", modules},
                                        {"generator", extra}})
                      .toJson());
    const QByteArray before = readAll(path0);

    const QByteArray saved = resaved(path0, m_dir.filePath("saved.ivr"), true);
    QVERIFY(!valueAt(before, path).isUndefined());
    QCOMPARE(valueAt(saved, path), valueAt(before, path));
    QVERIFY2(
            saved.startsWith("{\n    \"format\": \"brindlewave-ivr-script\",\n    \"version\": 1,\n"
                             "    \"modules\": ["),
            saved.constData());
    QCOMPARE(resaved(m_dir.filePath("saved.ivr"), m_dir.filePath("again.ivr"), true), saved);
}

void tst_ScriptFile::savedFileIsQtsIndentedJson_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QJsonObject>("entryKeys");
    QTest::newRow("plain-name-written-as-is") << QString("Welcome 2") << QJsonObject();
    QTest::newRow("quote-escaped") << QString(R"(say "hi")") << QJsonObject();
    QTest::newRow("backslash-escaped") << QString(R"(C:\ivr)") << QJsonObject();
    QTest::newRow("control-characters-escaped") << QString("tab\tline\n\x01") << QJsonObject();
    QTest::newRow("delete-character-not-escaped") << QString("rub\x7f") << QJsonObject();
    QTest::newRow("non-ascii-as-utf8") << QString::fromUtf8("Caf\u00e9 \u4e2d") << QJsonObject();
    QTest::newRow("lone-surrogate-escaped") << QString("half") + QChar(0xd800) << QJsonObject();
    QTest::newRow("entry-key-sorted-before-definition")
            << QString("Play") << QJsonObject{{"colour", "#ff0000"}};
    QTest::newRow("entry-key-sorted-after-type")
            << QString("Play") << QJsonObject{{"zorder", QJsonArray{1, 2.5}}};
}

// Modules are written one by one, and most of an entry by hand: the file must
// still be the indented JSON that Qt writes for the whole document.
void tst_ScriptFile::savedFileIsQtsIndentedJson()
{
    QFETCH(QString, name);
    QFETCH(QJsonObject, entryKeys);
    ModuleList list;
    ModuleDataPtr play = ModuleData::createNew(3, name);
    play->definition().setLeft(33.3f);
    play->setUnknownKeys(entryKeys);
    list.Add(play);
    list.Add(ModuleData::createNew(13, "Check"));
    auto common = std::make_shared<ModuleData>();
    common->setModuleType(ModuleData::CommonModuleType);
    common->setName("Common");
    common->definition().AddScript("/s/a.ivr");
    list.Add(common);
    const QString path = m_dir.filePath("qt.ivr");
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    QVERIFY(ok);

    // The file puts "format" and "version" first where Qt would order the
    // top level's keys; without "version" the orders agree.
    QByteArray saved = readAll(path);
    QVERIFY(saved.contains("\n    \"version\": 1,\n"));
    saved.replace("\n    \"version\": 1,\n", "\n");
    QCOMPARE(saved, QJsonDocument::fromJson(saved).toJson(QJsonDocument::Indented));
    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded && loaded->count() == 3);
    QCOMPARE((*loaded->begin())->Name(), "[" + name + "]");
    QCOMPARE((*loaded->begin())->unknownKeys(), entryKeys);
    QVERIFY(m_messages.isEmpty());
}

void tst_ScriptFile::commonWithoutBeepTakesDefaultBeep()
{
    QTemporaryDir programFolder;
    AppFolder::setOverride(programFolder.path());
    auto overrideGone = qScopeGuard([] { AppFolder::clearOverride(); });
    const QString path = m_dir.filePath("nobeep.ivr");
    writeFile(path, moduleWith(98, R"({"ScriptCount": 0})"));
    const std::optional<ModuleList> loaded = ScriptFile().Load(path);
    QVERIFY(loaded && loaded->count() == 1);
    QCOMPARE((*loaded->begin())->definition().BeepFileName(),
             programFolder.filePath("Greeting/beep.wav"));
}

void tst_ScriptFile::loadRefusesWhatIsNoScriptFile_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("why");
    QTest::newRow("fifo-not-waited-for") << "fifo"
                                         << "it is not a regular file";
    QTest::newRow("folder-named-with-slash") << "folder/"
                                             << "it is a folder, not a file";
    QTest::newRow("sparse-file-over-limit-not-read") << "sparse"
                                                     << "too large";
    QTest::newRow("missing-file") << "missing"
                                  << "does not exist";
}

void tst_ScriptFile::loadRefusesWhatIsNoScriptFile()
{
    QFETCH(QString, kind);
    QFETCH(QString, why);
    QString path = m_dir.filePath(kind == "folder/" ? "folder" : kind);
    if (kind == "fifo") {
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    } else if (kind == "folder/") {
        QVERIFY(QDir(m_dir.path()).mkdir("folder"));
        path += '/';
    } else if (kind == "sparse") {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64(128) * 1024 * 1024 + 1));
    }

    // In a child, so that a Load that waits for a writer is ended by the
    // watchdog rather than holding up the suite. The exit code carries
    // whether it loaded, whether the message says why, and the message count.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        alarm(60);
        const bool loaded = ScriptFile().Load(path).has_value();
        const bool says = !m_messages.isEmpty() && m_messages.first().text.contains(why)
                          && m_messages.first().text.contains(path);
        _exit((loaded ? 100 : 0) + (says ? 10 : 0) + int(m_messages.size()));
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY2(WIFEXITED(status), "Load did not come back");
    QCOMPARE(WEXITSTATUS(status), 11);
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
