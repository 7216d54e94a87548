#include "frmsplash.h"
#include "messagerecorder.h"
#include "shelltesting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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
    void settingsGarbageEndsWithExitCode1_data();
    void settingsGarbageEndsWithExitCode1();
    void unwritableSettingsSaidAtExit();

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

void tst_Startup::settingsGarbageEndsWithExitCode1_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text"); // as it stands in the store's file
    QTest::addColumn<QString>("reason");
    const QString word = "not a number", huge = "too large";
    QTest::newRow("word-taken-as-position") << "MainTop"
                                            << "top of the screen" << word;
    QTest::newRow("comma-decimal-quoted-as-empty") << "MainLeft"
                                                   << "1,5" << word;
    QTest::newRow("nan-taken-as-number") << "MainWidth"
                                         << "nan" << word;
    QTest::newRow("infinity-taken-as-number") << "MainHeight"
                                              << "inf" << huge;
    QTest::newRow("pixels-beyond-int") << "MainLeft"
                                       << "1e30" << huge;
    QTest::newRow("negative-pixels-beyond-int") << "MainTop"
                                                << "-1e12" << huge;
    QTest::newRow("word-taken-as-flag") << "ShowToolBox"
                                        << "yes"
                                        << "neither True nor False";
}

void tst_Startup::settingsGarbageEndsWithExitCode1()
{
    QFETCH(QString, key);
    QFETCH(QString, text);
    QFETCH(QString, reason);
    make();
    useStoreOf(*m_folder);
    const QString storeFile = m_folder->home() + "/.config/Brindlewave/IVR Script Designer.conf";
    QVERIFY(QDir().mkpath(QFileInfo(storeFile).path()));
    const QByteArray contents = "[Settings]\n" + key.toUtf8() + '=' + text.toUtf8() + '\n';
    {
        QFile file(storeFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    QCOMPARE(ivr::Startup::Main({}), 1);
    QVERIFY(!frmAppMain::existing());
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->messages().constFirst().icon, QMessageBox::Critical);
    const QString said = m_messages->lastText();
    QVERIFY2(said.contains('"' + key + '"') && said.contains('"' + text + '"'), qPrintable(said));
    QVERIFY2(said.contains(reason), qPrintable(said));
    QFile file(storeFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), contents); // nothing written over it
}

void tst_Startup::unwritableSettingsSaidAtExit()
{
    make();
    // The store's folder would lie under a regular file.
    const QString blocked = m_folder->file("blocked");
    QVERIFY(QFile(blocked).open(QIODevice::WriteOnly));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, blocked + "/config");
    QVERIFY(ivr::Startup::Main({}) == 0 && frmAppMain::existing());
    QCOMPARE(m_messages->count(), 0);
    QVERIFY(closeFrame());
    QCOMPARE(m_messages->count(), 1);
    QCOMPARE(m_messages->messages().constFirst().icon, QMessageBox::Warning);
    QVERIFY2(m_messages->lastText().contains(blocked + "/config"),
             qPrintable(m_messages->lastText()));
}

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
