#include "msgbox.h"

#include <QApplication>

namespace ivr {

namespace {
MsgBox::Hook &hook()
{
    static MsgBox::Hook h;
    return h;
}
} // namespace

QString MsgBox::applicationTitle()
{
    return QStringLiteral("IVR Script Designer");
}

QMessageBox::StandardButton MsgBox::show(const QString &text,
                                         QMessageBox::Icon icon,
                                         QMessageBox::StandardButtons buttons,
                                         const QString &title,
                                         QWidget *parent)
{
    Message message{text, title.isEmpty() ? applicationTitle() : title, icon, buttons};
    if (hook())
        return hook()(message);

    QMessageBox box(icon, message.title, text, buttons, parent ? parent : QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QMessageBox::StandardButton MsgBox::critical(const QString &text)
{
    return show(text, QMessageBox::Critical);
}

QMessageBox::StandardButton MsgBox::information(const QString &text)
{
    return show(text, QMessageBox::Information);
}

void MsgBox::setHook(Hook h)
{
    hook() = std::move(h);
}

void MsgBox::clearHook()
{
    hook() = nullptr;
}

} // namespace ivr
