#pragma once

#include <QHash>
#include <QList>
#include <QString>

class VorelModule;

namespace ivr {

class DrawLineForm;

// The link matrix of one script window: one row and one column per module
// index. A cell (i, j) holds 0 for no link from i to j, the index of the
// arrow that shows the link, 1 for a link a dialog has asked for and that
// has no arrow yet, or -1 in the row and column of a deleted module.
// The upper bound follows the window's module array at each Add and Delete.
//
// Reading or writing outside the matrix throws IvrError ("Subscript out of
// range"); nothing here checks beyond that, and RedefineModule lets a
// failure of the controls through to its caller.
//
// The matrix is square in use but not in storage: a full one for the
// highest index, 32,767, would take 2 GiB. A cell reads as the last thing
// written to it, whether by a write of its own or by the wipe of its row and
// column that Add (0) and Delete (-1) do; only the cells written one by one
// are stored.
class clsDrawLine
{
public:
    qint16 LineMatrix(qint16 i, qint16 j) const;
    void setLineMatrix(qint16 i, qint16 j, qint16 value);
    bool ModuleExist(qint16 i) const;
    void setModuleExist(qint16 i, bool value);
    // The matrix's upper bound: the module array's at the last Add or Delete.
    qint16 UpperBound() const { return qint16(m_ExistFlags.size() - 1); }

    // Takes in a module just loaded under Index: its row and column start
    // empty, also when the index was in use (a repeated Add wipes them).
    void Add(qint16 Index, DrawLineForm &Form);
    // Forgets a module just unloaded: -1 in its row and column, or, when it
    // was the top one, its row and column dropped with the bound.
    void Delete(qint16 Index, DrawLineForm &Form);
    // DrawMode 1 re-places the arrows leaving Index, 2 those entering it, 3
    // both. With OldName given, carries the module's rename to the exits of
    // every module with an arrow to it.
    void RedefineModule(qint16 Index,
                        DrawLineForm &Form,
                        int DrawMode,
                        const QString &OldName = QString());

private:
    // What the last wipe of a row and column wrote, and when: of the two
    // wipes that reach a cell, the later one holds.
    struct Wipe
    {
        quint64 time = 0;
        qint16 value = 0;
    };
    using Line = QHash<int, qint16>;

    void resizeTo(int upperBound);
    void checkSubscript(int i, int j) const;
    void wipe(int index, qint16 value);
    void forget(int index);
    QList<int> linkedIndices(int index) const;
    void RenameTarget(VorelModule *Module, const QString &OldName, const QString &NewName);
    void RenameExit(VorelModule *Module,
                    const QString &Key,
                    const QString &OldName,
                    const QString &NewName);

    QList<bool> m_ExistFlags;
    QList<Wipe> m_wiped;
    // Cells written one by one since the last wipe of their row and column,
    // by row and again by column.
    QHash<int, Line> m_rows;
    QHash<int, Line> m_columns;
    quint64 m_clock = 0;
};

} // namespace ivr
