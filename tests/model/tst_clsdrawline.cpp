#include "clsdrawline.h"
#include "drawlineform.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QTest>

using namespace ivr;

namespace {

// A script window reduced to what the matrix uses: a canvas with real
// module and arrow controls in control arrays.
class TestForm : public DrawLineForm
{
public:
    TestForm() { m_canvas.resize(1000, 800); }
    ControlArray<VorelModule> &cmVorelModule() override { return m_modules; }
    ControlArray<VorelDirection> &VorelDirection1() override { return m_arrows; }
    QWidget *picMain() override { return &m_canvas; }

    VorelModule *
    addModule(clsDrawLine &drawLine, qint16 index, int type, float left = 0, float top = 0)
    {
        VorelModule *module = m_modules.load(index);
        drawLine.Add(index, *this);
        module->Create(type, QString::number(index));
        module->setLeft(left);
        module->setTop(top);
        module->setVisible(true);
        return module;
    }
    void removeModule(clsDrawLine &drawLine, qint16 index)
    {
        m_modules.unload(index);
        drawLine.Delete(index, *this);
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
    void cleanup();
    void deleteMarksOrDropsRowAndColumn_data();
    void deleteMarksOrDropsRowAndColumn();
    void repeatedAddWipes();
    void outsideTheMatrixRefused();
    void redrawFollowsMode_data();
    void redrawFollowsMode();
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

void tst_clsDrawLine::cleanup()
{
    MsgBox::clearHook();
}

void tst_clsDrawLine::deleteMarksOrDropsRowAndColumn_data()
{
    QTest::addColumn<QList<int>>("deletes");
    QTest::addColumn<int>("upperBound");
    QTest::newRow("middle-delete-writes-minus-one") << QList<int>{2} << 4;
    QTest::newRow("top-delete-shrinks-by-one") << QList<int>{4} << 3;
    QTest::newRow("top-delete-falls-past-hole") << QList<int>{3, 4} << 2;
}

void tst_clsDrawLine::deleteMarksOrDropsRowAndColumn()
{
    QFETCH(QList<int>, deletes);
    QFETCH(int, upperBound);
    TestForm form;
    clsDrawLine drawLine;
    for (qint16 i = 0; i <= 4; ++i)
        form.addModule(drawLine, i, 3);
    drawLine.setLineMatrix(4, 0, 7);
    drawLine.setLineMatrix(0, 4, 8);
    drawLine.setLineMatrix(2, 3, 4);
    drawLine.setLineMatrix(0, 2, 5);
    for (int i : deletes)
        form.removeModule(drawLine, qint16(i));

    QCOMPARE(drawLine.UpperBound(), upperBound);
    if (upperBound < 4)
        QVERIFY_THROWS_EXCEPTION(IvrError, drawLine.LineMatrix(4, 0));
    for (qint16 i = 0; i <= upperBound; ++i) {
        QCOMPARE(drawLine.ModuleExist(i), !deletes.contains(i));
        for (qint16 j = 0; j <= upperBound; ++j)
            QCOMPARE(drawLine.LineMatrix(i, j) == -1, deletes.contains(i) || deletes.contains(j));
    }
    // A redraw passes over a deleted module's -1 cells.
    drawLine.RedefineModule(1, form, 3);
    // A new module in the deleted place starts clean.
    const qint16 back = qint16(deletes.last());
    form.addModule(drawLine, back, 5);
    for (qint16 j = 0; j <= qMax(upperBound, int(back)); ++j) {
        QCOMPARE(drawLine.LineMatrix(back, j), 0);
        QCOMPARE(drawLine.LineMatrix(j, back), 0);
    }
}

void tst_clsDrawLine::repeatedAddWipes()
{
    TestForm form;
    clsDrawLine drawLine;
    for (qint16 i = 0; i <= 2; ++i)
        form.addModule(drawLine, i, 3);
    drawLine.setLineMatrix(0, 1, 5);
    drawLine.setLineMatrix(2, 0, 6);
    drawLine.setLineMatrix(2, 1, 7);

    drawLine.Add(0, form);
    QCOMPARE(drawLine.LineMatrix(0, 1), 0);
    QCOMPARE(drawLine.LineMatrix(2, 0), 0);
    QCOMPARE(drawLine.LineMatrix(2, 1), 7);
    QVERIFY(drawLine.ModuleExist(0));
    QVERIFY(g_messages.isEmpty());
}

void tst_clsDrawLine::outsideTheMatrixRefused()
{
    const qint16 index = 3; // just above the bound
    TestForm form;
    clsDrawLine drawLine;
    form.addModule(drawLine, 0, 1);
    form.addModule(drawLine, 1, 0);
    form.cmVorelModule().load(2); // loaded but not yet added: arrays stay at 1
    drawLine.Add(index, form);

    QCOMPARE(g_messages.size(), 1);
    QCOMPARE(g_messages.first().text, "Invalid index value");
    QCOMPARE(g_messages.first().icon, QMessageBox::Critical);
    // The arrays were resized to the control array's bound, and no flag set.
    QCOMPARE(drawLine.UpperBound(), 2);
    QVERIFY(!drawLine.ModuleExist(2));
    QVERIFY_THROWS_EXCEPTION(IvrError, drawLine.ModuleExist(index));
    QVERIFY_THROWS_EXCEPTION(IvrError, drawLine.setLineMatrix(index, 0, 1));
    try {
        drawLine.LineMatrix(-1, 0);
        QFAIL("reading outside the matrix must fail");
    } catch (const IvrError &error) {
        QCOMPARE(error.description(), "Subscript out of range");
    }
}

void tst_clsDrawLine::redrawFollowsMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("leavingShown");
    QTest::addColumn<bool>("enteringShown");

    QTest::newRow("mode-1-leaving-only") << 1 << true << false;
    QTest::newRow("mode-2-entering-only") << 2 << false << true;
    QTest::newRow("mode-3-both-ways") << 3 << true << true;
}

void tst_clsDrawLine::redrawFollowsMode()
{
    QFETCH(int, mode);
    QFETCH(bool, leavingShown);
    QFETCH(bool, enteringShown);

    TestForm form;
    clsDrawLine drawLine;
    form.addModule(drawLine, 0, 1, 1215, 675);
    form.addModule(drawLine, 1, 0, 1215, 3870);
    VorelModule *middle = form.addModule(drawLine, 2, 3, 6000, 2000.5);
    form.VorelDirection1().load(0);
    VorelDirection *leaving = form.VorelDirection1().load(1);
    VorelDirection *entering = form.VorelDirection1().load(2);
    drawLine.setLineMatrix(2, 1, 1);
    drawLine.setLineMatrix(0, 2, 2);

    drawLine.RedefineModule(2, form, mode);
    QCOMPARE(!leaving->isHidden(), leavingShown);
    QCOMPARE(!entering->isHidden(), enteringShown);
    QVERIFY(form.VorelDirection1().at(0)->isHidden());
    const QRectF box(middle->Left(), middle->Top(), middle->Width(), middle->Height());
    if (leavingShown)
        QVERIFY(box.adjusted(-0.01, -0.01, 0.01, 0.01).contains(leaving->startPoint()));
    if (enteringShown)
        QVERIFY(box.adjusted(-0.01, -0.01, 0.01, 0.01).contains(entering->endPoint()));
    QVERIFY(form.picMain()->updatesEnabled());
}

void tst_clsDrawLine::renameFollowsArrowsAndWalker_data()
{
    QTest::addColumn<int>("sourceType");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("arrow");
    QTest::addColumn<QString>("expected");

    QTest::newRow("rename-carried-to-next-module") << 3 << "NextModule" << true << "[Billing]";
    QTest::newRow("rename-carried-to-digit-exit") << 4 << "OnDigit7" << true << "[Billing]";
    QTest::newRow("query-no-record-exit-renamed") << 8 << "OnNoRecord" << true << "[Billing]";
    QTest::newRow("program-exit-renamed-with-arrow") << 11 << "OnFail" << true << "[Billing]";
    QTest::newRow("program-exit-without-arrow-kept") << 11 << "OnSuccess" << false << "[Accounts]";
    QTest::newRow("other-types-key-never-touched") << 3 << "OnSuccess" << true << "[Accounts]";
    QTest::newRow("transfer-has-no-exits-to-walk") << 6 << "NextModule" << true << "[Accounts]";
}

void tst_clsDrawLine::renameFollowsArrowsAndWalker()
{
    QFETCH(int, sourceType);
    QFETCH(QString, key);
    QFETCH(bool, arrow);
    QFETCH(QString, expected);

    TestForm form;
    clsDrawLine drawLine;
    form.addModule(drawLine, 0, 1);
    form.addModule(drawLine, 1, 0, 0, 3000);
    VorelModule *renamed = form.addModule(drawLine, 2, 3, 4000, 0);
    VorelModule *source = form.addModule(drawLine, 3, sourceType, 4000, 3000);
    // A second module of the same kind that names the target with an arrow:
    // the rename reaches it whatever happens to the first.
    VorelModule *witness = form.addModule(drawLine, 4, 3, 8000, 3000);
    form.VorelDirection1().load(0);
    form.VorelDirection1().load(1);
    form.VorelDirection1().load(2);

    source->moduleData()->definition().Properties(key).setValue(QStringLiteral("[Accounts]"));
    source->moduleData()->definition().setNextModule(QStringLiteral("[Elsewhere]"));
    if (key == "NextModule")
        source->moduleData()->definition().setNextModule(QStringLiteral("[Accounts]"));
    witness->moduleData()->definition().setNextModule(QStringLiteral("[Accounts]"));
    if (arrow)
        drawLine.setLineMatrix(3, 2, 1);
    drawLine.setLineMatrix(4, 2, 2);

    renamed->moduleData()->setName(QStringLiteral("Billing"));
    drawLine.RedefineModule(2, form, 1, QStringLiteral("Accounts"));

    QCOMPARE(source->moduleData()->definition().Properties(key).Value().toString(), expected);
    QCOMPARE(witness->moduleData()->definition().NextModule(), "[Billing]");
    if (key != "NextModule")
        QCOMPARE(source->moduleData()->definition().NextModule(), "[Elsewhere]");
}

void tst_clsDrawLine::missingArrowFailsAndCanvasRepaints()
{
    TestForm form;
    clsDrawLine drawLine;
    form.addModule(drawLine, 0, 1);
    form.addModule(drawLine, 1, 0);
    drawLine.setLineMatrix(0, 1, 6); // arrow 6 was never loaded
    QVERIFY_THROWS_EXCEPTION(IvrError, drawLine.RedefineModule(0, form, 1));
    QVERIFY2(form.picMain()->updatesEnabled(), "a failed redraw must not freeze the canvas");
}

QTEST_MAIN(tst_clsDrawLine)
#include "tst_clsdrawline.moc"
