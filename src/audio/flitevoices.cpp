#include "flitevoices.h"

#include "phonepcm.h"

#include <flite.h>

extern "C" {
cst_voice *register_cmu_us_kal(const char *voxdir);
void unregister_cmu_us_kal(cst_voice *voice);
}

namespace ivr {

FliteVoices::FliteVoices()
{
    static const bool initialised = (flite_init(), true);
    Q_UNUSED(initialised);
    setRegistered(true);
}

FliteVoices::~FliteVoices()
{
    setRegistered(false);
}

void FliteVoices::setRegistered(bool registered)
{
    if (registered && m_voices.isEmpty()) {
        if (cst_voice *kal = register_cmu_us_kal(nullptr))
            m_voices << kal;
    } else if (!registered) {
        for (cst_voice *voice : std::as_const(m_voices))
            unregister_cmu_us_kal(voice);
        m_voices.clear();
    }
}

QByteArray FliteVoices::synthesize(const QString &text) const
{
    // flite reads 8-bit text and needs something to say; blanks alone give
    // no utterance at all.
    if (m_voices.isEmpty() || text.trimmed().isEmpty())
        return {};
    const QByteArray latin = text.toLatin1();
    cst_wave *wave = flite_text_to_wave(latin.constData(), m_voices.first());
    if (!wave)
        return {};
    // flite opens every utterance with a third of a second of faint noise;
    // an audition that starts with it sounds late, so speech begins just
    // before the first clearly audible sample (about -42 dBFS).
    constexpr short Audible = 256;
    const int lead = wave->sample_rate / 50;
    int start = 0;
    while (start < wave->num_samples && qAbs(wave->samples[start]) < Audible)
        ++start;
    start = start >= wave->num_samples ? 0 : qMax(0, start - lead);
    QByteArray pcm;
    if (wave->num_channels == 1)
        pcm = PhonePcm::fromMono16(
                wave->samples + start, wave->num_samples - start, wave->sample_rate);
    delete_wave(wave);
    return pcm;
}

} // namespace ivr
