#include "calllog.h"
#include "frmscriptviewer.h"
#include "frmsplash.h"
#include "messagerecorder.h"
#include "shellicons.h"
#include "shelltesting.h"

#include <QDir>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QResource>
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
        // The registration script runs on after the start; its folder goes
        // once it has written, not from under it.
        if (m_folder && m_standInRegistration)
            QTRY_VERIFY(!m_folder->regSvrLog().isEmpty());
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
    void registrationNotWaitedFor();
    void builtPictureMatchesDrawing_data();
    void builtPictureMatchesDrawing();

private:
    void make(Flags flags = Flags::Hidden)
    {
        ProgramFolder::Options options;
        options.flags = flags;
        m_folder = std::make_unique<ProgramFolder>(options);
        m_standInRegistration = true;
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
    bool m_standInRegistration = false;
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

namespace {

// Children of this process that have ended and were never collected.
int zombieChildren()
{
    int zombies = 0;
    const QString parent = QString::number(getpid());
    for (const QString &entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(entry));
        if (!stat.open(QIODevice::ReadOnly))
            continue;
        // pid (comm) state ppid ...: the name may hold blanks, so read after ")".
        const QByteArray line = stat.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 1 && fields.at(0) == "Z" && fields.at(1) == parent.toLatin1())
            ++zombies;
    }
    return zombies;
}

} // namespace

void tst_Startup::registrationNotWaitedFor()
{
    make();
    const QString log = m_folder->file("registration.log");
    const QString release = m_folder->file("release");
    QFile script(m_folder->file("regSvr.sh"));
    QVERIFY(script.open(QIODevice::WriteOnly | QIODevice::Truncate));
    script.write(QStringLiteral("#!/bin/sh\necho \"started $PWD\" >> '%1'\n"
                                "while [ ! -e '%2' ]; do sleep 0.05; done\n"
                                "echo ended >> '%1'\n")
                         .arg(log, release)
                         .toUtf8());
    script.close();
    m_standInRegistration = false;
    const int zombiesBefore = zombieChildren();

    const auto logText = [&log] {
        QFile file(log);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };

    QVERIFY(start(*m_folder));
    // The start is over while the script still waits for its release.
    QTRY_VERIFY(!logText().isEmpty());
    QCOMPARE(logText().trimmed(), QStringLiteral("started ") + m_folder->path());

    QVERIFY(QFile(release).open(QIODevice::WriteOnly));
    QTRY_VERIFY(logText().contains(QStringLiteral("ended")));
    // Its end is collected: no dead child stays behind.
    QTRY_COMPARE(zombieChildren(), zombiesBefore);
}

void tst_Startup::builtPictureMatchesDrawing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QImage>("built");
    QTest::addColumn<QImage>("drawn");
    using ivr::ShellIcons;
    QTest::newRow("splash-stale-or-misread")
            << "splash" << ShellIcons::splash(ShellIcons::SplashSize).toImage()
            << ShellIcons::paintSplash(ShellIcons::SplashSize);
    QTest::newRow("window-icon-stale-or-misread")
            << "window" << ShellIcons::window().pixmap(32).toImage() << ShellIcons::paintWindow();
    for (int index = 0; index < 7; ++index) {
        const QString name = QStringLiteral("toolbar-%1").arg(index);
        QTest::newRow(qPrintable(name + QStringLiteral("-stale-or-misread")))
                << name << ShellIcons::toolbar(index).pixmap(42).toImage()
                << ShellIcons::paintToolbar(index);
    }
}

void tst_Startup::builtPictureMatchesDrawing()
{
    QFETCH(QString, name);
    QFETCH(QImage, built);
    QFETCH(QImage, drawn);
    // Without the built picture both sides would be drawn here.
    QVERIFY(QResource(ivr::ShellIcons::prerenderedPath(name)).isValid());
    QCOMPARE(built.convertToFormat(drawn.format()), drawn);
}

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
