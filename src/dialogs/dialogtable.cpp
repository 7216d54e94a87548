#include "dialogtable.h"

#include "frmcommon.h"
#include "frmpropconnect.h"
#include "frmpropend.h"
#include "frmpropplay.h"
#include "frmscripts.h"
#include "frmwavefile.h"

#include <QHash>

namespace ivr {

namespace {

template<typename Dialog>
PropertyDialog *make(QWidget *owner)
{
    return new Dialog(owner);
}

const QHash<QString, DialogEntry> &table()
{
    static const QHash<QString, DialogEntry> entries{
            {QStringLiteral("frmPropConnect"), {Completion::FinishEdit, make<frmPropConnect>}},
            {QStringLiteral("frmPropPlay"), {Completion::FinishEdit, make<frmPropPlay>}},
            {QStringLiteral("frmPropEnd"), {Completion::EnableOnly, make<frmPropEnd>}},
            {QStringLiteral("FrmScripts"), {Completion::EnableOnly, make<FrmScripts>}},
            {QStringLiteral("FrmCommon"), {Completion::ScriptLevel, make<FrmCommon>}},
            {QStringLiteral("frmWaveFile"), {Completion::ScriptLevel, make<frmWaveFile>}},
    };
    return entries;
}

} // namespace

const DialogEntry *DialogTable::find(const QString &dialogName)
{
    const auto it = table().constFind(dialogName);
    return it == table().constEnd() ? nullptr : &*it;
}

} // namespace ivr
