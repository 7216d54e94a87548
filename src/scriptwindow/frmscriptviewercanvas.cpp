// Editing on the canvas: placing, dragging and deleting modules.
#include "frmscriptviewer.h"

#include "frameservices.h"
#include "ivrcheck.h"
#include "ivrerror.h"
#include "moduletypes.h"
#include "msgbox.h"
#include "screenpointer.h"
#include "scriptcanvas.h"
#include "selectedmoduletype.h"
#include "twips.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QMenu>
#include <QRubberBand>
#include <QScopeGuard>

using namespace ivr;

void frmScriptViewer::canvasMouseMove()
{
    ScreenPointer::set(SelectedModuleType() < 2 ? ScreenPointer::Arrow : ScreenPointer::Cross);
}

void frmScriptViewer::canvasMouseUp(Qt::MouseButton button, QPointF pos, QPointF globalPos)
{
    if (button == Qt::RightButton) {
        if (appMain() && appMain()->mnuScript())
            appMain()->mnuScript()->popup(globalPos.toPoint());
        return;
    }
    const qint16 type = SelectedModuleType();
    if (type < 2)
        return;
    if (AddModule(type, Twips::fromPixels(pos.x()), Twips::fromPixels(pos.y())))
        m_Changed = true;
}

namespace {
// The first index at which reading an element fails, or the one past the top.
// Without holes the walk would end past the top anyway; say so at once, which
// keeps opening a large script linear.
template<typename T, typename Probe>
int firstFailingRead(ControlArray<T> &array, Probe probe)
{
    const int top = array.ubound();
    if (array.count() == top + 1)
        return top + 1;
    for (int k = array.lbound(); k <= top; ++k) {
        try {
            probe(array.at(qint16(k)));
        } catch (const IvrError &) {
            return k;
        }
    }
    return top + 1;
}
} // namespace

qint16 frmScriptViewer::NextFreeModule()
{
    const int k = firstFailingRead(m_cmVorelModule, [](VorelModule *m) { m->Caption(); });
    if (k > HighestIndex)
        throw IvrError(QStringLiteral("The script holds %1 modules, the most a script window "
                                      "can hold.")
                               .arg(HighestIndex + 1));
    return qint16(k);
}

qint16 frmScriptViewer::NextFreeArrow()
{
    const int k = firstFailingRead(m_VorelDirection1, [](VorelDirection *a) { a->Top(); });
    if (k > HighestIndex)
        throw IvrError(QStringLiteral("The script has %1 links, the most a script window can "
                                      "show.")
                               .arg(HighestIndex));
    return qint16(k);
}

bool frmScriptViewer::AddModule(qint16 Type, float X, float Y)
{
    qint16 k = 0;
    try {
        k = NextFreeModule();
    } catch (const IvrError &full) {
        MsgBox::critical(full.description() + QStringLiteral(" Nothing was placed."));
        return false;
    }
    VorelModule *module = m_cmVorelModule.load(k);
    m_DrawLine.Add(k, *this);
    module->Create(Type, QString::number(k));
    module->setLeft(X);
    module->setTop(Y);
    module->setVisible(true);
    return true;
}

void frmScriptViewer::moduleMouseDown(qint16 index, Qt::MouseButton button, float x, float y)
{
    if (button != Qt::LeftButton || !m_cmVorelModule.exists(index))
        return;
    m_GrabX = x;
    m_GrabY = y;
    m_dragSource = m_cmVorelModule.at(index);
}

void frmScriptViewer::moduleMouseMove(qint16 index, Qt::MouseButtons buttons, QPointF globalPos)
{
    if (!m_dragSource || m_dragSource->Index() != index || !buttons.testFlag(Qt::LeftButton))
        return;
    // Only an outline follows the pointer; the module and its arrows move
    // once, at the drop.
    const QPoint at = m_picMain->mapFromGlobal(globalPos.toPoint());
    m_dragOutline->setGeometry(QRect(
            at - QPoint(Twips::toPixels(m_GrabX), Twips::toPixels(m_GrabY)), m_dragSource->size()));
    m_dragOutline->show();
    m_dragOutline->raise();
}

void frmScriptViewer::moduleMouseUp(qint16 index, Qt::MouseButton button, QPointF globalPos)
{
    if (button != Qt::LeftButton || !m_dragSource || m_dragSource->Index() != index)
        return;
    VorelModule *source = m_dragSource;
    m_dragSource.clear();
    m_dragOutline->hide();

    // The drop target is whatever lies under the pointer: the canvas, a
    // module (the source itself for a plain click) or an arrow. Anything
    // else, such as a scroll bar, takes no drop.
    QWidget *target = childAt(mapFromGlobal(globalPos.toPoint()));
    while (target && target != m_picMain && target->parentWidget() != m_picMain)
        target = target->parentWidget();
    if (!target) {
        m_GrabX = m_GrabY = 0;
        return;
    }
    float X = 0;
    float Y = 0;
    if (auto *module = qobject_cast<VorelModule *>(target)) {
        const QPointF inside = module->mapFromGlobal(globalPos);
        X = module->Left() + Twips::fromPixels(inside.x());
        Y = module->Top() + Twips::fromPixels(inside.y());
    } else {
        const QPointF onCanvas = m_picMain->mapFromGlobal(globalPos);
        X = Twips::fromPixels(onCanvas.x());
        Y = Twips::fromPixels(onCanvas.y());
    }
    dropOnCanvas(source, X, Y);
}

void frmScriptViewer::dropOnCanvas(VorelModule *source, float X, float Y)
{
    source->setLeft(X - m_GrabX);
    source->setTop(Y - m_GrabY);
    m_GrabX = 0;
    m_GrabY = 0;
    // One repaint of the canvas instead of one per arrow that moves.
    m_picMain->setUpdatesEnabled(false);
    const auto repaint = qScopeGuard([this] { m_picMain->setUpdatesEnabled(true); });
    m_DrawLine.RedefineModule(source->Index(), *this, 3, QString());
    m_Changed = true;
}

void frmScriptViewer::DeleteModule()
{
    // While a dialog is open the window's modules stay as they are.
    if (dialogOpen())
        return;
    auto *active = qobject_cast<VorelModule *>(focusWidget());
    if (!active || active->parentWidget() != m_picMain)
        return;
    const int type = active->ModuleType();
    if (type == ModuleTypes::EndCall || type == ModuleTypes::Connected)
        return;
    RemoveModule(active->Index());
}

void frmScriptViewer::RemoveModule(qint16 Index)
{
    IVR_CHECK(m_cmVorelModule.exists(Index), return );
    VorelModule *module = m_cmVorelModule.at(Index);
    const auto answer = MsgBox::show(QStringLiteral("Do you want to delete module [ ")
                                             + module->Caption() + QStringLiteral(" ]"),
                                     QMessageBox::Question,
                                     QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    const int type = module->ModuleType();
    if (type == ModuleTypes::EndCall || type == ModuleTypes::Connected)
        return;

    // From here each step is tried on its own: a cell of -1 or an arrow
    // already gone fails and the next step goes on.
    const auto attempt = [](auto &&step) {
        try {
            step();
        } catch (const IvrError &) {
        }
    };
    const int top = m_cmVorelModule.ubound();
    for (int j = 0; j <= top; ++j) {
        attempt([&] {
            const qint16 leaving = m_DrawLine.LineMatrix(Index, qint16(j));
            if (leaving > 0)
                m_VorelDirection1.unload(leaving);
        });
        attempt([&] {
            const qint16 entering = m_DrawLine.LineMatrix(qint16(j), Index);
            if (entering != 0)
                m_VorelDirection1.unload(entering);
        });
    }
    attempt([&] { m_cmVorelModule.unload(Index); });
    attempt([&] { m_DrawLine.Delete(Index, *this); });
}
