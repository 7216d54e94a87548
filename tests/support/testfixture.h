#pragma once

#include "commondialog.h"
#include "messagerecorder.h"
#include "programfolder.h"

#include <memory>

// Each test function's own program folder and message boxes, mixed into a
// test class whose init and cleanup call it; no file answer of the shared
// file dialog is left over for the next function. For tests that link the
// platform library.
struct TestFixture
{
    bool setUp()
    {
        m_folder = std::make_unique<ProgramFolder>();
        m_messages = std::make_unique<MessageRecorder>();
        return m_folder->isValid();
    }
    void tearDown()
    {
        ivr::CommonDialog::clearTestAnswer();
        m_messages.reset();
        m_folder.reset();
    }

    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};
