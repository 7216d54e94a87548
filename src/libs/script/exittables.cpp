#include "exittables.h"

namespace ivr {

namespace {

struct ExitRow
{
    QList<int> types;
    QStringList dialogWrites;
    QStringList rename;
    QStringList openScript;
};

QStringList digitMenuExits()
{
    QStringList keys;
    for (int digit = 0; digit <= 9; ++digit)
        keys << QStringLiteral("OnDigit") + QString::number(digit);
    return keys << QStringLiteral("OnStar") << QStringLiteral("OnHash")
                << QStringLiteral("OnTimeOut");
}

// Types not listed (0, 6, 10, 12, 98 and any other number) have no exits
// for any walker. Type 2 has no tool and no dialog but is walked as 1 and 3.
const QList<ExitRow> &rows()
{
    static const QList<ExitRow> table{
            {{1, 2, 3}, {"NextModule"}, {"NextModule"}, {"NextModule"}},
            {{4}, digitMenuExits(), digitMenuExits(), digitMenuExits()},
            {{5},
             {"OnSuccess", "OnTimeOut"},
             {"OnSuccess", "OnTimeOut"},
             {"OnSuccess", "OnTimeOut"}},
            {{7}, {"OnFinish"}, {"OnFinish"}, {"OnFinish"}},
            {{8},
             {"OnSuccess", "OnFail", "OnNoRecord"},
             {"OnSuccess", "OnFail", "OnNoRecord"},
             {"OnSuccess", "OnFail"}},
            {{9, 13}, {"OnSuccess", "OnFail"}, {"OnSuccess", "OnFail"}, {"OnSuccess", "OnFail"}},
            {{11}, {"OnSuccess", "OnFail"}, {"OnSuccess", "OnFail"}, {}},
    };
    return table;
}

} // namespace

QStringList ExitTables::keys(int moduleType, ExitWalk walk)
{
    for (const ExitRow &row : rows()) {
        if (!row.types.contains(moduleType))
            continue;
        switch (walk) {
        case ExitWalk::DialogWrites:
            return row.dialogWrites;
        case ExitWalk::Rename:
            return row.rename;
        case ExitWalk::OpenScript:
            return row.openScript;
        }
    }
    return {};
}

} // namespace ivr
