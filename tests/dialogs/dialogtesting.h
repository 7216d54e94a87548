#pragma once

#include "frmscriptviewer.h"
#include "propertydialog.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

// Opening a module's dialog through its window and working its controls by
// their names, as a user does.
namespace dialogtesting {

inline ivr::PropertyDialog *open(frmScriptViewer &w, qint16 index)
{
    VorelModule *module = w.cmVorelModule().at(index);
    emit module->PropertyRequest(index);
    QCoreApplication::processEvents(); // the request is queued
    for (QWidget *top : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<ivr::PropertyDialog *>(top);
        if (dialog && dialog->isVisible() && dialog->Index() == index)
            return dialog;
    }
    return nullptr;
}

template<typename T = QWidget>
T *control(QWidget *dialog, const char *name)
{
    return dialog->findChild<T *>(QString::fromLatin1(name));
}

inline void click(QWidget *dialog, const char *button)
{
    control<QPushButton>(dialog, button)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The combo row showing that text, -1 if none.
inline void choose(QWidget *dialog, const char *combo, const QString &text)
{
    auto *box = control<QComboBox>(dialog, combo);
    box->setCurrentIndex(box->findText(text));
}

inline VorelModule *module(frmScriptViewer &w, qint16 i)
{
    return w.cmVorelModule().at(i);
}

inline QString exitOf(frmScriptViewer &w, qint16 i, const char *key)
{
    return module(w, i)->moduleData()->definition().Properties(key).Value().toString();
}

} // namespace dialogtesting
