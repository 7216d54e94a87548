#include "startupwarmup.h"

#include <QImageReader>
#include <QSqlDatabase>

#include <fontconfig/fontconfig.h>

namespace ivr {

StartupWarmUp *StartupWarmUp::s_current = nullptr;

StartupWarmUp::StartupWarmUp()
    : m_applicationReadyFuture(m_applicationReady.get_future())
    , m_fontsReadFuture(m_fontsRead.get_future())
    , m_thread(&StartupWarmUp::run, this)
{
    s_current = this;
}

StartupWarmUp::~StartupWarmUp()
{
    finish();
}

void StartupWarmUp::finish()
{
    if (s_current == this)
        s_current = nullptr;
    // Without an application object there are no plugins to load.
    if (!m_applicationSignalled)
        m_applicationReady.set_value();
    m_applicationSignalled = true;
    if (m_thread.joinable())
        m_thread.join();
}

void StartupWarmUp::applicationReady()
{
    if (m_applicationSignalled)
        return;
    m_applicationSignalled = true;
    m_pluginsWanted = true;
    m_applicationReady.set_value();
}

void StartupWarmUp::waitForFonts()
{
    if (s_current && s_current->m_fontsReadFuture.valid())
        s_current->m_fontsReadFuture.wait();
}

void StartupWarmUp::run()
{
    // Qt reads the same configuration at its first text; once it is loaded
    // there, Qt finds it current and goes on.
    FcInit();
    m_fontsRead.set_value();

    m_applicationReadyFuture.wait();
    if (!m_pluginsWanted)
        return;
    // In the order the start needs them: the call log its driver, then the
    // script window's title-bar pictures every image plugin (asking each
    // what it reads loads it).
    const QString name = QStringLiteral("ivr-startup-warm-up");
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    QSqlDatabase::removeDatabase(name);
    QImageReader::supportedImageFormats();
}

} // namespace ivr
