#include "definition.h"

#include "definitionkeys.h"
#include "ivrcheck.h"

#include <QJsonValue>

#include <charconv>
#include <cmath>
#include <limits>

namespace ivr {

namespace {

// A position is a float, but JSON holds doubles: the double nearest to the
// float prints 17 digits (33.3f as 33.29999923706055), so a script would
// change on every save. The double read back from the float's shortest text
// is printed by Qt as that text, and reads back to the same float.
double shortestDouble(float v)
{
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, v);
    double shortest = v;
    std::from_chars(text, written.ptr, shortest);
    return shortest;
}

// The file may hold a double a little above the float range that still
// rounds to the largest float; it is taken as that float.
float toFloat(double v)
{
    constexpr double Largest = std::numeric_limits<float>::max();
    return float(qBound(-Largest, v, Largest));
}

} // namespace

QVariant Definition::value(const QString &key) const
{
    const QJsonValue stored = m_values.value(key);
    const auto kind = DefinitionKeys::kindOf(key);
    if (!kind)
        return stored.isUndefined() ? QVariant(QString()) : stored.toVariant();
    switch (*kind) {
    case DefinitionKeys::Kind::Text:
        return stored.toString();
    case DefinitionKeys::Kind::Flag:
        return stored.toBool();
    case DefinitionKeys::Kind::Number:
        return stored.toDouble();
    case DefinitionKeys::Kind::Int32:
        return qint32(stored.toInteger());
    case DefinitionKeys::Kind::Float:
        return toFloat(stored.toDouble());
    }
    return {};
}

void Definition::setValue(const QString &key, const QVariant &value)
{
    if (!value.isValid()) {
        m_values.remove(key);
        return;
    }
    const auto kind = DefinitionKeys::kindOf(key);
    if (!kind) {
        m_values.insert(key, QJsonValue::fromVariant(value));
        return;
    }
    switch (*kind) {
    case DefinitionKeys::Kind::Text:
        setText(key, value.toString());
        break;
    case DefinitionKeys::Kind::Flag:
        setFlag(key, value.toBool());
        break;
    case DefinitionKeys::Kind::Number:
        setNumber(key, value.toDouble());
        break;
    case DefinitionKeys::Kind::Int32:
        setRunMode(value.toInt());
        break;
    case DefinitionKeys::Kind::Float:
        setFloat(key, value.toFloat());
        break;
    }
}

QString Definition::text(QStringView key) const
{
    return m_values.value(key).toString();
}

void Definition::setText(QStringView key, const QString &v)
{
    m_values.insert(key, v);
}

bool Definition::flag(QStringView key) const
{
    return m_values.value(key).toBool();
}

void Definition::setFlag(QStringView key, bool v)
{
    m_values.insert(key, v);
}

double Definition::number(QStringView key) const
{
    return m_values.value(key).toDouble();
}

void Definition::setNumber(QStringView key, double v)
{
    // A file holds no infinity or NaN; refusing them here keeps every saved
    // script loadable.
    IVR_CHECK(std::isfinite(v), return );
    m_values.insert(key, v);
}

float Definition::floatValue(QStringView key) const
{
    return toFloat(m_values.value(key).toDouble());
}

void Definition::setFloat(QStringView key, float v)
{
    IVR_CHECK(std::isfinite(v), return );
    m_values.insert(key, shortestDouble(v));
}

qint32 Definition::RunMode() const
{
    return qint32(m_values.value(u"RunMode").toInteger());
}

void Definition::setRunMode(qint32 v)
{
    m_values.insert(u"RunMode", qint64(v));
}

Definition::Tables &Definition::tables()
{
    if (!m_tables)
        m_tables = std::make_unique<Tables>();
    return *m_tables;
}

QString Definition::FileName(int i) const
{
    if (i < 0 || i >= FileNameSlots || !m_tables)
        return {};
    return m_tables->fileNames[size_t(i)];
}

void Definition::setFileName(int i, const QString &path)
{
    IVR_CHECK(i >= 0 && i < FileNameSlots, return );
    tables().fileNames[size_t(i)] = path;
}

QString Definition::MonthFile(int i) const
{
    if (i < 0 || i >= MonthFileSlots || !m_tables)
        return {};
    return m_tables->monthFiles[size_t(i)];
}

void Definition::setMonthFile(int i, const QString &path)
{
    IVR_CHECK(i >= 0 && i < MonthFileSlots, return );
    tables().monthFiles[size_t(i)] = path;
}

qint16 Definition::ScriptCount() const
{
    packScripts();
    return qint16(qMin<qsizetype>(m_scripts.size(), std::numeric_limits<qint16>::max()));
}

QString Definition::ScriptName(int i) const
{
    if (i < 1 || i > m_scripts.size())
        return {};
    return m_scripts.at(i - 1).name;
}

void Definition::AddScript(const QString &name)
{
    packScripts();
    IVR_CHECK(m_scripts.size() < std::numeric_limits<qint16>::max(), return );
    m_scripts.append({name, false});
}

void Definition::RemoveScript(const QString &name)
{
    for (ScriptEntry &entry : m_scripts) {
        if (!entry.removed && entry.name == name) {
            entry.removed = true;
            return;
        }
    }
}

QStringList Definition::scriptNames() const
{
    QStringList names;
    names.reserve(m_scripts.size());
    for (const ScriptEntry &entry : m_scripts) {
        if (!entry.removed)
            names << entry.name;
    }
    return names;
}

void Definition::packScripts() const
{
    m_scripts.removeIf([](const ScriptEntry &entry) { return entry.removed; });
}

} // namespace ivr
