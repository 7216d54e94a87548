#include "calllog.h"
#include "frmscriptviewer.h"
#include "frmsplash.h"
#include "messagerecorder.h"
#include "shelltesting.h"

#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <sys/wait.h>
#include <unistd.h>

using namespace shelltesting;
using Flags = ProgramFolder::Options::Flags;

class tst_Startup : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        discardFrame();
        m_messages.reset();
        m_folder.reset();
    }

    void startsInOrder();
    void enquiryFollowsTheFlag_data();
    void enquiryFollowsTheFlag();
    void missingCallLogEndsTheStart();
    void commandTail_data();
    void commandTail();
    void settingsGarbageEndsWithExitCode1();

private:
    void make(Flags flags = Flags::Hidden)
    {
        ProgramFolder::Options options;
        options.flags = flags;
        m_folder = std::make_unique<ProgramFolder>(options);
        QVERIFY(m_folder->isValid());
        m_messages = std::make_unique<MessageRecorder>();
    }
    QStringList windowTitles() const
    {
        QStringList titles;
        for (QMdiSubWindow *child : frmAppMain::existing()->mdiArea()->subWindowList())
            titles << child->widget()->windowTitle();
        return titles;
    }
    static frmSplash *visibleSplash()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *splash = qobject_cast<frmSplash *>(window); splash && splash->isVisible())
                return splash;
        }
        return nullptr;
    }

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void tst_Startup::startsInOrder()
{
    make();
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    QVERIFY(frame->isVisible());
    QCOMPARE(windowTitles(), QStringList{"IVR Script 1"});
    QCOMPARE(visibleSplash(), nullptr); // gone once the frame is up
    // regSvr.sh ran from the program folder, not waited for.
    QTRY_COMPARE(m_folder->regSvrLog(), QStringList{m_folder->path()});
    QCOMPARE(m_messages->count(), 0);
}

void tst_Startup::enquiryFollowsTheFlag_data()
{
    QTest::addColumn<Flags>("flags");
    QTest::addColumn<bool>("shown");
    QTest::newRow("empty-table-shows-form") << Flags::EmptyTable << true;
    QTest::newRow("flag-clear-shows-form") << Flags::Shown << true;
    QTest::newRow("flag-set-skips-form") << Flags::Hidden << false;
}

void tst_Startup::enquiryFollowsTheFlag()
{
#ifndef IVR_HAVE_ENQUIRY
    QSKIP("the enquiry form is not in this build");
#else
    QFETCH(Flags, flags);
    QFETCH(bool, shown);
    make(flags);
    bool formSeen = false;
    bool splashBehindForm = false;
    bool frameBeforeForm = false;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || QByteArray(modal->metaObject()->className()) != "ivr::frmIVR")
            return;
        formSeen = true;
        splashBehindForm = visibleSplash() != nullptr;
        frameBeforeForm = frmAppMain::existing() && frmAppMain::existing()->isVisible();
        if (auto *hide = modal->findChild<QPushButton *>("cmdSkip"))
            hide->click();
    });
    watch.start(20);
    frmAppMain *frame = start(*m_folder);
    watch.stop();
    QVERIFY(frame);
    QCOMPARE(formSeen, shown);
    if (shown) {
        QVERIFY(splashBehindForm);
        QVERIFY(!frameBeforeForm);
    }
#endif
}

void tst_Startup::missingCallLogEndsTheStart()
{
    make(Flags::NoDatabase);
    QCOMPARE(start(*m_folder), nullptr);
    QVERIFY(!frmAppMain::existing());
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->messages().constFirst().icon, QMessageBox::Critical);
    QVERIFY2(m_messages->lastText().contains("CallLog.db"), qPrintable(m_messages->lastText()));
    QCOMPARE(visibleSplash(), nullptr);
    QVERIFY(!QFile::exists(m_folder->file("CallLog.db"))); // not made by the attempt
}

void tst_Startup::commandTail_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("opened");
    QTest::newRow("blank-path-in-two-arguments-opens") << QStringList{"@/my", "script.ivr"} << true;
    QTest::newRow("quoted-path-dropped") << QStringList{"\"@/my script.ivr\""} << false;
    QTest::newRow("missing-file-dropped") << QStringList{"@/other.ivr"} << false;
    QTest::newRow("folder-dropped") << QStringList{"@"} << false;
}

void tst_Startup::commandTail()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, opened);
    make();
    const QString script = m_folder->file("my script.ivr");
    QFile file(script);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"format": "brindlewave-ivr-script", "version": 1, "modules": [
        {"name": "Connected", "type": 1, "definition": {"NextModule": "[End Call]",
         "Left": 1215, "Top": 675, "Description": "", "Compact": false}},
        {"name": "End Call", "type": 0, "definition": {"Left": 1215, "Top": 3870,
         "Description": "", "Compact": false}}]})");
    file.close();
    for (QString &argument : arguments)
        argument.replace(QLatin1Char('@'), m_folder->path());

    frmAppMain *frame = start(*m_folder, arguments);
    QVERIFY(frame);
    const QList<QMdiSubWindow *> children = frame->mdiArea()->subWindowList();
    QCOMPARE(children.size(), 1); // a named file goes into the first window
    auto *viewer = qobject_cast<frmScriptViewer *>(children.constFirst()->widget());
    QCOMPARE(viewer->FileName(), opened ? script : QString());
    QCOMPARE(viewer->windowTitle(), opened ? script : QStringLiteral("IVR Script 1"));
    QCOMPARE(m_messages->count(), 0);
}

void tst_Startup::settingsGarbageEndsWithExitCode1()
{
    make();
    useStoreOf(*m_folder);
    putStored("MainTop", "top of the screen");
    int channel[2];
    QCOMPARE(pipe(channel), 0);
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        // The start runs in a child process: it has to end, not this test.
        ::close(channel[0]);
        MessageRecorder recorder;
        const int result = ivr::Startup::Main({});
        const QByteArray said = recorder.lastText().toUtf8();
        if (::write(channel[1], said.constData(), size_t(said.size())) < 0)
            _exit(99);
        _exit(result);
    }
    ::close(channel[1]);
    QByteArray said;
    char buffer[512];
    for (ssize_t n; (n = ::read(channel[0], buffer, sizeof buffer)) > 0;)
        said.append(buffer, n);
    ::close(channel[0]);
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 1);
    QVERIFY2(said.contains("MainTop") && said.contains("top of the screen"), said.constData());
    QCOMPARE(stored("MainTop"), QStringLiteral("top of the screen")); // nothing written over it
}

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
