#include "helpwindow.h"
#include "messagerecorder.h"
#include "shelltesting.h"

#include <QFile>
#include <QStandardPaths>
#include <QPointer>
#include <QtTest>

using namespace shelltesting;

class tst_HelpWindow : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<ProgramFolder>();
        m_messages = std::make_unique<MessageRecorder>();
    }
    void cleanup()
    {
        discardFrame();
        delete ivr::HelpWindow::existing();
        m_messages.reset();
        m_folder.reset();
    }

    void bothEntriesOpenTheDesignerTopic_data();
    void bothEntriesOpenTheDesignerTopic();
    void missingHelpFileIsSaidInTheWindow();
    void unwritableCacheIsSaidInTheWindow();
    void exitTakesTheHelpWindowAlong();

private:
    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void tst_HelpWindow::bothEntriesOpenTheDesignerTopic_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("topic");
    QTest::newRow("contents-opens-another-page") << "&Contents"
                                                 << "bdw_d_designer.htm";
    QTest::newRow("search-opens-another-page") << "&Search For Help On..."
                                               << "bdw_d_designer.htm";
    QTest::newRow("f1-in-main-window-does-nothing") << "F1"
                                                    << "bdw_d_designer.htm";
    QTest::newRow("dialog-context-opens-wrong-topic") << "7"
                                                      << "bdw_d_record.htm";
}

void tst_HelpWindow::bothEntriesOpenTheDesignerTopic()
{
    QFETCH(QString, entry);
    QFETCH(QString, topic);
    frmAppMain *frame = start(*m_folder);
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
    QVERIFY(help && help->isVisible());
    QVERIFY(help->helpFound());
    QCOMPARE(help->currentUrl().fileName(), topic);
    QVERIFY(!help->pageText().trimmed().isEmpty());
    QCOMPARE(m_messages->count(), 0);
}

void tst_HelpWindow::missingHelpFileIsSaidInTheWindow()
{
    QFile::remove(m_folder->file("BdwIVRS.qch"));
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    choose("&Help", "&Contents");
    ivr::HelpWindow *help = ivr::HelpWindow::existing();
    QVERIFY(help && help->isVisible());
    QVERIFY(!help->helpFound());
    QVERIFY(help->pageText().contains("could not be found"));
    QVERIFY(frame->isVisible());
}

void tst_HelpWindow::unwritableCacheIsSaidInTheWindow()
{
    // The cache folder would lie under a regular file.
    const QString blocked = m_folder->file("blocked");
    QVERIFY(QFile(blocked).open(QIODevice::WriteOnly));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(blocked + "/cache"));
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    QVERIFY(cache.startsWith(blocked));
    ivr::HelpWindow::setHelpFile(m_folder->file("BdwIVRS.qch"));
    ivr::HelpWindow *help = ivr::HelpWindow::instance(nullptr);
    help->showTopic("bdw_d_designer.htm");
    QVERIFY(!help->helpFound());
    const QString page = help->pageText();
    QVERIFY2(page.contains(cache) && page.contains("cannot be written"), qPrintable(page));
    QVERIFY(!page.contains("could not be found"));
}

// The process ends with its last form: the help window must not outlive the frame.
void tst_HelpWindow::exitTakesTheHelpWindowAlong()
{
    QVERIFY(start(*m_folder));
    choose("&Help", "&Contents");
    QPointer<ivr::HelpWindow> help = ivr::HelpWindow::existing();
    QVERIFY(help && help->isVisible());
    choose("&File", "E&xit");
    QVERIFY(!frmAppMain::existing());
    QVERIFY(!help);
    for (QWidget *window : QApplication::topLevelWidgets())
        QVERIFY2(!window->isVisible(), qPrintable(window->objectName()));
}

QTEST_MAIN(tst_HelpWindow)
#include "tst_helpwindow.moc"
