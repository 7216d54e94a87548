#pragma once

#include "msgbox.h"

#include <QList>
#include <QMessageBox>

// Answers message boxes (given answers in turn, then the first of Ok, Yes, No,
// Cancel the box has) and keeps what they said.
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
