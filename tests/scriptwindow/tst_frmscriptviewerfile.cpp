#include "scriptwindowtesting.h"

#include "exitkeys.h"
#include "ivrerror.h"
#include "scriptfile.h"
#include "voreldirection.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace swt;

// The script window's open, save and run, on real files.
class tst_frmScriptViewerFile : public QObject, Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void roundTripKeepsEverything();
    void reopenPacksIndicesAndKeepsUnknownKeys();
    void damagedFileLeavesWindowSafe_data();
    void damagedFileLeavesWindowSafe();
    void openRefused_data();
    void openRefused();
    void saveKeepsFileItDidNotMake_data();
    void saveKeepsFileItDidNotMake();
    void saveNameAndCaption_data();
    void saveNameAndCaption();
    void saveWhereLibraryCannotWrite();
    void run_data();
    void run();

private:
    QString fixture() const { return QStringLiteral(IVR_TEST_DATA "/every_type.ivr"); }
    void checkRunner(bool started);
    void answerSave(const std::optional<QString> &name);
    QString m_proposed;
};

// Answers the Save dialog with name, once it is the script's Save dialog.
void tst_frmScriptViewerFile::answerSave(const std::optional<QString> &name)
{
    m_proposed.clear();
    ivr::CommonDialog::setTestAnswer([this, name](const ivr::CommonDialog &d, auto mode) {
        const bool right = mode == ivr::CommonDialog::Mode::Save && d.DialogTitle == "Save"
                           && d.Flags == 18 && d.Filter == "Brindlewave IVR Script (*.ivr) |*.ivr";
        m_proposed = right ? d.FileName : QStringLiteral("<wrong dialog>");
        return name;
    });
}

void tst_frmScriptViewerFile::checkRunner(bool started)
{
    if (started) {
        QTRY_VERIFY(m_folder->runnerLog().size() == 2);
    } else {
        QTest::qWait(300); // a detached start would have written by now
        QVERIFY(!QFile::exists(m_folder->file(QStringLiteral("VorelRun.log"))));
    }
}

// Every module, the common one included, is written back as it was read.
void tst_frmScriptViewerFile::roundTripKeepsEverything()
{
    const QString saved = m_folder->file(QStringLiteral("round trip.ivr"));
    frmScriptViewer w;
    w.OpenScript(fixture());
    w.setFileName(saved);
    QVERIFY(w.SaveScript(false));
    QCOMPARE(m_messages->count(), 0);
    const auto byName = [](const QString &path) {
        QMap<QString, QJsonValue> result;
        for (const QJsonValue m : QJsonDocument::fromJson(readFile(path))["modules"].toArray())
            result.insert(m["name"].toString(), m);
        return result;
    };
    const auto before = byName(fixture());
    QCOMPARE(before.size(), 15);
    QCOMPARE(byName(saved), before);
}

// Holes left by deletes close up at the next open; keys of a newer program
// beside the modules survive the window's save.
void tst_frmScriptViewerFile::reopenPacksIndicesAndKeepsUnknownKeys()
{
    const QString file = m_folder->file(QStringLiteral("holes.ivr"));
    QVERIFY(writeFile(file, R"({"format": "brindlewave-ivr-script", "version": 1,
                                "producer": {"by": "x"}, "modules": []})"));
    {
        frmScriptViewer w;
        w.OpenScript(file);
        for (int i = 0; i < 4; ++i)
            w.AddModule(3, 3000 + 2000 * i, 3000);
        m_messages->answer(QMessageBox::Yes);
        w.RemoveModule(3);
        QVERIFY(w.SaveScript(false));
    }
    const QJsonObject saved = QJsonDocument::fromJson(readFile(file)).object();
    QCOMPARE(saved.value("producer").toObject().value("by").toString(), QStringLiteral("x"));
    frmScriptViewer w;
    w.OpenScript(file);
    QCOMPARE(w.cmVorelModule().indices(), (QList<qint16>{0, 1, 2, 3, 4}));
    QCOMPARE(indices(w).value("5"), qint16(4));
}

void tst_frmScriptViewerFile::damagedFileLeavesWindowSafe_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("refused");    // Load reports it and gives nothing
    QTest::addColumn<bool>("escapes");    // the open's failure reaches the top
    QTest::addColumn<bool>("placeAfter"); // a module is placed after the open
    QTest::addColumn<bool>("saves");
    const QByteArray con = module("Connected", 1, R"({"NextModule": "[Play]"})");
    const QByteArray end = module("End Call", 0);
    const QByteArray play = module("Play", 3, R"({"NextModule": "[End Call]"})");
    const QByteArray menu = module("Menu", 4, R"({"OnDigit1": "[Play]", "OnStar": "[Menu]"})");
    const QByteArray absent = script({con, end, module("Gone", 3)});
    const QByteArray dupLast = script({con, end, play, menu, module("Play", 5)});
    const QByteArray dupMid = script({play, module("Play", 7), con, menu, end});
    const QByteArray dupEnd = script({end, con, play, module("End Call", 3)});
    const QByteArray dupConnected = script({play, menu, module("Menu", 1)});
    const QByteArray dupPlaced = script({con, end, play, module("Play", 5)});
    auto row = [](const char *name, const QByteArray &content, auto... v) {
        (QTest::newRow(name) << content << ... << v);
    };
    // refused, escapes, placeAfter, saves
    row("not-a-script", QByteArray("{ nope"), true, false, false, true);
    row("exit-to-absent-module-opens", absent, false, false, false, true);
    row("duplicate-last-hole-at-top", dupLast, false, true, false, false);
    row("duplicate-mid-list-hole-at-top", dupMid, false, true, false, false);
    row("duplicate-of-end-call-name", dupEnd, false, true, false, false);
    row("duplicate-connected-leaves-no-hole", dupConnected, false, true, false, true);
    row("duplicate-then-placed-hole-below-top", dupPlaced, false, true, true, true);
}

// Whatever the file, the window lives on: Run, Save and the close question do
// what they do for a window with a hole, never more.
void tst_frmScriptViewerFile::damagedFileLeavesWindowSafe()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, refused);
    QFETCH(bool, escapes);
    QFETCH(bool, placeAfter);
    QFETCH(bool, saves);
    const QString path = m_folder->file(QStringLiteral("damaged.ivr"));
    const QString chosen = m_folder->file(QStringLiteral("chosen.ivr"));
    QVERIFY(writeFile(path, content));
    answerSave(chosen);
    frmScriptViewer w;
    w.setWindowTitle(QStringLiteral("IVR Script 1"));
    // As the program opens: what escapes is shown by the top-level handler.
    bool escaped = false;
    try {
        w.OpenScript(path);
    } catch (const ivr::IvrError &) {
        escaped = true;
    }
    QCOMPARE(escaped, escapes);
    QCOMPARE(m_messages->count(), refused ? 1 : 0);
    QCOMPARE(w.FileName(), escapes ? QString() : path);
    QCOMPARE(w.windowTitle(), escapes ? QStringLiteral("IVR Script 1") : path);
    QVERIFY(!w.Changed());
    if (refused) {
        QCOMPARE(w.cmVorelModule().indices(), (QList<qint16>{0, 1}));
        QCOMPARE(w.DrawLine().LineMatrix(0, 1), qint16(1));
    }
    if (placeAfter)
        QVERIFY(w.AddModule(3, 9000, 9000));

    // Run: a window without a file asks, and Yes saves first.
    m_messages->clear();
    m_messages->answer(QMessageBox::Yes);
    w.RunScript();
    QCOMPARE(m_messages->count(), escapes ? 1 : 0);
    checkRunner(!escapes || saves);
    QCOMPARE(QFile::exists(chosen), escapes && saves);
    if (escapes)
        QCOMPARE(w.FileName(), chosen);

    QCOMPARE(w.SaveScript(false), saves); // now without a dialog
    const auto saved = ivr::ScriptFile().Load(w.FileName());
    QCOMPARE(saved.has_value(), saves);
    if (saved) {
        int withData = 0;
        for (VorelModule *m : w.cmVorelModule())
            withData += m->moduleData() ? 1 : 0;
        QCOMPARE(saved->count(), withData + 1);
    }

    // The close question: Yes closes when the save fails.
    emit w.cmVorelModule().at(0)->ModuleChanged(0);
    m_messages->clear();
    m_messages->answer(QMessageBox::Yes);
    QCOMPARE(w.close(), !saves);
    QCOMPARE(m_messages->count(), 1);
}

void tst_frmScriptViewerFile::openRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");       // of the placed modules
    QTest::addColumn<int>("count");      // of placed modules; none: the name is a folder
    QTest::addColumn<QString>("reason"); // in the message, or "" for none
    QTest::newRow("trailing-slash-folder-reported-and-taken")
            << "scripts/" << 0 << 0 << "it is a folder, not a file";
    QTest::newRow("folder-without-slash-passed-over") << "scripts" << 0 << 0 << "";
    // 32,767 placed modules and the two standing ones: one index too many.
    QTest::newRow("module-past-highest-index") << "large.ivr" << 3 << 32767 << "32769 modules";
    // Thirteen exits each: 2,521 menus need 32,773 arrows.
    QTest::newRow("arrow-past-highest-index") << "large.ivr" << 4 << 2521 << "32773 links";
}

void tst_frmScriptViewerFile::openRefused()
{
    QFETCH(QString, name);
    QFETCH(int, type);
    QFETCH(int, count);
    QFETCH(QString, reason);
    const QString path = m_folder->file(name);
    QByteArray exits = "{";
    for (const QString &key : allExits().mid(1, 13))
        exits += (exits.size() > 1 ? ", \"" : "\"") + key.toUtf8() + "\": \"[End Call]\"";
    QList<QByteArray> modules{module("Connected", 1), module("End Call", 0)};
    for (int i = 0; i < count; ++i)
        modules << module("M" + QByteArray::number(i), type, type == 4 ? exits + "}" : "{}");
    QVERIFY(count ? writeFile(path, script(modules)) : QDir(m_folder->path()).mkdir("scripts"));

    frmScriptViewer w;
    w.setWindowTitle(QStringLiteral("IVR Script 1"));
    w.OpenScript(path);
    const bool reported = !reason.isEmpty();
    QCOMPARE(m_messages->count(), reported ? 1 : 0);
    if (reported) {
        const QString text = m_messages->lastText();
        QVERIFY2(text.contains(reason) && (!count || text.contains("could not be opened")),
                 qPrintable(text));
        QCOMPARE(m_messages->messages().last().icon, QMessageBox::Critical);
    }
    QCOMPARE(w.FileName(), reported ? path : QString());
    QCOMPARE(w.windowTitle(), reported ? path : QStringLiteral("IVR Script 1"));
    QCOMPARE(w.cmVorelModule().indices(), (QList<qint16>{0, 1}));
    QCOMPARE(w.VorelDirection1().indices(), (QList<qint16>{0, 1}));
}

void tst_frmScriptViewerFile::saveKeepsFileItDidNotMake_data()
{
    QTest::addColumn<QString>("how");      // how the window came to name x.ivr
    QTest::addColumn<bool>("olderBackup"); // x.ivr.bak is there already
    QTest::addColumn<QString>("backup");   // where the old bytes are kept, or ""
    QTest::newRow("refused-file-kept-once") << "refused" << false << "x.ivr.bak";
    QTest::newRow("older-backup-takes-next-number") << "refused" << true << "x.ivr.bak.1";
    QTest::newRow("loaded-file-not-kept") << "loaded" << false << "";
    QTest::newRow("file-picked-in-dialog-not-kept") << "picked" << false << "";
    QTest::newRow("suffix-added-names-unasked-file") << "suffixed" << false << "x.ivr.bak";
    QTest::newRow("written-file-not-kept") << "written" << false << "";
}

void tst_frmScriptViewerFile::saveKeepsFileItDidNotMake()
{
    QFETCH(QString, how);
    QFETCH(bool, olderBackup);
    QFETCH(QString, backup);
    const QDir dir(m_folder->path());
    const QString target = dir.filePath(QStringLiteral("x.ivr"));
    const QByteArray old
            = how == "refused" ? QByteArray("{ a script of a later version") : readFile(fixture());
    QVERIFY(how == "written" || writeFile(target, old));
    QVERIFY(!olderBackup || writeFile(target + ".bak", "older backup"));

    frmScriptViewer w;
    if (how == "refused" || how == "loaded") {
        w.OpenScript(target);
    } else {
        answerSave(how == "suffixed" ? dir.filePath(QStringLiteral("x")) : target);
        QVERIFY(w.SaveScript(true));
    }
    QCOMPARE(w.FileName(), target);
    w.AddModule(3, 5000, 5000);
    QVERIFY(w.SaveScript(false) && w.SaveScript(false));

    QStringList expected;
    if (olderBackup)
        expected << "x.ivr.bak";
    if (!backup.isEmpty())
        expected << backup;
    QCOMPARE(dir.entryList({"x.ivr.*"}, QDir::Files, QDir::Name), expected);
    if (!backup.isEmpty())
        QCOMPARE(readFile(dir.filePath(backup)), old);
    if (olderBackup)
        QCOMPARE(readFile(target + ".bak"), QByteArray("older backup"));
    QVERIFY(ivr::ScriptFile().Load(target));
}

void tst_frmScriptViewerFile::saveNameAndCaption_data()
{
    QTest::addColumn<bool>("opened");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("proposed");
    QTest::addColumn<QString>("fileName");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    const char *plain = "IVR Script 1.ivr";
    row("new-script-proposes-caption-and-suffix", false, "x", plain, "x.ivr");
    row("typed-suffix-not-doubled", false, "y.ivr", plain, "y.ivr");
    row("upper-case-suffix-doubled", false, "x.IVR", plain, "x.IVR.ivr");
    row("opened-script-proposes-suffix-twice", true, "z", "<opened>.ivr", "z.ivr");
    row("cancel-writes-nothing", false, "", plain, "");
}

void tst_frmScriptViewerFile::saveNameAndCaption()
{
    QFETCH(bool, opened);
    QFETCH(QString, typed);
    QFETCH(QString, proposed);
    QFETCH(QString, fileName);
    const QString dir = m_folder->path() + QLatin1Char('/');
    const QString source = dir + QStringLiteral("source.ivr");
    QVERIFY(QFile::copy(fixture(), source));
    answerSave(typed.isEmpty() ? std::nullopt : std::optional<QString>(dir + typed));

    frmScriptViewer w;
    w.setWindowTitle(QStringLiteral("IVR Script 1"));
    if (opened)
        w.OpenScript(source);
    w.AddModule(3, 100, 100);
    QCOMPARE(w.SaveScript(true), !fileName.isEmpty());
    QCOMPARE(m_proposed, proposed.replace(QStringLiteral("<opened>"), source));
    const bool none = fileName.isEmpty();
    QCOMPARE(w.FileName(), none ? QString() : dir + fileName);
    QCOMPARE(w.windowTitle(), none ? QStringLiteral("IVR Script 1") : dir + fileName.chopped(4));
    QVERIFY(none || QFile::exists(dir + fileName));
}

// Where the library cannot write (its own test sorts out why), the window
// keeps its name, caption and modules, says so once and closes unasked.
void tst_frmScriptViewerFile::saveWhereLibraryCannotWrite()
{
    const QString source = m_folder->file(QStringLiteral("source.ivr"));
    const QString target = source + QStringLiteral("/inside.ivr");
    QVERIFY(QFile::copy(fixture(), source));
    const QByteArray before = readFile(source);
    frmScriptViewer w;
    w.OpenScript(source);
    w.AddModule(3, 100, 100);
    emit w.cmVorelModule().at(0)->ModuleChanged(0);
    w.setFileName(target);
    QVERIFY(w.Changed());
    QVERIFY(!w.SaveScript(false));
    QVERIFY(!w.Changed());
    QCOMPARE(w.FileName(), target);
    QCOMPARE(w.windowTitle(), target.chopped(4));
    QCOMPARE(w.cmVorelModule().count(), 15);
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->messages().last().icon, QMessageBox::Critical);
    QVERIFY2(m_messages->lastText().contains("inside.ivr"), qPrintable(m_messages->lastText()));
    QVERIFY(w.close());
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(readFile(source), before);
}

void tst_frmScriptViewerFile::run_data()
{
    QTest::addColumn<bool>("opened");
    QTest::addColumn<bool>("runner");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("started");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    row("opened-unchanged-starts-without-question", true, true, 0, true);
    row("new-script-answered-no-starts-nothing", false, true, int(QMessageBox::No), false);
    row("new-script-saved-then-started", false, true, int(QMessageBox::Yes), true);
    row("missing-runner-silent", true, false, 0, false);
}

void tst_frmScriptViewerFile::run()
{
    QFETCH(bool, opened);
    QFETCH(bool, runner);
    QFETCH(int, answer);
    QFETCH(bool, started);
    ProgramFolder::Options options;
    options.runner = runner;
    m_folder.reset(); // the old folder takes the application folder with it
    m_folder = std::make_unique<ProgramFolder>(options);
    answerSave(m_folder->file(QStringLiteral("run.ivr")));
    if (answer)
        m_messages->answer(QMessageBox::StandardButton(answer));
    frmScriptViewer w;
    if (opened)
        w.OpenScript(fixture());
    w.RunScript();

    QCOMPARE(m_messages->count(), opened ? 0 : 1);
    if (!opened) {
        const ivr::MsgBox::Message &m = m_messages->messages().first();
        QCOMPARE(m.text, "You must save the script before run.\nDo you want to save it Now?");
        QCOMPARE(m.icon, QMessageBox::Information);
        QCOMPARE(m.buttons, QMessageBox::Yes | QMessageBox::No);
    }
    checkRunner(started);
    if (started)
        QCOMPARE(m_folder->runnerLog(), (QStringList{m_folder->path(), "False"}));
}

QTEST_MAIN(tst_frmScriptViewerFile)
#include "tst_frmscriptviewerfile.moc"
