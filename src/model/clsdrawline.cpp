#include "clsdrawline.h"

#include "arrowplacer.h"
#include "drawlineform.h"
#include "exittables.h"
#include "ivrerror.h"
#include "msgbox.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QWidget>

#include <algorithm>

namespace ivr {

namespace {

[[noreturn]] void subscriptOutOfRange()
{
    throw IvrError(QStringLiteral("Subscript out of range"));
}

} // namespace

void clsDrawLine::checkSubscript(int i, int j) const
{
    const int size = int(m_ExistFlags.size());
    if (i < 0 || i >= size || j < 0 || j >= size)
        subscriptOutOfRange();
}

qint16 clsDrawLine::LineMatrix(qint16 i, qint16 j) const
{
    checkSubscript(i, j);
    const auto row = m_rows.constFind(i);
    if (row != m_rows.constEnd()) {
        const auto cell = row->constFind(j);
        if (cell != row->constEnd())
            return *cell;
    }
    const Wipe &a = m_wiped.at(i);
    const Wipe &b = m_wiped.at(j);
    return a.time >= b.time ? a.value : b.value;
}

void clsDrawLine::setLineMatrix(qint16 i, qint16 j, qint16 value)
{
    checkSubscript(i, j);
    m_rows[i].insert(j, value);
    m_columns[j].insert(i, value);
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

// Drops the cells written one by one in the row and the column of index.
void clsDrawLine::forget(int index)
{
    const auto dropFrom = [index](QHash<int, Line> &lines, const Line &crossing) {
        for (auto it = crossing.constBegin(); it != crossing.constEnd(); ++it) {
            const auto line = lines.find(it.key());
            if (line == lines.end())
                continue;
            line->remove(index);
            if (line->isEmpty())
                lines.erase(line);
        }
    };
    dropFrom(m_columns, m_rows.take(index));
    dropFrom(m_rows, m_columns.take(index));
}

void clsDrawLine::wipe(int index, qint16 value)
{
    forget(index);
    m_wiped[index] = Wipe{++m_clock, value};
}

void clsDrawLine::resizeTo(int upperBound)
{
    const int size = qMax(0, upperBound + 1);
    const int before = int(m_ExistFlags.size());
    for (int index = size; index < before; ++index)
        forget(index);
    m_ExistFlags.resize(size, false);
    // Cells that come with a larger bound start at 0, whatever their
    // crossing rows and columns held.
    m_wiped.resize(size, Wipe{++m_clock, 0});
}

void clsDrawLine::Add(qint16 Index, DrawLineForm &Form)
{
    if (Index < 0)
        subscriptOutOfRange();
    const int n = Form.cmVorelModule().ubound();
    resizeTo(n);
    if (Index > n) {
        MsgBox::show(QStringLiteral("Invalid index value"), QMessageBox::Critical);
        return;
    }
    m_ExistFlags[Index] = true;
    wipe(Index, 0);
}

void clsDrawLine::Delete(qint16 Index, DrawLineForm &Form)
{
    if (Index < 0)
        subscriptOutOfRange();
    const int n = Form.cmVorelModule().ubound();
    resizeTo(n);
    if (Index > n)
        return;
    m_ExistFlags[Index] = false;
    wipe(Index, -1);
}

// The indices whose cell with index, either way, was written one by one: the
// only cells that can hold an arrow. Every other cell is 0 or -1.
QList<int> clsDrawLine::linkedIndices(int index) const
{
    QList<int> indices = m_rows.value(index).keys() + m_columns.value(index).keys();
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return indices;
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
    if (!m_ExistFlags.isEmpty())
        checkSubscript(Index, Index);

    for (const int j : linkedIndices(Index)) {
        if (!m_ExistFlags.at(j))
            continue;
        if (leaving) {
            const qint16 cell = LineMatrix(Index, qint16(j));
            if (cell > 0) {
                VorelDirection *arrow = arrows.at(cell);
                ArrowPlacer::Place(modules.at(Index), modules.at(qint16(j)), arrow);
                arrow->setVisible(true);
            }
        }
        const qint16 incoming = LineMatrix(qint16(j), Index);
        if (entering && incoming > 0) {
            VorelDirection *arrow = arrows.at(incoming);
            ArrowPlacer::Place(modules.at(qint16(j)), modules.at(Index), arrow);
            arrow->setVisible(true);
        }
        if (!OldName.isEmpty() && incoming > 0)
            RenameTarget(modules.at(qint16(j)), OldName, modules.at(Index)->moduleData()->Name());
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
