#include "audition.h"

#include "frameservices.h"
#include "ivrcheck.h"
#include "msgbox.h"
#include "scriptutility.h"
#include "speechvoice.h"

#include <QWidget>

namespace ivr {

void SetFormIcon(QWidget *form)
{
    IVR_CHECK(form, return );
    if (FrameServices *frame = appMain())
        form->setWindowIcon(frame->frameIcon());
}

void PlayWaveFile(const QString &path)
{
    if (!ScriptUtility::FileExists(path)) {
        MsgBox::show(QStringLiteral("File Not Found "), QMessageBox::Critical);
        return;
    }
    // A folder passes the test above only when named with the slash, and a
    // folder is nothing to play.
    if (path.endsWith(QLatin1Char('/')))
        return;
    if (const auto failure = SpeechVoice::instance().queueWave(path))
        MsgBox::show(failure->message(), QMessageBox::Critical);
}

bool SpeakText(const QString &text)
{
    SpeechVoice &voice = SpeechVoice::instance();
    // A new text ends the old one even when there is nothing to say.
    voice.cut();
    if (!voice.speak(text)) {
        MsgBox::show(QStringLiteral("No TTS Voice Found"), QMessageBox::Critical);
        return false;
    }
    return true;
}

} // namespace ivr
