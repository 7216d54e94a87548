#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <atomic>
#include <deque>

class QAudioSink;
class QIODevice;

namespace ivr {

// The one long-lived audio sink and the sound queued for it, on a thread of
// its own: every call into the sound server may wait for the server (a
// server that hangs answers nothing for half a minute), and none of that
// may reach the window. The sink keeps one format and stays open, since a
// sink per clip starts late and leaves gaps on PulseAudio; after a few
// quiet seconds it is corked so that the device can sleep.
class WaveChannel : public QObject
{
    Q_OBJECT

public:
    // `unfinished` counts the clips still being made; the channel counts
    // one down when a clip's last piece arrives.
    explicit WaveChannel(std::atomic<int> &unfinished);

    // True while queued sound remains to be handed to the device.
    bool hasPending() const { return m_hasPending.load(); }

    void play(quint64 cut, const QByteArray &pcm, bool last);
    // Drops everything queued and every piece of an earlier cut still to come.
    void cutTo(quint64 cut);
    // Closes the sink while the audio engine is surely still there.
    void close();

private:
    enum class Sink { Ready, NoDevice, NotYet };

    void start();
    Sink ensureSink();
    void dropSink();
    void drop();
    void feed();
    bool writeQueued(qsizetype &room);
    void retry();
    void updatePending() { m_hasPending = !m_queue.empty(); }

    std::atomic<int> &m_unfinished;
    std::atomic<bool> m_hasPending = false;
    quint64 m_cut = 0;
    QPointer<QAudioSink> m_sink;
    QPointer<QIODevice> m_device;
    QTimer *m_feedTimer;
    QTimer *m_idleTimer;
    QTimer *m_retryTimer;
    int m_retries = 0;
    std::deque<QByteArray> m_queue;
    qsizetype m_frontOffset = 0;
    bool m_tailPadded = true;
};

} // namespace ivr
