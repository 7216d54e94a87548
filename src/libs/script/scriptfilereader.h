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

    std::optional<ModuleList> read(const QByteArray &data);
    QString error() const { return m_error; }

private:
    ModuleDataPtr readModule(int number, const QJsonValue &entry);
    bool checkKnownKey(const QString &where, const QString &key, const QJsonValue &value);
    bool readCommonMembers(const QString &where, QJsonObject &stored, Definition &d);
    bool readSlots(const QString &where,
                   const QString &key,
                   const QJsonValue &value,
                   int slotCount,
                   const std::function<void(int, const QString &)> &store);
    bool fail(const QString &error);

    QString m_error;
};

} // namespace ivr
