#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace ivr {

// What the program knows about the keys of a module's Definition: the JSON
// type each one is stored with in a script file. A key not listed here is
// kept exactly as the file gave it.
class DefinitionKeys
{
public:
    enum class Kind {
        Text,   // QString
        Flag,   // bool
        Number, // double, finite
        Int32,  // qint32
        Float,  // float, finite (positions in twips)
    };

    static std::optional<Kind> kindOf(QStringView key);

    // The exit keys of every module type: NextModule, OnDigit0..OnDigit9,
    // OnStar, OnHash, OnTimeOut, OnSuccess, OnFail, OnNoRecord, OnFinish.
    static const QStringList &exitKeys();

    // Keys that a CommonModule (type 98) stores as direct members, and that
    // its file entry therefore holds in a form of their own (arrays, count).
    static const QStringList &commonMemberKeys();
};

} // namespace ivr
