#include "scriptfilereader.h"

#include "appfolder.h"
#include "definitionkeys.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>

#include <cmath>
#include <limits>

namespace ivr {

namespace {

constexpr int MaxScripts = std::numeric_limits<qint16>::max();
// A position is a float written as its shortest text, which may lie a little
// above the largest float (3.4028235e+38) and still round to it; half a step
// of the float above that is where rounding would give infinity.
constexpr double FloatRangeEnd = double(std::numeric_limits<float>::max()) + 0x1p103;

// For a value of the parsed document as much as for a copy of one.
template<typename Value>
bool isWholeNumberIn(const Value &value, double low, double high)
{
    if (!value.isDouble())
        return false;
    const double v = value.toDouble();
    return std::isfinite(v) && v == std::floor(v) && v >= low && v <= high;
}

bool isKnownModuleType(double type)
{
    return (type >= 0 && type <= 13) || type == ModuleData::CommonModuleType;
}

// The keys of an object other than the given ones, as they came, where
// present is how many of the given ones the caller found in it. Removing a
// key copies the object out of the parsed document; most objects hold only
// known keys and are neither searched again nor copied.
QJsonObject
otherKeys(QJsonObject object, qsizetype present, std::initializer_list<QStringView> known)
{
    if (present == object.size())
        return {};
    for (const QStringView key : known)
        object.remove(key);
    return object;
}

} // namespace

// Built only for a message: built for every module of a good file, it took a
// seventh of the reading.
QString ScriptFileReader::where() const
{
    return QStringLiteral("module %1 (\"%2\")")
            .arg(m_moduleNumber)
            .arg(QStringView(m_moduleName).sliced(1, m_moduleName.size() - 2));
}

bool ScriptFileReader::fail(const QString &error)
{
    m_error = error;
    return false;
}

std::optional<ModuleList> ScriptFileReader::read(QByteArray data)
{
    m_error.clear();
    // Looked at through a view: trimming the array itself copies the whole
    // file whenever it ends in a line break, as every saved script does.
    if (QByteArrayView(data).trimmed().isEmpty()) {
        fail(QStringLiteral("the file is empty"));
        return std::nullopt;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(data, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        fail(QStringLiteral("it is not a script file (it is not JSON: %1 at byte %2)")
                     .arg(parseError.errorString())
                     .arg(parseError.offset));
        return std::nullopt;
    }
    if (!document.isObject()) {
        fail(QStringLiteral("it is not a script file (its top level is not a JSON object)"));
        return std::nullopt;
    }
    // The text is let go as soon as it is parsed rather than held while the
    // modules are made: it is as large as the document, and freeing it first
    // took a sixth off opening a 10,000-module script.
    data = QByteArray();
    const QJsonObject root = document.object();
    if (root.value(u"format") != QJsonValue(formatName())) {
        fail(QStringLiteral("it is not a script file (its \"format\" is not \"%1\")")
                     .arg(formatName()));
        return std::nullopt;
    }
    const QJsonValue version = root.value(u"version");
    if (!isWholeNumberIn(version, 1, std::numeric_limits<qint32>::max())) {
        fail(QStringLiteral("its \"version\" is missing or is not a whole number of 1 or more"));
        return std::nullopt;
    }
    if (version.toDouble() > FormatVersion) {
        fail(QStringLiteral("it was written by a newer version of the program (file version "
                            "%1; this version reads files up to version %2)")
                     .arg(version.toInteger())
                     .arg(FormatVersion));
        return std::nullopt;
    }
    const QJsonValue modules = root.value(u"modules");
    if (!modules.isArray()) {
        fail(QStringLiteral("its \"modules\" are missing or are not a list"));
        return std::nullopt;
    }
    ModuleList list;
    const QJsonArray entries = modules.toArray();
    int number = 0;
    for (const QJsonValue &entry : entries) {
        ModuleDataPtr module = readModule(++number, entry);
        if (!module)
            return std::nullopt;
        list.Add(std::move(module));
    }
    list.setUnknownKeys(otherKeys(root, 3, {u"format", u"version", u"modules"}));
    return list;
}

ModuleDataPtr ScriptFileReader::readModule(int number, const QJsonValue &entry)
{
    if (!entry.isObject()) {
        fail(QStringLiteral("module %1 is not a JSON object").arg(number));
        return {};
    }
    const QJsonObject object = entry.toObject();
    // One walk over the entry's keys rather than a search for each of the
    // three: the entry seldom holds other keys, and an unknown one is seen on
    // the way.
    QJsonValue name(QJsonValue::Undefined);
    QJsonValue type(QJsonValue::Undefined);
    QJsonValue definitionValue(QJsonValue::Undefined);
    qsizetype known = 0;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const QString key = it.key();
        QJsonValue *slot = key == u"definition" ? &definitionValue
                           : key == u"name"     ? &name
                           : key == u"type"     ? &type
                                                : nullptr;
        if (slot) {
            *slot = it.value();
            ++known;
        }
    }
    if (!name.isString()) {
        fail(QStringLiteral("module %1 has no name, or its name is not a text").arg(number));
        return {};
    }
    m_moduleNumber = number;
    const QString plainName = name.toString();
    m_moduleName.clear();
    m_moduleName.reserve(plainName.size() + 2);
    m_moduleName.append(QLatin1Char('[')).append(plainName).append(QLatin1Char(']'));
    if (!isWholeNumberIn(type, 0, ModuleData::CommonModuleType)
        || !isKnownModuleType(type.toDouble())) {
        fail(QStringLiteral("%1 has no module type this program knows (\"type\" must be a whole "
                            "number from 0 to 13, or %2)")
                     .arg(where(), QString::number(ModuleData::CommonModuleType)));
        return {};
    }
    if (!definitionValue.isUndefined() && !definitionValue.isObject()) {
        fail(QStringLiteral("the \"definition\" of %1 is not a JSON object").arg(where()));
        return {};
    }
    QJsonObject stored = definitionValue.toObject();

    auto module = std::make_shared<ModuleData>();
    module->setModuleType(int(type.toInteger()));
    module->setName(m_moduleName);
    module->setUnknownKeys(otherKeys(object, known, {u"name", u"type", u"definition"}));
    Definition &d = module->definition();
    const bool common = module->ModuleType() == ModuleData::CommonModuleType;
    if (common && !readCommonMembers(stored, d))
        return {};
    for (auto it = stored.constBegin(); it != stored.constEnd(); ++it) {
        if (!checkKnownKey(it.key(), it.value()))
            return {};
    }
    d.setStoredValues(stored);
    return module;
}

bool ScriptFileReader::checkKnownKey(const QString &key, QJsonValueConstRef value)
{
    const auto kind = DefinitionKeys::kindOf(key);
    if (!kind)
        return true;
    switch (*kind) {
    case DefinitionKeys::Kind::Text:
        if (!value.isString())
            return fail(QStringLiteral("\"%1\" of %2 must be a text").arg(key, where()));
        return true;
    case DefinitionKeys::Kind::Flag:
        if (!value.isBool())
            return fail(QStringLiteral("\"%1\" of %2 must be true or false").arg(key, where()));
        return true;
    case DefinitionKeys::Kind::Number:
        if (!value.isDouble() || !std::isfinite(value.toDouble()))
            return fail(QStringLiteral("\"%1\" of %2 must be a number").arg(key, where()));
        return true;
    case DefinitionKeys::Kind::Int32:
        if (!isWholeNumberIn(
                    value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()))
            return fail(QStringLiteral("\"%1\" of %2 must be a whole number that fits in 32 bits")
                                .arg(key, where()));
        return true;
    case DefinitionKeys::Kind::Float:
        if (!value.isDouble() || !(std::fabs(value.toDouble()) < FloatRangeEnd))
            return fail(QStringLiteral("\"%1\" of %2 must be a position in twips that fits in a "
                                       "32-bit float")
                                .arg(key, where()));
        return true;
    }
    return true;
}

bool ScriptFileReader::readSlots(const QString &key,
                                 const QJsonValue &value,
                                 int slotCount,
                                 const std::function<void(int, const QString &)> &store)
{
    if (value.isUndefined())
        return true;
    const QJsonArray array = value.toArray();
    if (!value.isArray() || array.size() != slotCount)
        return fail(QStringLiteral("\"%1\" of %2 must be a list of %3 texts")
                            .arg(key, where(), QString::number(slotCount)));
    for (int i = 0; i < slotCount; ++i) {
        const QJsonValue slot = array.at(i);
        if (!slot.isString())
            return fail(QStringLiteral("\"%1\" of %2 must be a list of %3 texts")
                                .arg(key, where(), QString::number(slotCount)));
        store(i, slot.toString());
    }
    return true;
}

// The CommonModule's direct members come out of the stored keys: what stays
// there are the Properties entries (and keys of newer versions).
bool ScriptFileReader::readCommonMembers(QJsonObject &stored, Definition &d)
{
    if (!readSlots(QStringLiteral("FileName"),
                   stored.value(u"FileName"),
                   Definition::FileNameSlots,
                   [&d](int i, const QString &path) { d.setFileName(i, path); }))
        return false;
    if (!readSlots(QStringLiteral("MonthFile"),
                   stored.value(u"MonthFile"),
                   Definition::MonthFileSlots,
                   [&d](int i, const QString &path) { d.setMonthFile(i, path); }))
        return false;
    const QJsonValue beep = stored.value(u"BeepFileName");
    if (!beep.isUndefined() && !beep.isString())
        return fail(QStringLiteral("\"BeepFileName\" of %1 must be a text").arg(where()));
    // A script without a beep of its own beeps as a new script does.
    d.setBeepFileName(beep.isString() ? beep.toString()
                                      : AppFolder::file(QStringLiteral("Greeting/beep.wav")));

    const QJsonValue count = stored.value(u"ScriptCount");
    if (!count.isUndefined() && !isWholeNumberIn(count, 0, MaxScripts))
        return fail(QStringLiteral("\"ScriptCount\" of %1 must be a whole number from 0 to %2")
                            .arg(where(), QString::number(MaxScripts)));
    const QJsonValue scripts = stored.value(u"ScriptName");
    if (!scripts.isUndefined()) {
        const QJsonArray names = scripts.toArray();
        if (!scripts.isArray() || names.size() > MaxScripts)
            return fail(QStringLiteral("\"ScriptName\" of %1 must be a list of at most %2 texts")
                                .arg(where(), QString::number(MaxScripts)));
        for (const QJsonValue &name : names) {
            if (!name.isString())
                return fail(QStringLiteral("\"ScriptName\" of %1 must be a list of texts")
                                    .arg(where()));
            d.AddScript(name.toString());
        }
    }
    for (const QString &key : DefinitionKeys::commonMemberKeys())
        stored.remove(key);
    return true;
}

} // namespace ivr
