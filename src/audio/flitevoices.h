#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct cst_voice_struct;

namespace ivr {

// The voices this program registers with flite, and speech from the first.
// flite keeps no list of its own once a voice is registered by hand, so the
// count of installed voices is the count of this list.
class FliteVoices
{
public:
    FliteVoices();
    ~FliteVoices();
    FliteVoices(const FliteVoices &) = delete;
    FliteVoices &operator=(const FliteVoices &) = delete;

    int count() const { return int(m_voices.size()); }
    // Channel PCM for the text; empty when there is no voice or nothing to say.
    QByteArray synthesize(const QString &text) const;

    // Lets a test see the program on a machine without any speech voice.
    void setRegistered(bool registered);

private:
    QList<cst_voice_struct *> m_voices;
};

} // namespace ivr
