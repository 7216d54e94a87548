#include "appfolder.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace ivr {

namespace {
QString &overrideFolder()
{
    static QString folder;
    return folder;
}

bool &readOnlyOverride()
{
    static bool readOnly = false;
    return readOnly;
}
} // namespace

QString AppFolder::path()
{
    if (!overrideFolder().isEmpty())
        return overrideFolder();
    return QCoreApplication::applicationDirPath();
}

QString AppFolder::file(const QString &relative)
{
    QString base = path();
    if (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    return base + QLatin1Char('/') + relative;
}

bool AppFolder::isWritable()
{
    return !readOnlyOverride() && QFileInfo(path()).isWritable();
}

void AppFolder::setOverride(const QString &folder)
{
    overrideFolder() = folder;
}

void AppFolder::setReadOnlyOverride(bool readOnly)
{
    readOnlyOverride() = readOnly;
}

void AppFolder::clearOverride()
{
    overrideFolder().clear();
    readOnlyOverride() = false;
}

} // namespace ivr
