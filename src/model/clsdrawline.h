#pragma once

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
    void resizeTo(qint16 upperBound);
    void checkSubscript(qint16 i, qint16 j) const;
    void RenameTarget(VorelModule *Module, const QString &OldName, const QString &NewName);
    void RenameExit(VorelModule *Module,
                    const QString &Key,
                    const QString &OldName,
                    const QString &NewName);

    QList<QList<qint16>> m_ModuleRows;
    QList<bool> m_ExistFlags;
};

} // namespace ivr
