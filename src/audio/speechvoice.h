#pragma once

#include "audiofailure.h"

#include <QByteArray>
#include <QObject>
#include <QThread>

#include <atomic>
#include <memory>
#include <optional>

namespace ivr {

class ClipMaker;
class FliteVoices;
class WaveChannel;

// The one process-wide voice: speech and wave files share one queue and one
// long-lived audio sink in one format.
//
// Speaking replaces whatever sounds; a wave queues behind it. Both return
// at once and the sound goes on whoever asked for it: what the caller
// learns at once (a missing voice, a file that is no wave) is checked here,
// on the caller's thread; the speech and the decoding are made on the
// voice's own thread, and the sink is fed on another, since any call into
// the sound server may wait for it. With no usable output device nothing
// sounds and nothing is said about it.
class SpeechVoice : public QObject
{
    Q_OBJECT

public:
    static SpeechVoice &instance();
    ~SpeechVoice() override;

    // Number of speech voices registered in this process.
    int voiceCount() const;

    // Cuts whatever sounds, drops the queue and stops what is being made.
    void cut();
    // Speaks behind whatever is queued (after cut(): at once). Returns false
    // when no voice is registered.
    bool speak(const QString &text);
    // Queues a wave file behind whatever sounds; the failure is the file's.
    std::optional<AudioFailure> queueWave(const QString &path);

    // True while sound is being made or remains to be handed to the device.
    bool isPending() const;

    // Starts the process with no voice registered: what a machine without
    // any speech engine shows.
    static void setNoVoicesForTesting(bool none);

signals:
    // A piece of sound made for the channel, emitted on the voice's own
    // thread; `last` ends a clip.
    void clipReady(quint64 cut, const QByteArray &pcm, bool last);

private:
    SpeechVoice();
    void shutDown();

    std::unique_ptr<FliteVoices> m_voices;
    std::atomic<quint64> m_cut = 0;
    std::atomic<int> m_unfinished = 0;
    QThread m_makerThread;
    QThread m_channelThread;
    ClipMaker *m_maker = nullptr;
    WaveChannel *m_channel = nullptr;
    bool m_shutDown = false;
};

} // namespace ivr
