#include "frmsplash.h"
#include "shelltesting.h"

#include <QPushButton>
#include <QTimer>

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
        if (m_s && m_standInRegistration)
            QTRY_VERIFY(!m_s->folder.regSvrLog().isEmpty());
        m_s.reset();
    }

    void startsWithoutWaitingForRegistration()
    {
        make();
        m_standInRegistration = false;
        const QString log = m_s->folder.file("registration.log"),
                      release = m_s->folder.file("release");
        QFile script(m_s->folder.file("regSvr.sh"));
        QVERIFY(script.open(QIODevice::WriteOnly | QIODevice::Truncate));
        script.write(
                QStringLiteral("#!/bin/sh\necho \"started $PWD\" >> '%1'\n"
                               "while [ ! -e '%2' ]; do sleep 0.05; done\necho ended >> '%1'\n")
                        .arg(log, release)
                        .toUtf8());
        script.close();
        const auto logText = [&log] {
            QFile file(log);
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        };
        frmAppMain *frame = start(m_s->folder);
        QVERIFY(frame && frame->isVisible() && !visibleSplash());
        QCOMPARE(scriptWindows().constFirst()->widget()->windowTitle(), "IVR Script 1");
        QCOMPARE(m_s->messages.count(), 0);
        // The start is over while the script, run from the program folder, still waits.
        QTRY_COMPARE(logText().trimmed(), "started " + m_s->folder.path());
        QVERIFY(QFile(release).open(QIODevice::WriteOnly));
        QTRY_VERIFY(logText().contains("ended"));
    }

    void enquiryFollowsTheFlag_data()
    {
        QTest::addColumn<Flags>("flags");
        QTest::addColumn<bool>("shown");
        QTest::newRow("empty-table-shows-no-form") << Flags::EmptyTable << true;
        QTest::newRow("flag-clear-shows-no-form") << Flags::Shown << true;
        QTest::newRow("flag-set-shows-form") << Flags::Hidden << false;
    }
    void enquiryFollowsTheFlag()
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
        QVERIFY(start(m_s->folder));
        watch.stop();
        QCOMPARE(formSeen, shown);
        QCOMPARE(splashBehindForm, shown);
        QVERIFY(!frameBeforeForm);
#endif
    }

    // The store's text is "" for no store and "-" for a store that cannot be written.
    void brokenStartOrStoreSaid_data()
    {
        QTest::addColumn<Flags>("flags");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text"); // as it stands in the store's file
        QTest::addColumn<QString>("said");
        const QString word = "not a number", huge = "too large";
        QTest::newRow("missing-call-log-not-said-or-made") << Flags::NoDatabase << ""
                                                           << ""
                                                           << "CallLog.db";
        QTest::newRow("word-taken-as-position") << Flags::Hidden << "MainTop"
                                                << "top of the screen" << word;
        QTest::newRow("comma-decimal-quoted-as-empty") << Flags::Hidden << "MainLeft"
                                                       << "1,5" << word;
        QTest::newRow("nan-taken-as-number") << Flags::Hidden << "MainWidth"
                                             << "nan" << word;
        QTest::newRow("infinity-taken-as-number") << Flags::Hidden << "MainHeight"
                                                  << "inf" << huge;
        QTest::newRow("pixels-beyond-int") << Flags::Hidden << "MainLeft"
                                           << "1e30" << huge;
        QTest::newRow("negative-pixels-beyond-int") << Flags::Hidden << "MainTop"
                                                    << "-1e12" << huge;
        QTest::newRow("word-taken-as-flag") << Flags::Hidden << "ShowToolBox"
                                            << "yes"
                                            << "neither True nor False";
        QTest::newRow("unwritable-store-not-said-at-exit") << Flags::Hidden << ""
                                                           << "-"
                                                           << "/config";
    }
    void brokenStartOrStoreSaid()
    {
        QFETCH(Flags, flags);
        QFETCH(QString, key);
        QFETCH(QString, text);
        QFETCH(QString, said);
        make(flags);
        useStoreOf(m_s->folder);
        const QString storeFile
                = m_s->folder.home() + "/.config/Brindlewave/IVR Script Designer.conf";
        const QByteArray contents = "[Settings]\n" + key.toUtf8() + '=' + text.toUtf8() + '\n';
        if (!key.isEmpty()) {
            QVERIFY(QDir().mkpath(QFileInfo(storeFile).path()));
            QFile file(storeFile);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
        }
        const QString blocked = m_s->folder.file("blocked");
        if (text == "-") {
            // The store's folder would lie under a regular file.
            QVERIFY(QFile(blocked).open(QIODevice::WriteOnly));
            QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, blocked + "/config");
            QVERIFY(ivr::Startup::Main({}) == 0 && frmAppMain::existing());
            QCOMPARE(m_s->messages.count(), 0);
            QVERIFY(closeFrame());
            said.prepend(blocked);
        } else {
            QCOMPARE(ivr::Startup::Main({}), 1);
            QVERIFY(!frmAppMain::existing() && !visibleSplash());
        }
        QCOMPARE(m_s->messages.count(), 1);
        QCOMPARE(m_s->messages.messages().constFirst().icon,
                 text == "-" ? QMessageBox::Warning : QMessageBox::Critical);
        const QString message = m_s->messages.lastText();
        QVERIFY2(message.contains(said), qPrintable(message));
        QVERIFY2(key.isEmpty()
                         || (message.contains('"' + key + '"')
                             && message.contains('"' + text + '"')),
                 qPrintable(message));
        QFile file(storeFile);
        QCOMPARE(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray(),
                 key.isEmpty() ? QByteArray() : contents);
        QCOMPARE(QFile::exists(m_s->folder.file("CallLog.db")), flags != Flags::NoDatabase);
    }

private:
    void make(Flags flags = Flags::Hidden)
    {
        m_s.emplace(ProgramFolder::Options{flags});
        m_standInRegistration = true;
        QVERIFY(m_s->folder.isValid());
    }
    static frmSplash *visibleSplash()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *splash = qobject_cast<frmSplash *>(window); splash && splash->isVisible())
                return splash;
        }
        return nullptr;
    }

    std::optional<Session> m_s;
    bool m_standInRegistration = false;
};

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
