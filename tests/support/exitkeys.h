#pragma once

#include <QStringList>

// Every exit key a module's definition can hold, in the order the tests walk
// them; written out here rather than taken from the code under test.
inline const QStringList &allExits()
{
    static const QStringList keys = QStringLiteral("NextModule OnDigit0 OnDigit1 OnDigit2 OnDigit3 "
                                                   "OnDigit4 OnDigit5 OnDigit6 OnDigit7 "
                                                   "OnDigit8 OnDigit9 OnStar OnHash OnTimeOut "
                                                   "OnSuccess OnFail OnNoRecord OnFinish")
                                            .split(QLatin1Char(' '));
    return keys;
}

// The exits that a module of each type draws an arrow for.
inline QStringList arrowedExits(int type)
{
    const QStringList successFail{"OnSuccess", "OnFail"};
    switch (type) {
    case 1:
    case 2:
    case 3:
        return {"NextModule"};
    case 4:
        return allExits().mid(1, 13);
    case 5:
        return {"OnSuccess", "OnTimeOut"};
    case 7:
        return {"OnFinish"};
    case 8:
    case 9:
    case 13:
        return successFail;
    default:
        return {};
    }
}
