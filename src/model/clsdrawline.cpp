#include "clsdrawline.h"

#include "arrowplacer.h"
#include "drawlineform.h"
#include "exittables.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QWidget>

namespace ivr {

namespace {

[[noreturn]] void subscriptOutOfRange()
{
    throw IvrError(QStringLiteral("Subscript out of range"));
}

} // namespace

void clsDrawLine::checkSubscript(qint16 i, qint16 j) const
{
    if (i < 0 || i >= m_ModuleRows.size() || j < 0 || j >= m_ModuleRows.at(i).size())
        subscriptOutOfRange();
}

qint16 clsDrawLine::LineMatrix(qint16 i, qint16 j) const
{
    checkSubscript(i, j);
    return m_ModuleRows.at(i).at(j);
}

void clsDrawLine::setLineMatrix(qint16 i, qint16 j, qint16 value)
{
    checkSubscript(i, j);
    m_ModuleRows[i][j] = value;
}

bool clsDrawLine::ModuleExist(qint16 i) const
{
    if (i < 0 || i >= m_ExistFlags.size())
        subscriptOutOfRange();
    return m_ExistFlags.at(i);
}

void clsDrawLine::setModuleExist(qint16 i, bool value)
{
    if (i < 0 || i >= m_ExistFlags.size())
        subscriptOutOfRange();
    m_ExistFlags[i] = value;
}

void clsDrawLine::resizeTo(qint16 upperBound)
{
    const qsizetype size = qMax<qsizetype>(0, qsizetype(upperBound) + 1);
    m_ModuleRows.resize(size);
    for (QList<qint16> &row : m_ModuleRows)
        row.resize(size, 0);
    m_ExistFlags.resize(size, false);
}

void clsDrawLine::Add(qint16 Index, DrawLineForm &Form)
{
    if (Index < 0)
        subscriptOutOfRange();
    const qint16 n = Form.cmVorelModule().ubound();
    resizeTo(n);
    if (Index > n) {
        MsgBox::show(QStringLiteral("Invalid index value"), QMessageBox::Critical);
        return;
    }
    m_ExistFlags[Index] = true;
    for (qint16 j = 0; j <= n; ++j) {
        m_ModuleRows[Index][j] = 0;
        m_ModuleRows[j][Index] = 0;
    }
}

void clsDrawLine::Delete(qint16 Index, DrawLineForm &Form)
{
    if (Index < 0)
        subscriptOutOfRange();
    const qint16 n = Form.cmVorelModule().ubound();
    resizeTo(n);
    if (Index > n)
        return;
    m_ExistFlags[Index] = false;
    for (qint16 j = 0; j <= n; ++j) {
        m_ModuleRows[Index][j] = -1;
        m_ModuleRows[j][Index] = -1;
    }
}

void clsDrawLine::RedefineModule(qint16 Index,
                                 DrawLineForm &Form,
                                 int DrawMode,
                                 const QString &OldName)
{
    // The canvas has no stored picture to switch off: a window that moves
    // many arrows at once groups their repaint itself.
    ControlArray<VorelModule> &modules = Form.cmVorelModule();
    ControlArray<VorelDirection> &arrows = Form.VorelDirection1();
    const bool leaving = DrawMode == 1 || DrawMode == 3;
    const bool entering = DrawMode == 2 || DrawMode == 3;

    for (qint16 j = 0; j < m_ExistFlags.size(); ++j) {
        if (!m_ExistFlags.at(j))
            continue;
        if (leaving) {
            const qint16 cell = LineMatrix(Index, j);
            if (cell > 0) {
                VorelDirection *arrow = arrows.at(cell);
                ArrowPlacer::Place(modules.at(Index), modules.at(j), arrow);
                arrow->setVisible(true);
            }
        }
        const qint16 incoming = LineMatrix(j, Index);
        if (entering && incoming > 0) {
            VorelDirection *arrow = arrows.at(incoming);
            ArrowPlacer::Place(modules.at(j), modules.at(Index), arrow);
            arrow->setVisible(true);
        }
        if (!OldName.isEmpty() && incoming > 0)
            RenameTarget(modules.at(j), OldName, modules.at(Index)->moduleData()->Name());
    }
}

void clsDrawLine::RenameTarget(VorelModule *Module, const QString &OldName, const QString &NewName)
{
    const QStringList keys = ExitTables::keys(Module->ModuleType(), ExitWalk::Rename);
    for (const QString &key : keys)
        RenameExit(Module, key, OldName, NewName);
}

void clsDrawLine::RenameExit(VorelModule *Module,
                             const QString &Key,
                             const QString &OldName,
                             const QString &NewName)
{
    Property exit = Module->moduleData()->definition().Properties(Key);
    if (exit.Value().toString() == QLatin1Char('[') + OldName + QLatin1Char(']'))
        exit.setValue(QString(QLatin1Char('[') + NewName + QLatin1Char(']')));
}

} // namespace ivr
