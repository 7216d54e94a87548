#include "helpwindow.h"
#include "shelltesting.h"

#include <QPointer>
#include <QStandardPaths>

using namespace shelltesting;

class tst_HelpWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_s.emplace(); }
    void cleanup()
    {
        m_s.reset();
        delete ivr::HelpWindow::existing();
    }

    void entryOpensItsTopic_data()
    {
        QTest::addColumn<QString>("entry"); // a menu entry, F1, or a dialog's help context
        QTest::addColumn<QString>("topic"); // empty: the help file is gone
        QTest::newRow("contents-opens-another-page") << "&Contents"
                                                     << "bdw_d_designer.htm";
        QTest::newRow("search-opens-another-page") << "&Search For Help On..."
                                                   << "bdw_d_designer.htm";
        QTest::newRow("f1-in-main-window-does-nothing") << "F1"
                                                        << "bdw_d_designer.htm";
        QTest::newRow("dialog-context-opens-wrong-topic") << "7"
                                                          << "bdw_d_record.htm";
        QTest::newRow("missing-help-file-not-said-in-window") << "&Contents"
                                                              << "";
    }
    void entryOpensItsTopic()
    {
        QFETCH(QString, entry);
        QFETCH(QString, topic);
        if (topic.isEmpty())
            QFile::remove(m_s->folder.file("BdwIVRS.qch"));
        frmAppMain *frame = start(m_s->folder);
        QVERIFY(frame);
        bool context = false;
        const int id = entry.toInt(&context);
        if (context) {
            frame->showHelpContext(id);
        } else if (entry == "F1") {
            frame->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(frame));
            QTest::keyClick(frame, Qt::Key_F1);
        } else {
            choose("&Help", entry);
        }
        ivr::HelpWindow *help = ivr::HelpWindow::existing();
        QVERIFY(help && help->isVisible() && frame->isVisible());
        QCOMPARE(help->helpFound(), !topic.isEmpty());
        if (topic.isEmpty())
            QVERIFY(help->pageText().contains("could not be found"));
        else
            QVERIFY(help->currentUrl().fileName() == topic
                    && !help->pageText().trimmed().isEmpty());
        QCOMPARE(m_s->messages.count(), 0);
    }

    void unwritableCacheIsSaidInTheWindow()
    {
        // The cache folder would lie under a regular file.
        const QString blocked = m_s->folder.file("blocked");
        QVERIFY(QFile(blocked).open(QIODevice::WriteOnly));
        qputenv("XDG_CACHE_HOME", QFile::encodeName(blocked + "/cache"));
        const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
        QVERIFY(cache.startsWith(blocked));
        ivr::HelpWindow::setHelpFile(m_s->folder.file("BdwIVRS.qch"));
        ivr::HelpWindow *help = ivr::HelpWindow::instance(nullptr);
        help->showTopic("bdw_d_designer.htm");
        QVERIFY(!help->helpFound());
        const QString page = help->pageText();
        QVERIFY2(page.contains(cache) && page.contains("cannot be written"), qPrintable(page));
        QVERIFY(!page.contains("could not be found"));
    }

    // The process ends with its last form: the help window must not outlive the frame.
    void exitTakesTheHelpWindowAlong()
    {
        QVERIFY(start(m_s->folder));
        choose("&Help", "&Contents");
        QPointer<ivr::HelpWindow> help = ivr::HelpWindow::existing();
        QVERIFY(help && help->isVisible());
        choose("&File", "E&xit");
        QVERIFY(!frmAppMain::existing() && !help);
        for (QWidget *window : QApplication::topLevelWidgets())
            QVERIFY2(!window->isVisible(), qPrintable(window->objectName()));
    }

private:
    std::optional<Session> m_s;
};

QTEST_MAIN(tst_HelpWindow)
#include "tst_helpwindow.moc"
