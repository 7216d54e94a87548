#include "wavechannel.h"

#include "phonepcm.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QMediaDevices>

namespace ivr {

namespace {

// The sink's buffer is all that still sounds after a cut, so it stays short;
// the feed runs several times within it so that it never runs dry mid-clip.
constexpr int SinkBufferMs = 80;
constexpr int FeedIntervalMs = 10;
constexpr int IdleCorkMs = 3000;
// A sound server that went away is found again by the audio engine a few
// seconds later; queued sound waits that long for it.
constexpr int RetryIntervalMs = 250;
constexpr int RetryCount = 40;

} // namespace

WaveChannel::WaveChannel(std::atomic<int> &unfinished)
    : m_unfinished(unfinished)
    , m_feedTimer(new QTimer(this))
    , m_idleTimer(new QTimer(this))
    , m_retryTimer(new QTimer(this))
{
    m_feedTimer->setTimerType(Qt::PreciseTimer);
    m_feedTimer->setInterval(FeedIntervalMs);
    connect(m_feedTimer, &QTimer::timeout, this, &WaveChannel::feed);
    m_idleTimer->setSingleShot(true);
    m_idleTimer->setInterval(IdleCorkMs);
    connect(m_idleTimer, &QTimer::timeout, this, [this] {
        if (m_sink && m_queue.empty() && m_sink->state() != QAudio::SuspendedState)
            m_sink->suspend();
    });
    m_retryTimer->setSingleShot(true);
    m_retryTimer->setInterval(RetryIntervalMs);
    connect(m_retryTimer, &QTimer::timeout, this, &WaveChannel::retry);
}

void WaveChannel::play(quint64 cut, const QByteArray &pcm, bool last)
{
    if (cut > m_cut)
        cutTo(cut);
    if (cut == m_cut && !pcm.isEmpty()) {
        m_queue.push_back(pcm);
        m_tailPadded = false;
        updatePending();
        if (!m_retryTimer->isActive())
            start();
    }
    // Only after the piece is queued, so that the voice never looks idle
    // between the two.
    if (last)
        --m_unfinished;
}

void WaveChannel::cutTo(quint64 cut)
{
    m_cut = cut;
    drop();
}

void WaveChannel::close()
{
    drop();
    dropSink();
}

void WaveChannel::start()
{
    switch (ensureSink()) {
    case Sink::NoDevice:
        drop();
        return;
    case Sink::NotYet:
        m_retryTimer->start();
        return;
    case Sink::Ready:
        break;
    }
    m_retries = 0;
    m_idleTimer->stop();
    if (m_sink->state() == QAudio::SuspendedState)
        m_sink->resume();
    m_feedTimer->start();
    feed();
}

void WaveChannel::retry()
{
    if (m_queue.empty())
        return;
    if (++m_retries > RetryCount)
        drop();
    else
        start();
}

WaveChannel::Sink WaveChannel::ensureSink()
{
    if (m_sink && m_device)
        return Sink::Ready;
    dropSink();

    // With no sound server the default output is a null device, and a sink
    // on it would never leave its first state.
    const QAudioDevice output = QMediaDevices::defaultAudioOutput();
    if (output.isNull())
        return Sink::NoDevice;

    m_sink = new QAudioSink(output, PhonePcm::format(), this);
    m_sink->setBufferSize(PhonePcm::bytesForMs(SinkBufferMs));
    m_sink->setVolume(1.0);
    m_device = m_sink->start();
    if (!m_device || m_sink->error() == QAudio::FatalError
        || m_sink->error() == QAudio::OpenError) {
        // The device is known but its server is not back yet.
        dropSink();
        return Sink::NotYet;
    }
    connect(m_sink, &QAudioSink::stateChanged, this, [this](QAudio::State state) {
        // A lost server stops the sink for good; what is still queued waits
        // for a new one.
        if (state == QAudio::StoppedState && m_sink && m_sink->error() != QAudio::NoError) {
            dropSink();
            if (!m_queue.empty())
                m_retryTimer->start();
        }
    });
    return Sink::Ready;
}

void WaveChannel::dropSink()
{
    m_feedTimer->stop();
    m_idleTimer->stop();
    m_device = nullptr;
    if (m_sink) {
        QAudioSink *sink = m_sink;
        m_sink = nullptr;
        sink->disconnect(this);
        sink->stop();
        sink->deleteLater();
    }
}

void WaveChannel::drop()
{
    m_queue.clear();
    m_frontOffset = 0;
    m_tailPadded = true;
    m_retries = 0;
    m_feedTimer->stop();
    m_retryTimer->stop();
    updatePending();
    if (m_sink)
        m_idleTimer->start();
}

void WaveChannel::feed()
{
    if (!m_sink || !m_device) {
        drop();
        return;
    }
    qsizetype room = m_sink->bytesFree();
    room -= room % PhonePcm::BytesPerFrame;
    const bool more = writeQueued(room);
    updatePending();
    if (more || room <= 0)
        return;

    // The sound server starts a stream only once its buffer is full, so the
    // end of a clip is pushed out with a buffer's worth of silence.
    if (!m_tailPadded) {
        m_tailPadded = true;
        const QByteArray silence(PhonePcm::bytesForMs(SinkBufferMs), '\0');
        m_device->write(silence.constData(), qMin(room, silence.size()));
    }
    m_feedTimer->stop();
    m_idleTimer->start();
}

bool WaveChannel::writeQueued(qsizetype &room)
{
    while (room > 0 && !m_queue.empty()) {
        const QByteArray &front = m_queue.front();
        const qint64 written = m_device->write(front.constData() + m_frontOffset,
                                               qMin(room, front.size() - m_frontOffset));
        if (written <= 0)
            return true;
        room -= written;
        m_frontOffset += written;
        if (m_frontOffset >= front.size()) {
            m_queue.pop_front();
            m_frontOffset = 0;
        }
    }
    return !m_queue.empty();
}

} // namespace ivr
