#include "scriptutility.h"

#include <QFileInfo>

namespace ivr {

QString ScriptUtility::ScriptExtension()
{
    return QStringLiteral("ivr");
}

bool ScriptUtility::FileExists(const QString &path)
{
    if (path.isEmpty())
        return false;
    const QFileInfo info(path);
    if (info.isFile())
        return true;
    return path.endsWith(QLatin1Char('/')) && info.isDir();
}

} // namespace ivr
