#include "moduletypes.h"

#include <QHash>

namespace ivr {

namespace {

QStringList digitExits()
{
    QStringList keys;
    for (int digit = 0; digit <= 9; ++digit)
        keys << QStringLiteral("OnDigit") + QString::number(digit);
    return keys << QStringLiteral("OnStar") << QStringLiteral("OnHash")
                << QStringLiteral("OnTimeOut");
}

const QHash<int, ModuleTypeInfo> &table()
{
    static const QHash<int, ModuleTypeInfo> entries = [] {
        const QStringList prompt{"isTextMsg", "TextToPlay", "FileName"};
        const QList<ModuleTypeInfo> list{
                {0, "End Call", "frmPropEnd", {}, prompt},
                {1, "Connected", "frmPropConnect", {"NextModule"}, {}},
                {2, "", "", {"NextModule"}, {}},
                {3,
                 "Play Message",
                 "frmPropPlay",
                 {"NextModule"},
                 prompt + QStringList{"ReplayCount", "PauseBetn"}},
                {4,
                 "get Digits",
                 "frmPropDigit",
                 digitExits(),
                 prompt + QStringList{"PlayBeep", "TimeOut"}},
                {5,
                 "get Number Buffer",
                 "frmPropNumber",
                 {"OnSuccess", "OnTimeOut"},
                 prompt
                         + QStringList{"PreDefBuffer",
                                       "PlayBeep",
                                       "TimeOut",
                                       "MinLength",
                                       "MaxLength"}},
                {6, "Transfer Call", "frmPropTransfer", {}, prompt + QStringList{"DefaultExt"}},
                {7,
                 "Record Message",
                 "frmPropRecord",
                 {"OnFinish"},
                 prompt + QStringList{"RecordLen", "PlayBeep", "StopOnDigit"}},
                {8,
                 "Database Query",
                 "frmPropQuery",
                 {"OnSuccess", "OnFail", "OnNoRecord"},
                 {"QueryString", "ConnectionString"}},
                {9,
                 "Send E-Mail",
                 "frmPropEMail",
                 {"OnSuccess", "OnFail"},
                 {"SendTo", "MailFrom", "Subject", "Attachment", "Message"}},
                {10, "", "", {}, {}},
                {11,
                 "Run Other Application",
                 "FrmExecutable",
                 {"OnSuccess", "OnFail"},
                 {"FileName", "CommandLine", "RunMode"}},
                {12, "Start Other Vorel IVR Script", "FrmScripts", {}, {"ScriptName"}},
                {13, "Check Condition", "frmPropCondition", {"OnSuccess", "OnFail"}, {"Condition"}},
                {98, "", "FrmCommon", {}, {"BeepFileName", "ScriptCount"}},
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

bool ModuleTypes::isKnown(int type)
{
    return table().contains(type);
}

QList<int> ModuleTypes::types()
{
    QList<int> numbers = table().keys();
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

QList<int> ModuleTypes::toolTypes()
{
    // 13 lies between 8 and 9 on the screen on purpose.
    return {3, 4, 5, 6, 7, 8, 13, 9, 11, 12};
}

} // namespace ivr
