#include "startup.h"

#include "appfolder.h"
#include "calllog.h"
#include "frmappmain.h"
#include "frmivr.h"
#include "frmsplash.h"
#include "helpwindow.h"
#include "hiddenprocess.h"
#include "ivrerror.h"
#include "scriptutility.h"
#include "startupwarmup.h"
#include "toolbox.h"
#include "unhandledfailure.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include <memory>

namespace ivr {

QString Startup::commandTail(const QStringList &arguments)
{
    return arguments.join(QLatin1Char(' '));
}

void Startup::ShowEnquiryFormIfWanted()
{
    const bool showRegForm = CallLog::readShowRegForm();
    if (showRegForm)
        return;
    StartupWarmUp::waitForFonts();
    // The form opens the call log again itself to store its check box.
    frmIVR form;
    form.exec();
}

int Startup::Main(const QStringList &arguments)
{
    HiddenProcess::start(AppFolder::file(QStringLiteral("regSvr.sh")), {}, AppFolder::path());
    // However the start ends, the script has been started by then.
    const auto registrationStarted = qScopeGuard([] { HiddenProcess::waitForStarts(); });
    HelpWindow::setHelpFile(AppFolder::file(QStringLiteral("BdwIVRS.qch")));

    auto splash = std::make_unique<frmSplash>();
    splash->show();
    splash->repaint();
    // Let the window system map it, so that it stands on the screen during
    // everything that follows; input waits.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);

    try {
        ShowEnquiryFormIfWanted();
        QString tail = commandTail(arguments);
        if (!tail.isEmpty() && !ScriptUtility::FileExists(tail))
            tail.clear();
        // The splash is a finished picture: the enquiry form and the main
        // window are the first to lay out text. Until the fonts are there,
        // the toolbox's pictures, which hold none, are drawn.
        Toolbox::preparePictures();
        StartupWarmUp::waitForFonts();
        frmAppMain::instance()->OpenWith(tail);
    } catch (const IvrError &error) {
        splash.reset();
        // A main window that failed in its load was never shown: it goes
        // without its unload, which would write the settings.
        if (frmAppMain *frame = frmAppMain::existing(); frame && !frame->isVisible())
            delete frame;
        UnhandledFailure::show(error.description());
        return 1;
    }

    splash->repaint();
    splash.reset();
    return 0;
}

} // namespace ivr
