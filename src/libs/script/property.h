#pragma once

#include <QString>
#include <QVariant>

namespace ivr {

class Definition;

// One key of a Definition reached by its name: Properties("OnSuccess").
// A small handle; it holds no value of its own, so a Value() read after a
// setter of the Definition sees the new value and the other way round.
class Property
{
public:
    Property(Definition *definition, const QString &key);

    // The key's value with the key's own type (QString, bool, double, qint32,
    // float); a key never set gives the empty value of that type ("" for an
    // unknown key).
    QVariant Value() const;
    // Converts to the key's type. An invalid QVariant unsets the key.
    void setValue(const QVariant &value);

private:
    Definition *m_definition;
    QString m_key;
};

} // namespace ivr
