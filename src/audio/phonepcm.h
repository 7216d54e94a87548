#pragma once

#include <QAudioFormat>
#include <QByteArray>

#include <vector>

namespace ivr {

// The channel's one format: 16-bit mono at 8 kHz, the rate of telephone
// prompts. Every clip is brought to it before it is queued, so that one
// sink can play them all without being reopened.
class PhonePcm
{
public:
    static constexpr int SampleRate = 8000;
    static constexpr int BytesPerFrame = 2;

    static QAudioFormat format();
    static int bytesForMs(int ms) { return SampleRate * BytesPerFrame * ms / 1000; }
    static double seconds(const QByteArray &pcm)
    {
        return double(pcm.size()) / (SampleRate * BytesPerFrame);
    }

    // Mono samples in [-1, 1] at any rate become channel PCM. A rate the
    // converter refuses gives an empty clip; the caller's input is never
    // that rate in practice (libsndfile and flite rates are all positive).
    static QByteArray fromMono(const std::vector<float> &samples, int sampleRate);
    static QByteArray fromMono16(const short *samples, int count, int sampleRate);
};

} // namespace ivr
