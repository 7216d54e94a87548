#pragma once

#include "audiofailure.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ivr {

// Reads a wave file of any kind libsndfile knows (PCM of any rate and
// width, µ-law, A-law, ADPCM, any number of channels) into channel PCM.
class WaveReader
{
public:
    // The clip, or the failure libsndfile reported for the file.
    static std::optional<QByteArray> read(const QString &path, AudioFailure *failure);
};

} // namespace ivr
