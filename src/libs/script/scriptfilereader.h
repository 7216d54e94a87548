#pragma once

#include "modulelist.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <optional>

namespace ivr {

// Turns the bytes of a script file into modules, or says in one sentence
// fragment what is wrong with them ("module 3 (\"Welcome\"): \"TimeOut\" must
// be a number"). Every value is checked before it is used, so a damaged file
// never takes the program down.
class ScriptFileReader
{
public:
    static constexpr int FormatVersion = 1;
    static QString formatName() { return QStringLiteral("brindlewave-ivr-script"); }

    // Takes the bytes, to let them go once they are parsed.
    std::optional<ModuleList> read(QByteArray data);
    QString error() const { return m_error; }

private:
    ModuleDataPtr readModule(int number, const QJsonValue &entry);
    // The value is read in place in the parsed document, not copied out.
    bool checkKnownKey(const QString &key, QJsonValueConstRef value);
    bool readCommonMembers(QJsonObject &stored, Definition &d);
    bool readSlots(const QString &key,
                   const QJsonValue &value,
                   int slotCount,
                   const std::function<void(int, const QString &)> &store);
    // The module being read in the words of a message: module 3 ("Welcome").
    QString where() const;
    bool fail(const QString &error);

    QString m_error;
    int m_moduleNumber = 0;
    QString m_moduleName; // in brackets, as handed out
};

} // namespace ivr
