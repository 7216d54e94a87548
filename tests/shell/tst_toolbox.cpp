#include "selectedmoduletype.h"
#include "toolbox.h"

#include <QtTest>

using ivr::Toolbox;

class tst_Toolbox : public QObject
{
    Q_OBJECT

private slots:
    void init() { ivr::setSelectedModuleType(0); }

    void buttonsInScreenOrderWithTheirTips();
    void clickArmsOnlyThatTool_data();
    void clickArmsOnlyThatTool();
    void selectedPictureFitsTheButton();
};

namespace {
void checkOnlyArmed(Toolbox &box, int armed)
{
    for (int index : Toolbox::screenOrder()) {
        ivr::ToolboxButton *button = box.cmdModule(index);
        QCOMPARE(button->togglePressed(), index == armed);
        QCOMPARE(button->pictureSize(), index == armed ? QSize(88, 44) : QSize(70, 35));
    }
}
} // namespace

void tst_Toolbox::buttonsInScreenOrderWithTheirTips()
{
    Toolbox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    const QStringList tips = {"Select",
                              "Play Message",
                              "get Digits",
                              "get Number Buffer",
                              "Transfer Call",
                              "Record Message",
                              "Database Query",
                              "Check Condition",
                              "Send E-Mail",
                              "Run Other Application",
                              "Start Other Vorel IVR Script"};
    const QList<int> order = {0, 3, 4, 5, 6, 7, 8, 13, 9, 11, 12};
    QCOMPARE(Toolbox::screenOrder(), order);
    int lastTop = -1;
    for (int i = 0; i < order.size(); ++i) {
        ivr::ToolboxButton *button = box.cmdModule(order.at(i));
        QCOMPARE(button->toolTip(), tips.at(i));
        QVERIFY(!button->accessibleName().isEmpty());
        QVERIFY2(button->y() > lastTop, "buttons out of screen order");
        lastTop = button->y();
    }
}

void tst_Toolbox::clickArmsOnlyThatTool_data()
{
    QTest::addColumn<QList<int>>("clicks");
    QTest::addColumn<int>("armed");
    QTest::newRow("play-armed") << QList<int>{3} << 3;
    QTest::newRow("condition-between-query-and-email") << QList<int>{13} << 13;
    QTest::newRow("second-tool-releases-first") << QList<int>{3, 12} << 12;
    QTest::newRow("select-disarms") << QList<int>{7, 0} << 0;
    QTest::newRow("second-click-on-armed-tool-keeps-it") << QList<int>{5, 5} << 5;
    QTest::newRow("nothing-clicked-starts-on-select") << QList<int>{} << 0;
}

void tst_Toolbox::clickArmsOnlyThatTool()
{
    QFETCH(QList<int>, clicks);
    QFETCH(int, armed);
    Toolbox box;
    box.show();
    for (int index : clicks)
        QTest::mouseClick(box.cmdModule(index), Qt::LeftButton);
    QCOMPARE(int(ivr::SelectedModuleType()), armed);
    checkOnlyArmed(box, armed);
}

void tst_Toolbox::selectedPictureFitsTheButton()
{
    Toolbox box;
    box.show();
    QTest::mouseClick(box.cmdModule(8), Qt::LeftButton);
    ivr::ToolboxButton *button = box.cmdModule(8);
    QCOMPARE(button->size(), ivr::ToolboxButton::ButtonSize);
    const QSize shown = button->iconSize();
    QVERIFY(shown.width() <= button->width() - 4 && shown.height() <= button->height() - 4);
    // One factor for both sizes: the picture keeps its 2:1 shape.
    QVERIFY(qAbs(shown.width() - 2 * shown.height()) <= 1);
    const QSize plain = box.cmdModule(0)->iconSize();
    QVERIFY(plain.width() < shown.width());
}

QTEST_MAIN(tst_Toolbox)
#include "tst_toolbox.moc"
