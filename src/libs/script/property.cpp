#include "property.h"

#include "definition.h"

namespace ivr {

Property::Property(Definition *definition, const QString &key)
    : m_definition(definition)
    , m_key(key)
{}

QVariant Property::Value() const
{
    return m_definition->value(m_key);
}

void Property::setValue(const QVariant &value)
{
    m_definition->setValue(m_key, value);
}

} // namespace ivr
