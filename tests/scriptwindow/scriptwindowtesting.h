#pragma once

#include "frmscriptviewer.h"
#include "testfixture.h"
#include "vorelmodule.h"

#include <QFile>
#include <QTest>

#include <memory>

// What the script window's tests share: a program folder, recorded messages
// and script files written by hand.
namespace swt {

inline QByteArray module(const QByteArray &name, int type, const QByteArray &definition = "{}")
{
    return R"({"name": ")" + name + R"(", "type": )" + QByteArray::number(type)
           + R"(, "definition": )" + definition + "}";
}

inline QByteArray script(const QList<QByteArray> &modules)
{
    return R"({"format": "brindlewave-ivr-script", "version": 1, "modules": [)"
           + modules.join(",\n") + "]}";
}

inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate)
           && file.write(bytes) == bytes.size();
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// Module name to index.
inline QHash<QString, qint16> indices(frmScriptViewer &w)
{
    QHash<QString, qint16> result;
    for (auto it = w.cmVorelModule().begin(); it != w.cmVorelModule().end(); ++it)
        result.insert((*it)->moduleData()->Name(), it.index());
    return result;
}

using Fixture = TestFixture;

} // namespace swt
