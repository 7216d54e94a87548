#include "clipmaker.h"

#include "flitevoices.h"
#include "wavereader.h"

namespace ivr {

ClipMaker::ClipMaker(const FliteVoices &voices, const std::atomic<quint64> &latestCut)
    : m_voices(voices)
    , m_latestCut(latestCut)
{}

void ClipMaker::speak(quint64 cut, const QString &text)
{
    emit clipReady(cut, isCut(cut) ? QByteArray() : m_voices.synthesize(text), true);
}

void ClipMaker::decode(quint64 cut, const std::shared_ptr<WaveReader> &wave)
{
    // The first piece goes out as soon as it is made, so that a long file
    // starts as quickly as a short one.
    bool last = false;
    while (!last && !isCut(cut)) {
        const QByteArray piece = wave->readPiece();
        last = wave->atEnd();
        emit clipReady(cut, piece, last);
    }
    if (!last)
        emit clipReady(cut, {}, true);
}

} // namespace ivr
