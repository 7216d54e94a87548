#include "clsdrawline.h"
#include "drawlineform.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QTest>

using namespace ivr;

namespace {

// A script window reduced to what the matrix uses.
class TestForm : public DrawLineForm
{
public:
    ControlArray<VorelModule> &cmVorelModule() override { return m_modules; }
    ControlArray<VorelDirection> &VorelDirection1() override { return m_arrows; }
    QWidget *picMain() override { return &m_canvas; }

    VorelModule *add(clsDrawLine &drawLine, qint16 index, int type, float left = 0, float top = 0)
    {
        VorelModule *module = m_modules.load(index);
        drawLine.Add(index, *this);
        module->Create(type, QString::number(index));
        module->setLeft(left);
        module->setTop(top);
        module->setVisible(true);
        return module;
    }

private:
    QWidget m_canvas;
    ControlArray<VorelModule> m_modules{[this](qint16 i) {
        return new VorelModule(i, &m_canvas);
    }};
    ControlArray<VorelDirection> m_arrows{[this](qint16 i) {
        return new VorelDirection(i, &m_canvas);
    }};
};

QList<MsgBox::Message> g_messages;

} // namespace

class tst_clsDrawLine : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { MsgBox::clearHook(); }
    void deleteMarksOrDropsRowAndColumn_data();
    void deleteMarksOrDropsRowAndColumn();
    void repeatedAddWipes();
    void addAboveBoundRefused();
    void renameFollowsArrowsAndWalker_data();
    void renameFollowsArrowsAndWalker();
    void missingArrowFailsAndCanvasRepaints();
};

void tst_clsDrawLine::init()
{
    g_messages.clear();
    MsgBox::setHook([](const MsgBox::Message &m) {
        g_messages.append(m);
        return QMessageBox::Ok;
    });
}

void tst_clsDrawLine::deleteMarksOrDropsRowAndColumn_data()
{
    QTest::addColumn<QList<int>>("deletes");
    QTest::addColumn<int>("upperBound");
    QTest::newRow("middle-delete-writes-minus-one") << QList<int>{2} << 4;
    QTest::newRow("top-delete-falls-past-hole") << QList<int>{3, 4} << 2;
}

void tst_clsDrawLine::deleteMarksOrDropsRowAndColumn()
{
    QFETCH(QList<int>, deletes);
    QFETCH(int, upperBound);
    TestForm form;
    clsDrawLine drawLine;
    for (qint16 i = 0; i <= 4; ++i)
        form.add(drawLine, i, 3);
    drawLine.setLineMatrix(4, 0, 7);
    drawLine.setLineMatrix(2, 3, 4);
    drawLine.setLineMatrix(0, 2, 5);
    for (int i : deletes) {
        form.cmVorelModule().unload(qint16(i));
        drawLine.Delete(qint16(i), form);
    }

    QCOMPARE(drawLine.UpperBound(), upperBound);
    for (qint16 i = 0; i <= upperBound; ++i) {
        QCOMPARE(drawLine.ModuleExist(i), !deletes.contains(i));
        for (qint16 j = 0; j <= upperBound; ++j)
            QCOMPARE(drawLine.LineMatrix(i, j) == -1, deletes.contains(i) || deletes.contains(j));
    }
    // A redraw passes over a deleted module's -1 cells.
    drawLine.RedefineModule(1, form, 3);
}

void tst_clsDrawLine::repeatedAddWipes()
{
    TestForm form;
    clsDrawLine drawLine;
    for (qint16 i = 0; i <= 2; ++i)
        form.add(drawLine, i, 3);
    drawLine.setLineMatrix(0, 1, 5);
    drawLine.setLineMatrix(2, 0, 6);
    drawLine.setLineMatrix(2, 1, 7);

    drawLine.Add(0, form);
    QCOMPARE(drawLine.LineMatrix(0, 1), 0);
    QCOMPARE(drawLine.LineMatrix(2, 0), 0);
    QCOMPARE(drawLine.LineMatrix(2, 1), 7);
    QVERIFY(g_messages.isEmpty());
}

void tst_clsDrawLine::addAboveBoundRefused()
{
    TestForm form;
    clsDrawLine drawLine;
    form.add(drawLine, 0, 1);
    form.add(drawLine, 1, 0);
    drawLine.Add(3, form);

    QCOMPARE(g_messages.size(), 1);
    QCOMPARE(g_messages.first().text, "Invalid index value");
    QCOMPARE(g_messages.first().icon, QMessageBox::Critical);
    QVERIFY_THROWS_EXCEPTION(IvrError, drawLine.ModuleExist(3));
}

void tst_clsDrawLine::renameFollowsArrowsAndWalker_data()
{
    QTest::addColumn<int>("sourceType");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("arrow");
    QTest::addColumn<QString>("expected");
    QTest::newRow("rename-carried-to-digit-exit") << 4 << "OnDigit7" << true << "[Billing]";
    QTest::newRow("exit-without-arrow-kept") << 11 << "OnSuccess" << false << "[Accounts]";
    QTest::newRow("other-types-key-never-touched") << 3 << "OnSuccess" << true << "[Accounts]";
}

void tst_clsDrawLine::renameFollowsArrowsAndWalker()
{
    QFETCH(int, sourceType);
    QFETCH(QString, key);
    QFETCH(bool, arrow);
    QFETCH(QString, expected);

    TestForm form;
    clsDrawLine drawLine;
    form.add(drawLine, 0, 1);
    form.add(drawLine, 1, 0, 0, 3000);
    VorelModule *renamed = form.add(drawLine, 2, 3, 4000, 0);
    VorelModule *source = form.add(drawLine, 3, sourceType, 4000, 3000);
    // Another module that names the target with an arrow: the rename reaches it whatever
    // happens to the first.
    VorelModule *witness = form.add(drawLine, 4, 3, 8000, 3000);
    for (qint16 i = 0; i <= 2; ++i)
        form.VorelDirection1().load(i);

    source->moduleData()->definition().Properties(key).setValue(QStringLiteral("[Accounts]"));
    witness->moduleData()->definition().setNextModule(QStringLiteral("[Accounts]"));
    if (arrow)
        drawLine.setLineMatrix(3, 2, 1);
    drawLine.setLineMatrix(4, 2, 2);

    renamed->moduleData()->setName(QStringLiteral("Billing"));
    drawLine.RedefineModule(2, form, 1, QStringLiteral("Accounts"));

    QCOMPARE(source->moduleData()->definition().Properties(key).Value().toString(), expected);
    QCOMPARE(witness->moduleData()->definition().NextModule(), "[Billing]");
}

void tst_clsDrawLine::missingArrowFailsAndCanvasRepaints()
{
    TestForm form;
    clsDrawLine drawLine;
    form.add(drawLine, 0, 1);
    form.add(drawLine, 1, 0);
    drawLine.setLineMatrix(0, 1, 6); // arrow 6 was never loaded
    QVERIFY_THROWS_EXCEPTION(IvrError, drawLine.RedefineModule(0, form, 1));
    QVERIFY2(form.picMain()->updatesEnabled(), "a failed redraw must not freeze the canvas");
}

QTEST_MAIN(tst_clsDrawLine)
#include "tst_clsdrawline.moc"
