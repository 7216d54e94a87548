#include "indexbykey.h"

#include "ivrerror.h"

namespace ivr {

void IndexByKey::Add(const QString &key, qint16 index)
{
    if (m_items.contains(key))
        throw IvrError(QStringLiteral("Two modules of the script are named \"%1\".").arg(key));
    m_items.insert(key, index);
}

qint16 IndexByKey::Item(const QString &key) const
{
    const auto it = m_items.constFind(key);
    if (it == m_items.constEnd())
        throw IvrError(QStringLiteral("The script has no module named \"%1\".").arg(key));
    return *it;
}

} // namespace ivr
