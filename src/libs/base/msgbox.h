#pragma once

#include <QMessageBox>
#include <QString>

#include <functional>

namespace ivr {

// Everything the program says to its user in a message box goes through
// here, under the application title unless the caller names another.
class MsgBox
{
public:
    struct Message
    {
        QString text;
        QString title;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    };
    // Tests answer message boxes through this hook instead of a window.
    using Hook = std::function<QMessageBox::StandardButton(const Message &)>;

    static QString applicationTitle();

    static QMessageBox::StandardButton show(const QString &text,
                                            QMessageBox::Icon icon = QMessageBox::NoIcon,
                                            QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                            const QString &title = QString(),
                                            QWidget *parent = nullptr);
    static QMessageBox::StandardButton critical(const QString &text);
    static QMessageBox::StandardButton information(const QString &text);

    static void setHook(Hook hook);
    static void clearHook();
};

} // namespace ivr
