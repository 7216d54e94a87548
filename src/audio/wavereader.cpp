#include "wavereader.h"

#include "phonepcm.h"

#include <QFile>
#include <QScopeGuard>

#include <sndfile.h>

#include <vector>

namespace ivr {

std::optional<QByteArray> WaveReader::read(const QString &path, AudioFailure *failure)
{
    SF_INFO info{};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file) {
        // With no handle, libsndfile keeps the reason of the failed open.
        if (failure)
            *failure = {sf_error(nullptr), QString::fromLocal8Bit(sf_strerror(nullptr))};
        return std::nullopt;
    }
    const auto closeFile = qScopeGuard([file] { sf_close(file); });

    const int channels = info.channels > 0 ? info.channels : 1;
    std::vector<float> frames(size_t(info.frames) * size_t(channels));
    const sf_count_t got = frames.empty() ? 0 : sf_readf_float(file, frames.data(), info.frames);

    // Mixing down by the mean keeps a stereo prompt at the level it was made.
    std::vector<float> mono(size_t(got > 0 ? got : 0));
    for (size_t i = 0; i < mono.size(); ++i) {
        float sum = 0;
        for (int c = 0; c < channels; ++c)
            sum += frames[i * size_t(channels) + size_t(c)];
        mono[i] = sum / float(channels);
    }
    return PhonePcm::fromMono(mono, info.samplerate);
}

} // namespace ivr
