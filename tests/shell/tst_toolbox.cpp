#include "selectedmoduletype.h"
#include "toolbox.h"

#include <QtTest>

using ivr::Toolbox;

class tst_Toolbox : public QObject
{
    Q_OBJECT

private slots:
    void init() { ivr::setSelectedModuleType(0); }

    void buttonsInScreenOrder();
    void clickArmsOnlyThatTool_data();
    void clickArmsOnlyThatTool();
};

void tst_Toolbox::buttonsInScreenOrder()
{
    Toolbox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    const QList<int> order = {0, 3, 4, 5, 6, 7, 8, 13, 9, 11, 12};
    QCOMPARE(Toolbox::screenOrder(), order);
    for (int i = 1; i < order.size(); ++i)
        QVERIFY2(box.cmdModule(order.at(i))->y() > box.cmdModule(order.at(i - 1))->y(),
                 "buttons out of screen order");
}

void tst_Toolbox::clickArmsOnlyThatTool_data()
{
    QTest::addColumn<QList<int>>("clicks");
    QTest::addColumn<int>("armed");
    QTest::newRow("second-tool-releases-first") << QList<int>{3, 12} << 12;
    QTest::newRow("select-disarms") << QList<int>{7, 0} << 0;
    QTest::newRow("second-click-on-armed-tool-keeps-it") << QList<int>{5, 5} << 5;
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
    for (int index : Toolbox::screenOrder()) {
        ivr::ToolboxButton *button = box.cmdModule(index);
        QCOMPARE(button->togglePressed(), index == armed);
        // The armed picture is larger but still fits the button.
        const QSize shown = button->iconSize();
        QVERIFY(shown.width() <= button->width() - 4 && shown.height() <= button->height() - 4);
    }
}

QTEST_MAIN(tst_Toolbox)
#include "tst_toolbox.moc"
