#include "moduletypes.h"

#include "moduledata.h"

#include <QHash>

namespace ivr {

namespace {

const QHash<int, ModuleTypeInfo> &table()
{
    static const QHash<int, ModuleTypeInfo> entries = [] {
        const QStringList prompt{"isTextMsg", "TextToPlay", "FileName"};
        const QList<ModuleTypeInfo> list{
                {0, "End Call", "frmPropEnd", prompt},
                {1, "Connected", "frmPropConnect", {}},
                {2, "", "", {}},
                {3,
                 "Play Message",
                 "frmPropPlay",
                 prompt + QStringList{"ReplayCount", "PauseBetn"}},
                {4, "get Digits", "frmPropDigit", prompt + QStringList{"PlayBeep", "TimeOut"}},
                {5,
                 "get Number Buffer",
                 "frmPropNumber",
                 prompt
                         + QStringList{"PreDefBuffer",
                                       "PlayBeep",
                                       "TimeOut",
                                       "MinLength",
                                       "MaxLength"}},
                {6, "Transfer Call", "frmPropTransfer", prompt + QStringList{"DefaultExt"}},
                {7,
                 "Record Message",
                 "frmPropRecord",
                 prompt + QStringList{"RecordLen", "PlayBeep", "StopOnDigit"}},
                {8, "Database Query", "frmPropQuery", {"QueryString", "ConnectionString"}},
                {9,
                 "Send E-Mail",
                 "frmPropEMail",
                 {"SendTo", "MailFrom", "Subject", "Attachment", "Message"}},
                {10, "", "", {}},
                {11,
                 "Run Other Application",
                 "FrmExecutable",
                 {"FileName", "CommandLine", "RunMode"}},
                {12, "Start Other Vorel IVR Script", "FrmScripts", {"ScriptName"}},
                {13, "Check Condition", "frmPropCondition", {"Condition"}},
                {ModuleData::CommonModuleType, "", "FrmCommon", {"BeepFileName", "ScriptCount"}},
        };
        QHash<int, ModuleTypeInfo> byType;
        for (const ModuleTypeInfo &entry : list)
            byType.insert(entry.type, entry);
        return byType;
    }();
    return entries;
}

} // namespace

const ModuleTypeInfo &ModuleTypes::info(int type)
{
    static const ModuleTypeInfo none;
    const auto it = table().constFind(type);
    return it == table().constEnd() ? none : *it;
}

} // namespace ivr
