#pragma once

#include <QByteArray>
#include <QObject>

#include <atomic>
#include <memory>

namespace ivr {

class FliteVoices;
class WaveReader;

// Makes the channel's sound on the voice's own thread: speech from flite,
// wave files decoded and resampled piece by piece. Jobs are done in the
// order they come, so a wave stays behind what was queued before it. Each
// job belongs to a cut of the channel; once the voice has cut again, the
// job is dropped, even half-way through a long file.
class ClipMaker : public QObject
{
    Q_OBJECT

public:
    ClipMaker(const FliteVoices &voices, const std::atomic<quint64> &latestCut);

    void speak(quint64 cut, const QString &text);
    void decode(quint64 cut, const std::shared_ptr<WaveReader> &wave);

signals:
    // A piece of a clip for the channel; every job ends with `last`, even
    // one that was dropped or made nothing.
    void clipReady(quint64 cut, const QByteArray &pcm, bool last);

private:
    bool isCut(quint64 cut) const { return cut != m_latestCut.load(); }

    const FliteVoices &m_voices;
    const std::atomic<quint64> &m_latestCut;
};

} // namespace ivr
