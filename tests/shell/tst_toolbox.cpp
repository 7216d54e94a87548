#include "messagerecorder.h"
#include "selectedmoduletype.h"
#include "shelltesting.h"
#include "toolbox.h"

using namespace shelltesting;
using ivr::ToolboxButton;

// The toolbox in the running frame: one tool pressed and drawn large at a time.
class tst_Toolbox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void startsOnSelect();
    void clickArmsOnlyThatTool_data();
    void clickArmsOnlyThatTool();

private:
    static void checkArmed(int armed);

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    ivr::Toolbox *m_box = nullptr;
};

void tst_Toolbox::init()
{
    ivr::setSelectedModuleType(7); // whatever the last run left
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    frmAppMain *frame = start(*m_folder);
    QVERIFY(frame);
    m_box = frame->toolbox();
}

void tst_Toolbox::cleanup()
{
    discardFrame();
    m_messages.reset();
    m_folder.reset();
}

// Exactly the armed button is pressed and drawn at 88 x 44; every other one
// is up at 70 x 35.
void tst_Toolbox::checkArmed(int armed)
{
    const QList<ToolboxButton *> buttons
            = frmAppMain::existing()->toolbox()->findChildren<ToolboxButton *>();
    QCOMPARE(buttons.size(), 11);
    for (ToolboxButton *button : buttons) {
        const bool on = button->index() == armed;
        QCOMPARE(button->togglePressed(), on);
        QCOMPARE(button->pictureSize(), on ? QSize(88, 44) : QSize(70, 35));
    }
    QCOMPARE(int(ivr::SelectedModuleType()), armed);
}

void tst_Toolbox::startsOnSelect()
{
    checkArmed(0);
}

void tst_Toolbox::clickArmsOnlyThatTool_data()
{
    QTest::addColumn<int>("place"); // from the top
    QTest::addColumn<int>("tool");
    QTest::addColumn<QString>("tip");
    QTest::newRow("select-moved-or-renamed") << 0 << 0 << "Select";
    QTest::newRow("play-moved-or-renamed") << 1 << 3 << "Play Message";
    QTest::newRow("digits-moved-or-renamed") << 2 << 4 << "get Digits";
    QTest::newRow("number-moved-or-renamed") << 3 << 5 << "get Number Buffer";
    QTest::newRow("transfer-moved-or-renamed") << 4 << 6 << "Transfer Call";
    QTest::newRow("record-moved-or-renamed") << 5 << 7 << "Record Message";
    QTest::newRow("query-moved-or-renamed") << 6 << 8 << "Database Query";
    QTest::newRow("condition-not-between-query-and-mail") << 7 << 13 << "Check Condition";
    QTest::newRow("mail-moved-or-renamed") << 8 << 9 << "Send E-Mail";
    QTest::newRow("program-moved-or-renamed") << 9 << 11 << "Run Other Application";
    QTest::newRow("script-moved-or-renamed") << 10 << 12 << "Start Other Vorel IVR Script";
}

void tst_Toolbox::clickArmsOnlyThatTool()
{
    QFETCH(int, place);
    QFETCH(int, tool);
    QFETCH(QString, tip);
    QList<ToolboxButton *> buttons = m_box->findChildren<ToolboxButton *>();
    std::sort(
            buttons.begin(), buttons.end(), [](QWidget *a, QWidget *b) { return a->y() < b->y(); });
    ToolboxButton *button = buttons.value(place);
    QVERIFY(button);
    QCOMPARE(button->index(), tool);
    QCOMPARE(button->toolTip(), tip);
    // The tool above it first (for Select, the last one), so that the click
    // must release it; over the rows every tool is released once.
    const int before = ivr::Toolbox::screenOrder().value((place + 10) % 11);
    QTest::mouseClick(m_box->cmdModule(before), Qt::LeftButton);
    QTest::mouseClick(button, Qt::LeftButton);
    checkArmed(tool);
    // A second click on the pressed button changes nothing.
    QTest::mouseClick(button, Qt::LeftButton);
    checkArmed(tool);
}

QTEST_MAIN(tst_Toolbox)
#include "tst_toolbox.moc"
