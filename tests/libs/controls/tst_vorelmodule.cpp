#include "vorelmodule.h"

#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

class tst_VorelModule : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { delete m_canvas; }
    void positionKeptAsGiven_data();
    void positionKeptAsGiven();
    void attachShowsStoredLookSilently_data();
    void attachShowsStoredLookSilently();
    void gestureAsksWindow_data();
    void gestureAsksWindow();
    void onlyTheUserReportsCompact();
    void userDescriptionReportsChange_data();
    void userDescriptionReportsChange();
    void mouseAndFocusReportedInTwips();

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

void tst_VorelModule::positionKeptAsGiven_data()
{
    QTest::addColumn<float>("left");
    QTest::addColumn<float>("top");
    QTest::addColumn<QPoint>("pixels");
    QTest::newRow("fraction-of-a-twip-lost") << 1217.5f << 3870.25f << QPoint(81, 258);
    QTest::newRow("twips-between-pixels-rounded-away") << 1222.0f << 682.0f << QPoint(81, 45);
}

void tst_VorelModule::positionKeptAsGiven()
{
    QFETCH(float, left);
    QFETCH(float, top);
    QFETCH(QPoint, pixels);
    m_module->setLeft(left);
    m_module->setTop(top);
    QCOMPARE(m_module->Left(), left);
    QCOMPARE(m_module->Top(), top);
    QCOMPARE(m_module->pos(), pixels);
}

void tst_VorelModule::attachShowsStoredLookSilently_data()
{
    QTest::addColumn<bool>("compact");
    QTest::addColumn<QString>("description");
    QTest::addColumn<int>("height");
    QTest::newRow("compact-from-file-shrinks") << true << "Asks for the PIN" << 43;
    QTest::newRow("full-form-from-file") << false << "" << 79;
}

void tst_VorelModule::attachShowsStoredLookSilently()
{
    QFETCH(bool, compact);
    QFETCH(QString, description);
    QFETCH(int, height);
    auto data = ivr::ModuleData::createNew(4, QStringLiteral("[Menu]"));
    data->definition().setCompact(compact);
    data->definition().setDescription(description);
    QSignalSpy resized(m_module, &VorelModule::ModuleResized);
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    m_module->Attach(data);
    QCOMPARE(m_module->ModuleType(), 4);
    QCOMPARE(m_module->Caption(), "[Menu]");
    QCOMPARE(m_module->accessibleName(), "[Menu]");
    QCOMPARE(m_module->Description(), description);
    QCOMPARE(m_module->height(), height);
    QCOMPARE(m_module->compactAction()->isChecked(), compact);
    QCOMPARE(resized.count() + changed.count(), 0);
}

void tst_VorelModule::gestureAsksWindow_data()
{
    QTest::addColumn<QString>("gesture");
    QTest::addColumn<bool>("asksDelete");
    QTest::newRow("delete-key-asks-delete") << "delete-key" << true;
    QTest::newRow("menu-delete-asks-delete") << "menu-delete" << true;
    QTest::newRow("double-click-asks-properties") << "double-click" << false;
    QTest::newRow("enter-key-asks-properties") << "enter-key" << false;
}

void tst_VorelModule::gestureAsksWindow()
{
    QFETCH(QString, gesture);
    QFETCH(bool, asksDelete);
    QSignalSpy deleteSpy(m_module, &VorelModule::DeleteRequest);
    QSignalSpy propertySpy(m_module, &VorelModule::PropertyRequest);
    m_module->setFocus();
    if (gesture == "delete-key")
        QTest::keyClick(m_module, Qt::Key_Delete);
    else if (gesture == "enter-key")
        QTest::keyClick(m_module, Qt::Key_Return);
    else if (gesture == "double-click")
        QTest::mouseDClick(m_module, Qt::LeftButton);
    else
        m_module->deleteAction()->trigger();
    QSignalSpy &asked = asksDelete ? deleteSpy : propertySpy;
    QCOMPARE(deleteSpy.count() + propertySpy.count(), 1);
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.first().first().value<qint16>(), qint16(7));
}

void tst_VorelModule::onlyTheUserReportsCompact()
{
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    QSignalSpy resized(m_module, &VorelModule::ModuleResized);
    m_module->setCompact(true);
    m_module->setDescription(QStringLiteral("set by the program"));
    QVERIFY(m_module->compactAction()->isChecked());
    QCOMPARE(changed.count() + resized.count(), 0);
    m_module->compactAction()->trigger();
    QCOMPARE(m_module->Height(), VorelModule::DefaultHeight);
    m_module->compactAction()->trigger();
    QCOMPARE(m_module->Height(), VorelModule::CompactHeight);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(resized.count(), 2);
}

void tst_VorelModule::userDescriptionReportsChange_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accept");
    QTest::addColumn<QString>("expected");
    QTest::newRow("new-text-accepted") << "Greets the caller" << true << "Greets the caller";
    QTest::newRow("same-text-is-no-change") << "old" << true << "old";
    QTest::newRow("cancel-keeps-old-text") << "thrown away" << false << "old";
}

void tst_VorelModule::userDescriptionReportsChange()
{
    QFETCH(QString, typed);
    QFETCH(bool, accept);
    QFETCH(QString, expected);
    m_module->setDescription(QStringLiteral("old"));
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    bool answered = false;
    QTimer::singleShot(0, this, [&] {
        if (auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget())) {
            answered = true;
            dialog->setTextValue(typed);
            accept ? dialog->accept() : dialog->reject();
        }
    });
    m_module->descriptionAction()->trigger();
    QVERIFY(answered);
    QCOMPARE(m_module->Description(), expected);
    QCOMPARE(changed.count(), expected == "old" ? 0 : 1);
}

void tst_VorelModule::mouseAndFocusReportedInTwips()
{
    QSignalSpy down(m_module, &VorelModule::MouseDown);
    QSignalSpy up(m_module, &VorelModule::MouseUp);
    m_module->setLeft(3000);
    m_module->setTop(1500);
    QTest::mousePress(m_module, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
    QTest::mouseRelease(m_module, Qt::LeftButton, Qt::ShiftModifier, QPoint(12, 21));
    QCOMPARE(down.count(), 1);
    const QList<QVariant> &d = down.first();
    QCOMPARE(d.at(0).value<qint16>(), qint16(7));
    QCOMPARE(d.at(1).value<Qt::MouseButton>(), Qt::LeftButton);
    QCOMPARE(d.at(2).value<Qt::KeyboardModifiers>(), Qt::KeyboardModifiers(Qt::ShiftModifier));
    QCOMPARE(QPointF(d.at(3).toFloat(), d.at(4).toFloat()), QPointF(150, 300));
    QCOMPARE(d.at(5).toPointF(), QPointF(m_module->mapToGlobal(QPoint(10, 20))));
    QCOMPARE(up.count(), 1);
    QCOMPARE(QPointF(up.first().at(3).toFloat(), up.first().at(4).toFloat()), QPointF(180, 315));

    auto *other = new VorelModule(8, m_canvas);
    other->Create(4, QStringLiteral("8"));
    other->show();
    other->setFocus();
    QSignalSpy focus(m_module, &VorelModule::GotFocus);
    m_module->setFocus();
    QCOMPARE(focus.count(), 1);
    QCOMPARE(focus.first().first().value<qint16>(), qint16(7));
}

QTEST_MAIN(tst_VorelModule)
#include "tst_vorelmodule.moc"
