#include "dialogtable.h"

#include "frmcommon.h"
#include "frmexecutable.h"
#include "frmpropcondition.h"
#include "frmpropconnect.h"
#include "frmpropdigit.h"
#include "frmpropemail.h"
#include "frmpropend.h"
#include "frmpropnumber.h"
#include "frmpropplay.h"
#include "frmpropquery.h"
#include "frmproprecord.h"
#include "frmproptransfer.h"
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
            {QStringLiteral("frmPropCondition"), {Completion::FinishEdit, make<frmPropCondition>}},
            {QStringLiteral("frmPropEMail"), {Completion::FinishEdit, make<frmPropEMail>}},
            {QStringLiteral("frmPropQuery"), {Completion::FinishEdit, make<frmPropQuery>}},
            {QStringLiteral("FrmExecutable"), {Completion::FinishEdit, make<FrmExecutable>}},
            {QStringLiteral("frmPropDigit"), {Completion::FinishEdit, make<frmPropDigit>}},
            {QStringLiteral("frmPropNumber"), {Completion::FinishEdit, make<frmPropNumber>}},
            {QStringLiteral("frmPropRecord"), {Completion::FinishEdit, make<frmPropRecord>}},
            {QStringLiteral("frmPropTransfer"), {Completion::FinishEdit, make<frmPropTransfer>}},
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
