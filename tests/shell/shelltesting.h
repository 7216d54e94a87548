#pragma once

#include "frmappmain.h"
#include "programfolder.h"
#include "startup.h"

#include <QCoreApplication>
#include <QSettings>

// QSettings keeps the first configuration folder it sees for the whole
// process, so each start points it at the program folder's own.
namespace shelltesting {

inline void useStoreOf(const ProgramFolder &folder)
{
    QSettings::setPath(QSettings::NativeFormat,
                       QSettings::UserScope,
                       folder.home() + QStringLiteral("/.config"));
}

inline frmAppMain *start(const ProgramFolder &folder, const QStringList &arguments = {})
{
    useStoreOf(folder);
    if (ivr::Startup::Main(arguments) != 0)
        return nullptr;
    return frmAppMain::existing();
}

inline bool closeFrame()
{
    frmAppMain *frame = frmAppMain::existing();
    if (!frame)
        return true;
    frame->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return frmAppMain::existing() == nullptr;
}

inline void discardFrame()
{
    delete frmAppMain::existing();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline QString stored(const QString &key)
{
    QSettings settings(QStringLiteral("Brindlewave"), QStringLiteral("IVR Script Designer"));
    return settings.value(QStringLiteral("Settings/") + key).toString();
}

inline void putStored(const QString &key, const QString &value)
{
    QSettings settings(QStringLiteral("Brindlewave"), QStringLiteral("IVR Script Designer"));
    settings.setValue(QStringLiteral("Settings/") + key, value);
}

} // namespace shelltesting
