#pragma once

#include "audiofailure.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>

class QAudioSink;
class QIODevice;

namespace ivr {

class FliteVoices;

// The one process-wide voice: speech and wave files share one queue and one
// long-lived audio sink in one format. A sink per clip would start late and
// leave gaps between queued waves on PulseAudio, so the sink stays open and
// is fed from here.
//
// Speaking replaces whatever sounds; a wave queues behind it. Both return
// at once and the sound goes on whoever asked for it. With no usable output
// device nothing is queued and nothing is said about it.
class SpeechVoice : public QObject
{
    Q_OBJECT

public:
    static SpeechVoice &instance();
    ~SpeechVoice() override;

    // Number of speech voices registered in this process.
    int voiceCount() const;

    // Cuts whatever sounds and drops the queue.
    void cut();
    // Speaks behind whatever is queued (after cut(): at once). Returns false
    // when no voice is registered.
    bool speak(const QString &text);
    // Queues a wave file behind whatever sounds; the failure is libsndfile's.
    std::optional<AudioFailure> queueWave(const QString &path);

    // True while queued sound remains to be handed to the device.
    bool isPending() const { return m_offset < m_pending.size(); }

    // Starts the process with no voice registered: what a machine without
    // any speech engine shows.
    static void setNoVoicesForTesting(bool none);

private:
    SpeechVoice();
    void enqueue(const QByteArray &pcm);
    bool ensureSink();
    void dropSink();
    void feed();

    std::unique_ptr<FliteVoices> m_voices;
    QPointer<QAudioSink> m_sink;
    QPointer<QIODevice> m_device;
    QTimer m_feedTimer;
    QByteArray m_pending;
    qsizetype m_offset = 0;
    bool m_tailPadded = true;
};

} // namespace ivr
