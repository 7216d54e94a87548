#pragma once

#include <future>
#include <thread>

namespace ivr {

// Loads, on a thread of its own and while the main thread builds the
// application object and the first windows, what the start needs later
// anyway and what does not touch any widget: the font configuration (read
// before the first text is laid out), the SQLite driver (the call log) and
// the image-format plugins (the script window's title-bar pictures). Qt
// guards each plugin load with a lock, so a main thread that gets there
// first waits for the load in progress instead of doing it twice; the font
// configuration has no such guard, so the start waits for it (waitForFonts)
// before its first text.
class StartupWarmUp
{
public:
    // Starts the thread; the font configuration is read at once.
    StartupWarmUp();
    ~StartupWarmUp();

    // The application object exists: the plugins may now be found.
    void applicationReady();
    // Returns once the font configuration has been read; at once when no
    // warm-up runs (a test that starts the designer inside itself).
    static void waitForFonts();
    // Joins the thread; called before the application object goes, so that
    // nothing is still loading when the program ends.
    void finish();

private:
    void run();

    std::promise<void> m_applicationReady;
    std::future<void> m_applicationReadyFuture;
    std::promise<void> m_fontsRead;
    std::future<void> m_fontsReadFuture;
    std::thread m_thread;
    static StartupWarmUp *s_current;
    bool m_applicationSignalled = false; // the main thread's own
    bool m_pluginsWanted = false;        // read by the thread once signalled
};

} // namespace ivr
