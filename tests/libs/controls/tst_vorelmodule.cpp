#include "vorelmodule.h"

#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QTimer>

#include <functional>

namespace {

QAction *menuAction(QWidget *module, const QString &text)
{
    for (QAction *action : module->findChildren<QAction *>()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

// What Qt shows for a text given to a label or a tool tip: a text that
// looks like HTML is taken as HTML.
QString shownText(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

// The label of the description dialog that the action opens, then cancelled.
QString descriptionLabel(QAction *action)
{
    QString label;
    std::function<void()> answer = [&] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return QTimer::singleShot(10, answer);
        label = dialog->labelText();
        dialog->reject();
    };
    QTimer::singleShot(0, answer);
    action->trigger();
    return label;
}

} // namespace

class tst_VorelModule : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { delete m_canvas; }
    void gestureAsksWindow_data();
    void gestureAsksWindow();
    void onlyTheUserReportsCompact();
    void scriptTextShownAsWritten_data();
    void scriptTextShownAsWritten();

private:
    QWidget *m_canvas = nullptr;
    VorelModule *m_module = nullptr;
};

void tst_VorelModule::init()
{
    m_canvas = new QWidget;
    m_canvas->resize(800, 600);
    m_module = new VorelModule(7, m_canvas);
    m_module->Create(3, QStringLiteral("7"));
    m_canvas->show();
    m_canvas->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_canvas));
}

void tst_VorelModule::gestureAsksWindow_data()
{
    QTest::addColumn<QString>("gesture");
    QTest::addColumn<bool>("asksDelete");
    QTest::newRow("delete-key-asks-delete") << "delete-key" << true;
    QTest::newRow("menu-delete-asks-delete") << "menu-delete" << true;
    QTest::newRow("double-click-asks-properties") << "double-click" << false;
}

void tst_VorelModule::gestureAsksWindow()
{
    QFETCH(QString, gesture);
    QFETCH(bool, asksDelete);
    QSignalSpy deleteSpy(m_module, &VorelModule::DeleteRequest);
    QSignalSpy propertySpy(m_module, &VorelModule::PropertyRequest);
    m_module->setFocus();
    QVERIFY(m_module->hasFocus());
    if (gesture == "delete-key")
        QTest::keyClick(m_module, Qt::Key_Delete);
    else if (gesture == "double-click")
        QTest::mouseDClick(m_module, Qt::LeftButton);
    else
        m_module->deleteAction()->trigger();
    QSignalSpy &asked = asksDelete ? deleteSpy : propertySpy;
    QCOMPARE(deleteSpy.count() + propertySpy.count(), asked.count());
    QCOMPARE(asked.value(0).value(0).value<qint16>(), qint16(7));
}

void tst_VorelModule::onlyTheUserReportsCompact()
{
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    m_module->setCompact(true); // as a file load does
    QCOMPARE(m_module->Height(), VorelModule::CompactHeight);
    QCOMPARE(changed.count(), 0);
    menuAction(m_module, "&Compact")->trigger();
    QCOMPARE(m_module->Height(), VorelModule::DefaultHeight);
    QCOMPARE(changed.count(), 1);
}

void tst_VorelModule::scriptTextShownAsWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("inDialog"); // else the tool tip
    QTest::newRow("bold-tag-in-tool-tip-not-bold") << "<b>x</b>" << false;
    QTest::newRow("entity-in-tool-tip-kept") << "Tom &amp; Jerry" << false;
    QTest::newRow("lines-in-tool-tip-kept") << "one\n  two" << false;
    QTest::newRow("tag-in-description-dialog-not-bold") << "<b>x</b>" << true;
}

void tst_VorelModule::scriptTextShownAsWritten()
{
    QFETCH(QString, name);
    QFETCH(bool, inDialog);
    m_module->setCaption(name);
    if (inDialog)
        QCOMPARE(shownText(descriptionLabel(menuAction(m_module, "Edit &Description..."))),
                 "Description of " + name + ":");
    else
        QCOMPARE(shownText(m_module->toolTip()), name);
}

QTEST_MAIN(tst_VorelModule)
#include "tst_vorelmodule.moc"
