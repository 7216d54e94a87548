#include "messagerecorder.h"

MessageRecorder::MessageRecorder()
{
    ivr::MsgBox::setHook([this](const ivr::MsgBox::Message &m) {
        m_messages << m;
        if (!m_answers.isEmpty())
            return m_answers.takeFirst();
        for (auto b : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}) {
            if (m.buttons & b)
                return b;
        }
        return QMessageBox::Ok;
    });
}

MessageRecorder::~MessageRecorder()
{
    ivr::MsgBox::clearHook();
}
