#pragma once

#include "frmscriptviewer.h"
#include "propertydialog.h"
#include "testfixture.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

// Opening a module's dialog through its window and working its controls by
// their names, as a user does.
namespace dialogtesting {

using Fixture = TestFixture;

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

inline QString cell(const char *text)
{
    return QString(text);
}
template<typename T>
const T &cell(const T &value)
{
    return value;
}

// A test row of any columns, text given as C strings; short enough for a
// row to stay on one line.
template<typename... Cells>
void row(const char *fault, const Cells &...cells)
{
    (QTest::newRow(fault) << ... << cell(cells));
}

inline QStringList items(QComboBox *combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

inline QStringList pairs(const QString &cell) // "a=1|b=2"
{
    return cell.isEmpty() ? QStringList() : cell.split('|');
}

// Types text into a box, sets a spin, sets a check or option by "true" or
// "false" with a click, or picks the combo row showing the text.
inline void enter(QWidget *dialog, const QString &name, const QString &value)
{
    QWidget *c = control(dialog, qPrintable(name));
    if (auto *line = qobject_cast<QLineEdit *>(c))
        line->setText(value);
    else if (auto *text = qobject_cast<QPlainTextEdit *>(c))
        text->setPlainText(value);
    else if (auto *spin = qobject_cast<QDoubleSpinBox *>(c))
        spin->setValue(value.toDouble());
    else if (auto *combo = qobject_cast<QComboBox *>(c))
        combo->setCurrentIndex(combo->findText(value));
    else if (auto *box = qobject_cast<QAbstractButton *>(c); box->isChecked() != (value == "true"))
        box->click();
}

// What a control shows, in the terms enter() takes.
inline QString shownIn(QWidget *dialog, const QString &name)
{
    QWidget *c = control(dialog, qPrintable(name));
    if (auto *text = qobject_cast<QPlainTextEdit *>(c))
        return text->toPlainText();
    if (auto *spin = qobject_cast<QDoubleSpinBox *>(c))
        return QString::number(spin->value());
    if (auto *box = qobject_cast<QAbstractButton *>(c); box && box->isCheckable())
        return box->isChecked() ? "true" : "false";
    return c->property(qobject_cast<QComboBox *>(c) ? "currentText" : "text").toString();
}

// A change to one control, as the user makes it.
inline void edit(QWidget *c)
{
    if (auto *line = qobject_cast<QLineEdit *>(c))
        line->setText(line->text() + QStringLiteral("7"));
    else if (auto *text = qobject_cast<QPlainTextEdit *>(c))
        text->setPlainText(QStringLiteral("x"));
    else if (auto *spin = qobject_cast<QDoubleSpinBox *>(c))
        spin->setValue(spin->value() == 9 ? 8 : 9);
    else if (auto *combo = qobject_cast<QComboBox *>(c))
        combo->setCurrentIndex(combo->currentIndex() == 0 ? 1 : 0);
    else if (auto *tabs = qobject_cast<QTabWidget *>(c))
        tabs->setCurrentIndex(1);
    else if (auto *button = qobject_cast<QAbstractButton *>(c))
        button->click();
}

// Each "control=text" of "a=1|b=2" entered in turn.
inline void fill(QWidget *dialog, const QString &cell)
{
    for (const QString &pair : pairs(cell))
        enter(dialog, pair.section('=', 0, 0), pair.section('=', 1));
}

inline VorelModule *module(frmScriptViewer &w, qint16 i)
{
    return w.cmVorelModule().at(i);
}

inline ivr::Definition &definitionOf(frmScriptViewer &w, qint16 i)
{
    return module(w, i)->moduleData()->definition();
}

// A script with the dialog's module at 2 and two Play modules, "3" and "4",
// to lead to.
inline void addModules(frmScriptViewer &w, qint16 type)
{
    w.AddModule(type, 3000, 3000);
    w.AddModule(3, 6000, 3000);
    w.AddModule(3, 6000, 6000);
}

// The named stops met along the focus chain from the first of names, as many
// as names holds: inner parts of spins and tab controls are passed over.
inline QStringList tabOrder(QWidget *dialog, const QStringList &names)
{
    QStringList met{names.first()};
    QWidget *at = control(dialog, qPrintable(names.first()));
    while (met.size() < names.size()) {
        do
            at = at->nextInFocusChain();
        while (at->focusPolicy() == Qt::NoFocus || at->focusProxy() || at->objectName().isEmpty());
        met << at->objectName();
    }
    return met;
}

// "name=text" of the controls named in pairs, to compare with pairs.
inline QStringList captions(QWidget *dialog, const QStringList &pairs)
{
    QStringList shown;
    for (const QString &pair : pairs) {
        QWidget *c = control(dialog, qPrintable(pair.section('=', 0, 0)));
        shown << pair.section('=', 0, 0) + '=' + (c ? c->property("text").toString() : "?");
    }
    return shown;
}

} // namespace dialogtesting
