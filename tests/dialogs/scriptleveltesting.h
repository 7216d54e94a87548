#pragma once

#include "dialogtesting.h"
#include "frmappmain.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

#include <functional>

// The dialogs of the whole script, reached from the running program's
// Script menu: Associate Script (modeless) and the wave table (modal).
namespace scriptlevel {

inline frmScriptViewer *activeViewer()
{
    return qobject_cast<frmScriptViewer *>(
            frmAppMain::existing()->mdiArea()->activeSubWindow()->widget());
}

// The visible top-level dialog of that object name (the .ui class), if any.
inline ivr::PropertyDialog *shown(const char *dialogClass)
{
    for (QWidget *top : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<ivr::PropertyDialog *>(top);
        if (dialog && dialog->isVisible() && dialog->objectName() == QLatin1String(dialogClass))
            return dialog;
    }
    return nullptr;
}

inline ivr::PropertyDialog *openAssociateScript()
{
    frmAppMain::existing()->mnuProperty()->trigger();
    return shown("FrmCommon");
}

// The wave table holds the menu entry until it ends, so the work runs from
// inside its loop; whatever the work leaves open ends with Cancel. False when
// the work never ran (no modal wave table came up).
inline bool withWaveFiles(const std::function<void(ivr::PropertyDialog *)> &work)
{
    bool ran = false;
    QTimer timer; // goes with this call, so it never fires after it
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&work, &ran] {
        ivr::PropertyDialog *dialog = shown("frmWaveFile");
        if (!dialog)
            return;
        ran = true;
        work(dialog);
        if (dialog->isVisible())
            dialogtesting::control<QPushButton>(dialog, "cmdCancel")->click();
    });
    timer.start(0);
    frmAppMain::existing()->mnuWaveFiles()->trigger();
    return ran;
}

} // namespace scriptlevel
