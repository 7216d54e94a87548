#include "wavereader.h"

#include "phonepcm.h"

#include <QFile>

#include <samplerate.h>
#include <sndfile.h>

#include <vector>

namespace ivr {

namespace {

// The speech interface's file stream reads RIFF wave files only; libsndfile
// would gladly play AIFF or FLAC too, even under a ".wav" name.
bool isWaveContainer(int format)
{
    const int container = format & SF_FORMAT_TYPEMASK;
    return container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX
           || container == SF_FORMAT_RF64;
}

} // namespace

WaveReader::WaveReader(SNDFILE *file, int channels, int sampleRate)
    : m_file(file)
    , m_channels(channels > 0 ? channels : 1)
    , m_sampleRate(sampleRate)
{
    if (sampleRate != PhonePcm::SampleRate) {
        // Piece by piece the converter keeps its state, so that the pieces
        // join without a click. The fastest sinc converter is far above what
        // a telephone band needs.
        int error = 0;
        m_resampler = src_new(SRC_SINC_FASTEST, 1, &error);
    }
}

WaveReader::~WaveReader()
{
    if (m_resampler)
        src_delete(m_resampler);
    sf_close(m_file);
}

std::unique_ptr<WaveReader> WaveReader::open(const QString &path, AudioFailure *failure)
{
    SF_INFO info{};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file) {
        // With no handle, libsndfile keeps the reason of the failed open.
        if (failure)
            *failure = {sf_error(nullptr), QString::fromLocal8Bit(sf_strerror(nullptr))};
        return nullptr;
    }
    if (!isWaveContainer(info.format) || info.samplerate <= 0) {
        sf_close(file);
        if (failure)
            *failure = {SF_ERR_UNRECOGNISED_FORMAT,
                        QString::fromLocal8Bit(sf_error_number(SF_ERR_UNRECOGNISED_FORMAT))};
        return nullptr;
    }
    return std::unique_ptr<WaveReader>(new WaveReader(file, info.channels, info.samplerate));
}

std::optional<QByteArray> WaveReader::read(const QString &path, AudioFailure *failure)
{
    const std::unique_ptr<WaveReader> reader = open(path, failure);
    if (!reader)
        return std::nullopt;
    QByteArray pcm;
    while (!reader->atEnd())
        pcm += reader->readPiece();
    return pcm;
}

QByteArray WaveReader::readPiece()
{
    if (m_atEnd)
        return {};
    const sf_count_t wanted = qMax(1, m_sampleRate / 2);
    std::vector<float> frames(size_t(wanted) * size_t(m_channels));
    const sf_count_t got = qMax<sf_count_t>(0, sf_readf_float(m_file, frames.data(), wanted));
    m_atEnd = got < wanted;

    // Mixing down by the mean keeps a stereo prompt at the level it was made.
    std::vector<float> mono(static_cast<size_t>(got));
    for (size_t i = 0; i < mono.size(); ++i) {
        float sum = 0;
        for (int c = 0; c < m_channels; ++c)
            sum += frames[i * size_t(m_channels) + size_t(c)];
        mono[i] = sum / float(m_channels);
    }
    return resample(mono, m_atEnd);
}

QByteArray WaveReader::resample(const std::vector<float> &mono, bool last)
{
    if (m_sampleRate == PhonePcm::SampleRate)
        return PhonePcm::fromMono(mono, m_sampleRate);
    if (!m_resampler)
        return {};

    const double ratio = double(PhonePcm::SampleRate) / m_sampleRate;
    std::vector<float> out(size_t(double(mono.size()) * ratio) + 256);
    std::vector<float> converted;
    SRC_DATA data{};
    data.data_in = mono.data();
    data.input_frames = long(mono.size());
    data.src_ratio = ratio;
    data.end_of_input = last ? 1 : 0;
    // The converter keeps back a few frames of each piece for the next one,
    // and gives them up only when told that the input has ended.
    do {
        data.data_out = out.data();
        data.output_frames = long(out.size());
        if (src_process(m_resampler, &data) != 0)
            return {};
        converted.insert(converted.end(), out.begin(), out.begin() + data.output_frames_gen);
        if (data.input_frames_used == 0 && data.output_frames_gen == 0)
            break;
        data.data_in += data.input_frames_used;
        data.input_frames -= data.input_frames_used;
    } while (data.input_frames > 0 || (last && data.output_frames_gen > 0));
    return PhonePcm::fromMono(converted, PhonePcm::SampleRate);
}

} // namespace ivr
