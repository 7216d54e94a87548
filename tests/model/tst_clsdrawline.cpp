#include "clsdrawline.h"

#include "../support/exitkeys.h"
#include "arrowlayer.h"
#include "arrowplacer.h"
#include "drawlineform.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QRandomGenerator>
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
    ArrowLayer *m_layer = new ArrowLayer(&m_canvas);
    ControlArray<VorelModule> m_modules{[this](qint16 i) {
        return new VorelModule(i, &m_canvas);
    }};
    ControlArray<VorelDirection> m_arrows{[this](qint16 i) {
        return new VorelDirection(i, m_layer);
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
    void addAboveBoundRefused();
    void renameReachesTheTypesExits_data();
    void renameReachesTheTypesExits();
    void redrawModes_data();
    void redrawModes();
    void walksAtHighestIndex();
    void cellsReadLastWrite();
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

void tst_clsDrawLine::renameReachesTheTypesExits_data()
{
    QTest::addColumn<int>("sourceType");
    QTest::addColumn<QStringList>("renamed");
    const QString names = "end-call-has-none connected-next-only type-2-walked-as-play "
                          "play-next-only rename-carried-to-every-digit-exit "
                          "number-success-and-time-out transfer-has-none record-finish-only "
                          "query-on-no-record-renamed mail-success-and-fail type-10-has-none "
                          "program-both-exits-renamed script-call-has-none "
                          "condition-success-and-fail";
    for (int type = 0; type <= 13; ++type) {
        // The query's no-record exit and the program's exits follow a rename
        // though they get no arrow.
        QStringList keys = type == 11 ? arrowedExits(13) : arrowedExits(type);
        if (type == 8)
            keys << "OnNoRecord";
        QTest::newRow(qPrintable(names.split(' ')[type])) << type << keys;
    }
}

// Every exit key of every type names the renamed module; only the keys of the
// source's own type follow the rename.
void tst_clsDrawLine::renameReachesTheTypesExits()
{
    QFETCH(int, sourceType);
    QFETCH(QStringList, renamed);
    TestForm form;
    clsDrawLine drawLine;
    form.add(drawLine, 0, 1);
    form.add(drawLine, 1, 0, 0, 3000);
    VorelModule *target = form.add(drawLine, 2, 3, 4000, 0);
    VorelModule *source = form.add(drawLine, 3, sourceType, 4000, 3000);
    VorelModule *unlinked = form.add(drawLine, 4, sourceType, 8000, 3000);
    form.VorelDirection1().load(1);
    drawLine.setLineMatrix(3, 2, 1);
    for (const QString &key : allExits()) {
        source->moduleData()->definition().Properties(key).setValue(QStringLiteral("[Accounts]"));
        unlinked->moduleData()->definition().Properties(key).setValue(QStringLiteral("[Accounts]"));
    }

    target->moduleData()->setName(QStringLiteral("Billing"));
    drawLine.RedefineModule(2, form, 1, QStringLiteral("Accounts"));

    for (const QString &key : allExits()) {
        const QString value = source->moduleData()->definition().Properties(key).Value().toString();
        QVERIFY2(value == (renamed.contains(key) ? "[Billing]" : "[Accounts]"), qPrintable(key));
        // A module without an arrow to the renamed one keeps every exit.
        QCOMPARE(unlinked->moduleData()->definition().Properties(key).Value().toString(),
                 "[Accounts]");
    }
}

void tst_clsDrawLine::redrawModes_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("leaving");
    QTest::addColumn<bool>("entering");
    QTest::newRow("mode-1-leaving-only") << 1 << true << false;
    QTest::newRow("mode-2-entering-only") << 2 << false << true;
    QTest::newRow("mode-3-both") << 3 << true << true;
}

void tst_clsDrawLine::redrawModes()
{
    QFETCH(int, mode);
    QFETCH(bool, leaving);
    QFETCH(bool, entering);
    TestForm form;
    clsDrawLine drawLine;
    form.add(drawLine, 0, 1);
    form.add(drawLine, 1, 0, 0, 9000);
    VorelModule *moved = form.add(drawLine, 2, 3, 6000, 3000);
    VorelModule *after = form.add(drawLine, 3, 3, 12000, 600);
    VorelModule *before = form.add(drawLine, 4, 3, 300, 6000);
    form.add(drawLine, 5, 3);
    form.add(drawLine, 6, 3);
    form.cmVorelModule().unload(5); // the walk passes over its -1 cells
    drawLine.Delete(5, form);
    for (qint16 k = 0; k <= 2; ++k)
        form.VorelDirection1().load(k);
    drawLine.setLineMatrix(2, 3, 1);
    drawLine.setLineMatrix(4, 2, 2);
    VorelDirection *out = form.VorelDirection1().at(1);
    VorelDirection *in = form.VorelDirection1().at(2);
    // Where each arrow belongs, worked out on a spare arrow.
    VorelDirection spare(9);
    ArrowPlacer::Place(moved, after, &spare);
    const QPair<QPointF, QPointF> outEnds{spare.startPoint(), spare.endPoint()};
    ArrowPlacer::Place(before, moved, &spare);
    const QPair<QPointF, QPointF> inEnds{spare.startPoint(), spare.endPoint()};

    drawLine.RedefineModule(2, form, mode);

    QCOMPARE(out->isVisible() && qMakePair(out->startPoint(), out->endPoint()) == outEnds, leaving);
    QCOMPARE(in->isVisible() && qMakePair(in->startPoint(), in->endPoint()) == inEnds, entering);
}

void tst_clsDrawLine::walksAtHighestIndex()
{
    constexpr qint16 top = 32767;
    TestForm form;
    clsDrawLine drawLine;
    form.add(drawLine, 0, 1);
    form.add(drawLine, 1, 0, 0, 3000);
    VorelModule *last = form.add(drawLine, top, 3, 6000, 3000);
    QCOMPARE(drawLine.UpperBound(), top);
    QCOMPARE(drawLine.LineMatrix(top, top), qint16(0));
    for (qint16 k = 0; k <= 2; ++k)
        form.VorelDirection1().load(k);
    drawLine.setLineMatrix(0, top, 1);
    drawLine.setLineMatrix(top, 1, 2);
    form.cmVorelModule().at(0)->moduleData()->definition().setNextModule("[32767]");
    last->moduleData()->setName(QStringLiteral("Last"));

    drawLine.RedefineModule(top, form, 3, QStringLiteral("32767"));
    QVERIFY(form.VorelDirection1().at(1)->isVisible());
    QVERIFY(form.VorelDirection1().at(2)->isVisible());
    QCOMPARE(form.cmVorelModule().at(0)->moduleData()->definition().NextModule(), "[Last]");

    form.cmVorelModule().unload(top);
    drawLine.Delete(top, form);
    QCOMPARE(drawLine.UpperBound(), qint16(1));
    QCOMPARE(drawLine.LineMatrix(0, 1), qint16(0));
}

// The matrix against a plain square one: after any mix of adds, deletes and
// writes, every cell reads what the square matrix holds.
void tst_clsDrawLine::cellsReadLastWrite()
{
    TestForm form;
    clsDrawLine drawLine;
    QList<QList<qint16>> square;
    const auto resize = [&] {
        const int size = form.cmVorelModule().ubound() + 1;
        square.resize(size);
        for (QList<qint16> &row : square)
            row.resize(size, 0);
    };
    const auto wipe = [&](int index, qint16 value) {
        for (int j = 0; j < square.size(); ++j)
            square[index][j] = square[j][index] = value;
    };
    QRandomGenerator random(7);
    for (int step = 0; step < 600; ++step) {
        const int index = random.bounded(12);
        const int action = random.bounded(4);
        if (action == 0) { // adding again wipes as the first add does
            if (form.cmVorelModule().exists(qint16(index)))
                drawLine.Add(qint16(index), form);
            else
                form.add(drawLine, qint16(index), 3);
            resize();
            wipe(index, 0);
        } else if (action == 1 && form.cmVorelModule().exists(qint16(index))) {
            form.cmVorelModule().unload(qint16(index));
            drawLine.Delete(qint16(index), form);
            resize();
            if (index < square.size())
                wipe(index, -1);
        } else if (index < square.size() && !square.isEmpty()) {
            const int j = random.bounded(int(square.size()));
            const qint16 value = qint16(random.bounded(1, 40));
            drawLine.setLineMatrix(qint16(index), qint16(j), value);
            square[index][j] = value;
        }
        QCOMPARE(drawLine.UpperBound(), square.size() - 1);
        for (int i = 0; i < square.size(); ++i) {
            for (int j = 0; j < square.size(); ++j)
                QVERIFY2(drawLine.LineMatrix(qint16(i), qint16(j)) == square[i][j],
                         qPrintable(QStringLiteral("step %1 cell %2,%3").arg(step).arg(i).arg(j)));
        }
    }
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
