#include "frmsplash.h"
#include "messagerecorder.h"
#include "shelltesting.h"

#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

using namespace shelltesting;
using Flags = ProgramFolder::Options::Flags;

class tst_Startup : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        discardFrame();
        // The registration script runs on after the start: wait for it before its folder goes.
        if (m_folder && m_standInRegistration)
            QTRY_VERIFY(!m_folder->regSvrLog().isEmpty());
        m_messages.reset();
        m_folder.reset();
    }

    void startsWithoutWaitingForRegistration();
    void enquiryFollowsTheFlag_data();
    void enquiryFollowsTheFlag();
    void missingCallLogEndsTheStart();
    void settingsGarbageEndsWithExitCode1();

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

void tst_Startup::startsWithoutWaitingForRegistration()
{
    make();
    m_standInRegistration = false;
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
    const auto logText = [&log] {
        QFile file(log);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };

    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame && frame->isVisible());
    QCOMPARE(frame->mdiArea()->subWindowList().constFirst()->widget()->windowTitle(),
             QStringLiteral("IVR Script 1"));
    QCOMPARE(visibleSplash(), nullptr);
    QCOMPARE(m_messages->count(), 0);
    // The start is over while the script, run from the program folder, still waits.
    QTRY_COMPARE(logText().trimmed(), QStringLiteral("started ") + m_folder->path());
    QVERIFY(QFile(release).open(QIODevice::WriteOnly));
    QTRY_VERIFY(logText().contains(QStringLiteral("ended")));
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
    bool formSeen = false, splashBehindForm = false, frameBeforeForm = false;
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
    QVERIFY(start(*m_folder));
    watch.stop();
    QCOMPARE(formSeen, shown);
    QCOMPARE(splashBehindForm, shown);
    QVERIFY(!frameBeforeForm);
#endif
}

void tst_Startup::missingCallLogEndsTheStart()
{
    make(Flags::NoDatabase);
    QCOMPARE(start(*m_folder), nullptr);
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->messages().constFirst().icon, QMessageBox::Critical);
    QVERIFY2(m_messages->lastText().contains("CallLog.db"), qPrintable(m_messages->lastText()));
    QCOMPARE(visibleSplash(), nullptr);
    QVERIFY(!QFile::exists(m_folder->file("CallLog.db"))); // not made by the attempt
}

void tst_Startup::settingsGarbageEndsWithExitCode1()
{
    make();
    useStoreOf(*m_folder);
    putStored("MainTop", "top of the screen");
    QCOMPARE(ivr::Startup::Main({}), 1);
    QVERIFY(!frmAppMain::existing());
    const QString said = m_messages->lastText();
    QVERIFY2(said.contains("MainTop") && said.contains("top of the screen"), qPrintable(said));
    QCOMPARE(stored("MainTop"), QStringLiteral("top of the screen")); // nothing written over it
}

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
