#pragma once

#include "audiofailure.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

struct sf_private_tag;
struct SRC_STATE_tag;

namespace ivr {

// A wave file of any kind libsndfile knows inside a RIFF or RF64 container
// (PCM of any rate and width, µ-law, A-law, ADPCM, any number of channels),
// read piece by piece into channel PCM. Opening reads only the header, so
// the caller learns at once whether the file will play; the decoding can
// then go on elsewhere.
class WaveReader
{
public:
    ~WaveReader();
    WaveReader(const WaveReader &) = delete;
    WaveReader &operator=(const WaveReader &) = delete;

    // The open file, or the failure as the user is told it.
    static std::unique_ptr<WaveReader> open(const QString &path, AudioFailure *failure);
    // The whole clip at once.
    static std::optional<QByteArray> read(const QString &path, AudioFailure *failure);

    // The next piece of channel PCM, about half a second; empty at the end.
    QByteArray readPiece();
    bool atEnd() const { return m_atEnd; }

private:
    WaveReader(sf_private_tag *file, int channels, int sampleRate);
    QByteArray resample(const std::vector<float> &mono, bool last);

    sf_private_tag *m_file = nullptr;
    SRC_STATE_tag *m_resampler = nullptr;
    int m_channels = 1;
    int m_sampleRate = 0;
    bool m_atEnd = false;
};

} // namespace ivr
