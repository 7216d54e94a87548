#pragma once

#include "msgbox.h"

#include <QList>
#include <QMessageBox>

// Answers the program's message boxes in a test and keeps what they said.
// Answers are taken in turn; when none is left, the box is answered with its
// first button (Ok, Yes, ...).
class MessageRecorder
{
public:
    MessageRecorder();
    ~MessageRecorder();

    void answer(QMessageBox::StandardButton button) { m_answers << button; }
    const QList<ivr::MsgBox::Message> &messages() const { return m_messages; }
    int count() const { return int(m_messages.size()); }
    QString lastText() const { return m_messages.isEmpty() ? QString() : m_messages.last().text; }
    void clear() { m_messages.clear(); }

private:
    QList<ivr::MsgBox::Message> m_messages;
    QList<QMessageBox::StandardButton> m_answers;
};
