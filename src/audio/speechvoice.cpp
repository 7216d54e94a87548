#include "speechvoice.h"

#include "clipmaker.h"
#include "flitevoices.h"
#include "wavechannel.h"
#include "wavereader.h"

#include <QCoreApplication>

namespace ivr {

namespace {

// A channel that hangs in the sound server is not waited for at the end.
constexpr int ShutDownWaitMs = 2000;

SpeechVoice *s_instance = nullptr;
bool s_noVoices = false;

} // namespace

SpeechVoice &SpeechVoice::instance()
{
    if (!s_instance) {
        // The voice lives as long as the process. Its sink is closed at the
        // end of the event loop or of the application object, while the
        // audio engine is surely still there; closing it from a destructor
        // at exit races the engine's own end.
        s_instance = new SpeechVoice;
        if (QCoreApplication *app = QCoreApplication::instance())
            connect(app, &QCoreApplication::aboutToQuit, s_instance, [] {
                s_instance->shutDown();
            });
        qAddPostRoutine([] { s_instance->shutDown(); });
    }
    return *s_instance;
}

SpeechVoice::SpeechVoice()
    : m_voices(std::make_unique<FliteVoices>())
{
    m_voices->setRegistered(!s_noVoices);
    m_maker = new ClipMaker(*m_voices, m_cut);
    m_channel = new WaveChannel(m_unfinished);
    m_maker->moveToThread(&m_makerThread);
    m_channel->moveToThread(&m_channelThread);
    // Watchers of the voice hear of a piece before the channel can finish
    // with it, so that none is still being told when the voice falls idle.
    connect(m_maker, &ClipMaker::clipReady, this, &SpeechVoice::clipReady, Qt::DirectConnection);
    connect(m_maker, &ClipMaker::clipReady, m_channel, &WaveChannel::play);
    m_makerThread.setObjectName(QStringLiteral("SpeechVoice maker"));
    m_channelThread.setObjectName(QStringLiteral("SpeechVoice channel"));
    m_makerThread.start();
    m_channelThread.start();
}

SpeechVoice::~SpeechVoice()
{
    shutDown();
}

void SpeechVoice::shutDown()
{
    if (m_shutDown)
        return;
    m_shutDown = true;
    ++m_cut;
    QMetaObject::invokeMethod(m_channel, [channel = m_channel] {
        channel->close();
        QThread::currentThread()->quit();
    });
    m_makerThread.quit();
    m_makerThread.wait(ShutDownWaitMs);
    m_channelThread.wait(ShutDownWaitMs);
}

void SpeechVoice::setNoVoicesForTesting(bool none)
{
    // Only the count changes: the maker's thread may be speaking with the voice.
    s_noVoices = none;
}

int SpeechVoice::voiceCount() const
{
    return s_noVoices ? 0 : m_voices->count();
}

bool SpeechVoice::isPending() const
{
    return m_unfinished.load() > 0 || m_channel->hasPending();
}

void SpeechVoice::cut()
{
    const quint64 cut = ++m_cut;
    QMetaObject::invokeMethod(m_channel, [channel = m_channel, cut] { channel->cutTo(cut); });
}

bool SpeechVoice::speak(const QString &text)
{
    if (voiceCount() == 0)
        return false;
    ++m_unfinished;
    QMetaObject::invokeMethod(
            m_maker, [maker = m_maker, cut = m_cut.load(), text] { maker->speak(cut, text); });
    return true;
}

std::optional<AudioFailure> SpeechVoice::queueWave(const QString &path)
{
    AudioFailure failure;
    std::shared_ptr<WaveReader> wave = WaveReader::open(path, &failure);
    if (!wave)
        return failure;
    ++m_unfinished;
    QMetaObject::invokeMethod(
            m_maker, [maker = m_maker, cut = m_cut.load(), wave] { maker->decode(cut, wave); });
    return std::nullopt;
}

} // namespace ivr
