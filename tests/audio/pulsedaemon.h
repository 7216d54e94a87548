#pragma once

#include <QString>

// The test daemon that PULSE_SERVER names (tests/audio/pulsefixture.sh):
// what a user's sound server does behind the program's back.
class PulseDaemon
{
public:
    static QString folder(); // from PULSE_SERVER, "unix:<folder>/native"
    static bool restart();   // a new daemon on the same socket
    static bool freeze();    // the server hangs: it takes calls and never answers
    static bool thaw();
    // No stream of this server is playing: each is corked, or there is none.
    static bool allStreamsCorked();
};
