#pragma once

#include "frmappmain.h"
#include "frmscriptviewer.h"
#include "messagerecorder.h"
#include "programfolder.h"
#include "startup.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QThread>
#include <QtTest>

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
    const int result = ivr::Startup::Main(arguments);
    // The registration stand-in runs on after the start: its line must be in
    // before the test's folder is removed, or it lands in a folder on its way out.
    QFile standIn(folder.file(QStringLiteral("regSvr.sh")));
    if (standIn.open(QIODevice::ReadOnly) && standIn.readAll().contains("regSvr.log")) {
        QDeadlineTimer deadline(5000);
        while (folder.regSvrLog().isEmpty() && !deadline.hasExpired())
            QThread::msleep(5);
    }
    return result == 0 ? frmAppMain::existing() : nullptr;
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
    return QSettings("Brindlewave", "IVR Script Designer").value("Settings/" + key).toString();
}

inline void putStored(const QString &key, const QString &value)
{
    QSettings("Brindlewave", "IVR Script Designer").setValue("Settings/" + key, value);
}

// An entry as the user finds it: the menu by its caption in the bar, then the
// entry by its caption, so that a test also fails when an entry moves.
inline QAction *menuEntry(const QString &menu, const QString &entry)
{
    for (QAction *top : frmAppMain::existing()->menuBar()->actions()) {
        if (!top->menu() || top->text() != menu)
            continue;
        for (QAction *action : top->menu()->actions()) {
            if (action->text() == entry)
                return action;
        }
    }
    return nullptr;
}

inline void choose(const QString &menu, const QString &entry)
{
    QAction *action = menuEntry(menu, entry);
    QVERIFY2(action, qPrintable(menu + " > " + entry));
    action->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline QList<QMdiSubWindow *> scriptWindows()
{
    return frmAppMain::existing()->mdiArea()->subWindowList(QMdiArea::CreationOrder);
}

inline frmScriptViewer *viewerOf(QMdiSubWindow *child)
{
    return qobject_cast<frmScriptViewer *>(child->widget());
}

// A test's program folder and message boxes; the frame goes before they do.
struct Session
{
    explicit Session(const ProgramFolder::Options &options = {})
        : folder(options)
    {}
    ~Session() { discardFrame(); }
    ProgramFolder folder;
    MessageRecorder messages;
};

} // namespace shelltesting
