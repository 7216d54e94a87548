#pragma once

#include <QHash>
#include <QString>

namespace ivr {

// Module index by bracketed name, for rebuilding links when a script is
// opened. Keys compare exactly: "[a]" and "[A]" are two keys.
class IndexByKey
{
public:
    // Throws IvrError when the key is already there.
    void Add(const QString &key, qint16 index);
    // Throws IvrError when the key is missing.
    qint16 Item(const QString &key) const;

private:
    QHash<QString, qint16> m_items;
};

} // namespace ivr
