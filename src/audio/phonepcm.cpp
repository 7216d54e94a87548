#include "phonepcm.h"

#include <samplerate.h>

namespace ivr {

QAudioFormat PhonePcm::format()
{
    QAudioFormat format;
    format.setSampleRate(SampleRate);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    return format;
}

QByteArray PhonePcm::fromMono(const std::vector<float> &samples, int sampleRate)
{
    if (samples.empty() || sampleRate <= 0)
        return {};

    std::vector<float> converted;
    const std::vector<float> *source = &samples;
    if (sampleRate != SampleRate) {
        const double ratio = double(SampleRate) / sampleRate;
        converted.resize(size_t(double(samples.size()) * ratio) + 16);
        SRC_DATA data{};
        data.data_in = samples.data();
        data.input_frames = long(samples.size());
        data.data_out = converted.data();
        data.output_frames = long(converted.size());
        data.src_ratio = ratio;
        // The fastest sinc converter is far above what a telephone band
        // needs and keeps a minute of CD audio under a few tens of ms.
        if (src_simple(&data, SRC_SINC_FASTEST, 1) != 0)
            return {};
        converted.resize(size_t(data.output_frames_gen));
        source = &converted;
    }

    QByteArray pcm(qsizetype(source->size()) * BytesPerFrame, Qt::Uninitialized);
    src_float_to_short_array(
            source->data(), reinterpret_cast<short *>(pcm.data()), int(source->size()));
    return pcm;
}

QByteArray PhonePcm::fromMono16(const short *samples, int count, int sampleRate)
{
    if (count <= 0)
        return {};
    if (sampleRate == SampleRate)
        return QByteArray(reinterpret_cast<const char *>(samples),
                          qsizetype(count) * BytesPerFrame);
    std::vector<float> floats(static_cast<size_t>(count));
    src_short_to_float_array(samples, floats.data(), count);
    return fromMono(floats, sampleRate);
}

} // namespace ivr
