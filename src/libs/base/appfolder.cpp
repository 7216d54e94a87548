#include "appfolder.h"

#include <QCoreApplication>

namespace ivr {

namespace {
QString &overrideFolder()
{
    static QString folder;
    return folder;
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

void AppFolder::setOverride(const QString &folder)
{
    overrideFolder() = folder;
}

void AppFolder::clearOverride()
{
    overrideFolder().clear();
}

} // namespace ivr
