#include "speechvoice.h"

#include "flitevoices.h"
#include "phonepcm.h"
#include "wavereader.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QCoreApplication>
#include <QMediaDevices>

namespace ivr {

namespace {

// The sink's buffer is all that still sounds after a cut, so it stays short;
// the feed runs several times within it so that it never runs dry mid-clip.
constexpr int SinkBufferMs = 80;
constexpr int FeedIntervalMs = 10;

SpeechVoice *s_instance = nullptr;
bool s_noVoices = false;

} // namespace

SpeechVoice &SpeechVoice::instance()
{
    if (!s_instance) {
        // The voice lives as long as the process. Its sink is closed when
        // the event loop ends, while the audio engine is surely still there;
        // closing it from a destructor at exit races the engine's own end.
        s_instance = new SpeechVoice;
        if (QCoreApplication *app = QCoreApplication::instance())
            connect(app, &QCoreApplication::aboutToQuit, s_instance, [] {
                s_instance->cut();
                s_instance->dropSink();
            });
    }
    return *s_instance;
}

SpeechVoice::SpeechVoice()
    : m_voices(std::make_unique<FliteVoices>())
{
    m_voices->setRegistered(!s_noVoices);
    m_feedTimer.setTimerType(Qt::PreciseTimer);
    m_feedTimer.setInterval(FeedIntervalMs);
    connect(&m_feedTimer, &QTimer::timeout, this, &SpeechVoice::feed);
}

SpeechVoice::~SpeechVoice()
{
    m_feedTimer.stop();
    delete m_sink.data();
}

void SpeechVoice::setNoVoicesForTesting(bool none)
{
    s_noVoices = none;
    if (s_instance)
        s_instance->m_voices->setRegistered(!none);
}

int SpeechVoice::voiceCount() const
{
    return m_voices->count();
}

void SpeechVoice::cut()
{
    m_pending.clear();
    m_offset = 0;
    m_tailPadded = true;
    m_feedTimer.stop();
}

bool SpeechVoice::speak(const QString &text)
{
    if (voiceCount() == 0)
        return false;
    if (QMediaDevices::defaultAudioOutput().isNull())
        return true;
    enqueue(m_voices->synthesize(text));
    return true;
}

std::optional<AudioFailure> SpeechVoice::queueWave(const QString &path)
{
    AudioFailure failure;
    const std::optional<QByteArray> pcm = WaveReader::read(path, &failure);
    if (!pcm)
        return failure;
    enqueue(*pcm);
    return std::nullopt;
}

void SpeechVoice::enqueue(const QByteArray &pcm)
{
    if (pcm.isEmpty() || !ensureSink())
        return;
    if (m_offset > 0) {
        m_pending.remove(0, m_offset);
        m_offset = 0;
    }
    m_pending += pcm;
    m_tailPadded = false;
    feed();
    if (m_device)
        m_feedTimer.start();
}

bool SpeechVoice::ensureSink()
{
    if (m_sink && m_device)
        return true;
    dropSink();

    // With no sound server the default output is a null device, and a sink
    // on it would never leave its first state.
    const QAudioDevice output = QMediaDevices::defaultAudioOutput();
    if (output.isNull())
        return false;

    m_sink = new QAudioSink(output, PhonePcm::format(), this);
    m_sink->setBufferSize(PhonePcm::bytesForMs(SinkBufferMs));
    m_sink->setVolume(1.0);
    connect(m_sink, &QAudioSink::stateChanged, this, [this](QAudio::State state) {
        // A lost server stops the sink for good; the next clip opens a new one.
        if (state == QAudio::StoppedState && m_sink && m_sink->error() != QAudio::NoError) {
            cut();
            dropSink();
        }
    });
    m_device = m_sink->start();
    if (!m_device || m_sink->error() == QAudio::FatalError
        || m_sink->error() == QAudio::OpenError) {
        dropSink();
        return false;
    }
    return true;
}

void SpeechVoice::dropSink()
{
    m_feedTimer.stop();
    m_device = nullptr;
    if (m_sink) {
        QAudioSink *sink = m_sink;
        m_sink = nullptr;
        sink->disconnect(this);
        sink->stop();
        sink->deleteLater();
    }
}

void SpeechVoice::feed()
{
    if (!m_sink || !m_device) {
        cut();
        return;
    }
    qsizetype room = m_sink->bytesFree();
    room -= room % PhonePcm::BytesPerFrame;
    if (room <= 0)
        return;

    const qsizetype left = m_pending.size() - m_offset;
    if (left > 0) {
        const qint64 written = m_device->write(m_pending.constData() + m_offset, qMin(room, left));
        if (written > 0)
            m_offset += written;
        return;
    }

    // The sound server starts a stream only once its buffer is full, so the
    // end of a clip is pushed out with a buffer's worth of silence.
    if (!m_tailPadded) {
        m_tailPadded = true;
        const QByteArray silence(PhonePcm::bytesForMs(SinkBufferMs), '\0');
        m_device->write(silence.constData(), qMin(room, silence.size()));
    }
    m_pending.clear();
    m_offset = 0;
    m_feedTimer.stop();
}

} // namespace ivr
