#pragma once

#include <QString>

namespace ivr {

// A failure of the speech engine or of a wave file, as the user is told it:
// the engine's error number and its own description.
struct AudioFailure
{
    int number = 0;
    QString description;

    QString message() const { return QString::number(number) + QLatin1Char(' ') + description; }
};

} // namespace ivr
