#pragma once

#include <QString>

class QWidget;

namespace ivr {

// What every property dialog's Play button and load step use.

// Gives the form the main window's icon (nothing when there is no main window).
void SetFormIcon(QWidget *form);

// Queues a wave file behind whatever sounds and returns at once. A path that
// ends in "/" and names a folder is passed over in silence; a missing file
// says "File Not Found ", a file that is no wave says libsndfile's error.
void PlayWaveFile(const QString &path);

// Cuts whatever sounds and starts speaking the text; returns at once. False
// when no speech voice is registered ("No TTS Voice Found") or speaking
// failed, after the message.
bool SpeakText(const QString &text);

} // namespace ivr
