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
    void cleanup();
    void runtimeTypeNameTellsModule();
    void positionKeptAsGiven_data();
    void positionKeptAsGiven();
    void createShowsTypeAndName();
    void attachShowsStoredLook_data();
    void attachShowsStoredLook();
    void gestureAsksWindow_data();
    void gestureAsksWindow();
    void userCompactReportsChangeAndSize();
    void programCompactSaysNothing();
    void userDescriptionReportsChange_data();
    void userDescriptionReportsChange();
    void mouseReportedInTwipsInside();
    void focusReportsIndex();

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

void tst_VorelModule::cleanup()
{
    delete m_canvas;
    m_canvas = nullptr;
    m_module = nullptr;
}

void tst_VorelModule::runtimeTypeNameTellsModule()
{
    QCOMPARE(m_module->metaObject()->className(), "VorelModule");
}

void tst_VorelModule::positionKeptAsGiven_data()
{
    QTest::addColumn<float>("left");
    QTest::addColumn<float>("top");
    QTest::addColumn<QPoint>("pixels");

    QTest::newRow("fraction-of-a-twip-lost") << 1217.5f << 3870.25f << QPoint(81, 258);
    QTest::newRow("twips-between-pixels-rounded-away") << 1222.0f << 682.0f << QPoint(81, 45);
    QTest::newRow("negative-position-off-canvas") << -37.3f << -8.0f << QPoint(-2, -1);
    QTest::newRow("whole-pixel-exact") << 1215.0f << 675.0f << QPoint(81, 45);
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

void tst_VorelModule::createShowsTypeAndName()
{
    m_module->Create(13, QStringLiteral("Check PIN"));
    QCOMPARE(m_module->ModuleType(), 13);
    QCOMPARE(m_module->Caption(), "Check PIN");
    QCOMPARE(m_module->moduleData()->Name(), "Check PIN");
    QCOMPARE(m_module->moduleData()->ModuleType(), 13);
    QCOMPARE(m_module->accessibleName(), "Check PIN");
    QCOMPARE(m_module->size(), QSize(157, 79));
}

void tst_VorelModule::attachShowsStoredLook_data()
{
    QTest::addColumn<bool>("compact");
    QTest::addColumn<QString>("description");
    QTest::addColumn<int>("height");

    QTest::newRow("compact-from-file-shrinks") << true << "Asks for the PIN" << 43;
    QTest::newRow("full-form-from-file") << false << "" << 79;
}

void tst_VorelModule::attachShowsStoredLook()
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

    QCOMPARE(m_module->moduleData(), data);
    QCOMPARE(m_module->ModuleType(), 4);
    QCOMPARE(m_module->Caption(), "[Menu]");
    QCOMPARE(m_module->Description(), description);
    QCOMPARE(m_module->Compact(), compact);
    QCOMPARE(m_module->height(), height);
    QCOMPARE(m_module->compactAction()->isChecked(), compact);
    QCOMPARE(resized.count(), 0);
    QCOMPARE(changed.count(), 0);
}

void tst_VorelModule::gestureAsksWindow_data()
{
    QTest::addColumn<QString>("gesture");
    QTest::addColumn<QByteArray>("signal");

    QTest::newRow("delete-key-asks-delete")
            << "delete-key" << QByteArray(SIGNAL(DeleteRequest(qint16)));
    QTest::newRow("menu-delete-asks-delete")
            << "menu-delete" << QByteArray(SIGNAL(DeleteRequest(qint16)));
    QTest::newRow("double-click-asks-properties")
            << "double-click" << QByteArray(SIGNAL(PropertyRequest(qint16)));
    QTest::newRow("enter-key-asks-properties")
            << "enter-key" << QByteArray(SIGNAL(PropertyRequest(qint16)));
    QTest::newRow("menu-properties-asks-properties")
            << "menu-properties" << QByteArray(SIGNAL(PropertyRequest(qint16)));
}

void tst_VorelModule::gestureAsksWindow()
{
    QFETCH(QString, gesture);
    QFETCH(QByteArray, signal);

    QSignalSpy spy(m_module, signal.constData());
    QSignalSpy deleteSpy(m_module, &VorelModule::DeleteRequest);
    QSignalSpy propertySpy(m_module, &VorelModule::PropertyRequest);
    m_module->setFocus();
    if (gesture == "delete-key")
        QTest::keyClick(m_module, Qt::Key_Delete);
    else if (gesture == "enter-key")
        QTest::keyClick(m_module, Qt::Key_Return);
    else if (gesture == "double-click")
        QTest::mouseDClick(m_module, Qt::LeftButton);
    else if (gesture == "menu-delete")
        m_module->deleteAction()->trigger();
    else if (gesture == "menu-properties")
        m_module->propertiesAction()->trigger();

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().value<qint16>(), qint16(7));
    // One gesture asks one thing.
    QCOMPARE(deleteSpy.count() + propertySpy.count(), 1);
}

void tst_VorelModule::userCompactReportsChangeAndSize()
{
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    QSignalSpy resized(m_module, &VorelModule::ModuleResized);
    m_module->compactAction()->trigger();
    QVERIFY(m_module->Compact());
    QCOMPARE(m_module->Height(), VorelModule::CompactHeight);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(resized.count(), 1);
    m_module->compactAction()->trigger();
    QVERIFY(!m_module->Compact());
    QCOMPARE(m_module->Height(), VorelModule::DefaultHeight);
    QCOMPARE(resized.count(), 2);
}

void tst_VorelModule::programCompactSaysNothing()
{
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    QSignalSpy resized(m_module, &VorelModule::ModuleResized);
    m_module->setCompact(true);
    m_module->setDescription(QStringLiteral("set by the program"));
    QVERIFY(m_module->compactAction()->isChecked());
    QCOMPARE(changed.count(), 0);
    QCOMPARE(resized.count(), 0);
}

void tst_VorelModule::userDescriptionReportsChange_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accept");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("changes");

    QTest::newRow("new-text-accepted") << "Greets the caller" << true << "Greets the caller" << 1;
    QTest::newRow("same-text-is-no-change") << "old" << true << "old" << 0;
    QTest::newRow("cancel-keeps-old-text") << "thrown away" << false << "old" << 0;
}

void tst_VorelModule::userDescriptionReportsChange()
{
    QFETCH(QString, typed);
    QFETCH(bool, accept);
    QFETCH(QString, expected);
    QFETCH(int, changes);

    m_module->setDescription(QStringLiteral("old"));
    QSignalSpy changed(m_module, &VorelModule::ModuleChanged);
    bool answered = false;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        answered = true;
        dialog->setTextValue(typed);
        accept ? dialog->accept() : dialog->reject();
    });
    m_module->descriptionAction()->trigger();
    QVERIFY(answered);
    QCOMPARE(m_module->Description(), expected);
    QCOMPARE(changed.count(), changes);
}

void tst_VorelModule::mouseReportedInTwipsInside()
{
    QSignalSpy down(m_module, &VorelModule::MouseDown);
    QSignalSpy up(m_module, &VorelModule::MouseUp);
    m_module->setLeft(3000);
    m_module->setTop(1500);
    QTest::mousePress(m_module, Qt::LeftButton, Qt::ShiftModifier, QPoint(10, 20));
    QTest::mouseRelease(m_module, Qt::LeftButton, Qt::ShiftModifier, QPoint(12, 21));
    QCOMPARE(down.count(), 1);
    QCOMPARE(down.first().at(0).value<qint16>(), qint16(7));
    QCOMPARE(down.first().at(1).value<Qt::MouseButton>(), Qt::LeftButton);
    QCOMPARE(down.first().at(2).value<Qt::KeyboardModifiers>(),
             Qt::KeyboardModifiers(Qt::ShiftModifier));
    QCOMPARE(down.first().at(3).toFloat(), 150.0f);
    QCOMPARE(down.first().at(4).toFloat(), 300.0f);
    QCOMPARE(down.first().at(5).toPointF(), QPointF(m_module->mapToGlobal(QPoint(10, 20))));
    QCOMPARE(up.count(), 1);
    QCOMPARE(up.first().at(3).toFloat(), 180.0f);
    QCOMPARE(up.first().at(4).toFloat(), 315.0f);
}

void tst_VorelModule::focusReportsIndex()
{
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
