#pragma once

#include <QString>

// Test daemons of tests/audio/pulsefixture.sh, each in a folder of its own
// with its socket there: what a user's sound server does behind the
// program's back.
class PulseDaemon
{
public:
    static QString folder();                  // the daemon PULSE_SERVER names
    static bool start(const QString &folder); // a new daemon there, after any old one
    static bool stop(const QString &folder);
    // The server of this process (when it next connects) and of what it starts.
    static void use(const QString &folder);

    // The daemon PULSE_SERVER names hangs: it takes calls and never answers.
    static bool freeze();
    static bool thaw();
    // No stream of the server in use is playing: each is corked, or there is none.
    static bool allStreamsCorked();
};
