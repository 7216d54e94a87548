#include "frmappmain.h"
#include "ivrapplication.h"
#include "startup.h"
#include "startupwarmup.h"
#include "unhandledfailure.h"

#include <QScopeGuard>
#include <QTimer>

#include <cstdio>

namespace {

// For start-up measurements: quit right after the main window's first paint.
class FirstPaintWatch : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_done) {
            m_done = true;
            QTimer::singleShot(0, qApp, [] {
                std::fputs("first-paint\n", stdout);
                std::fflush(stdout);
                QCoreApplication::exit(0);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_done = false;
};

} // namespace

int main(int argc, char **argv)
{
    ivr::StartupWarmUp warmUp;
    ivr::IvrApplication app(argc, argv);
    warmUp.applicationReady();
    // Before the application object goes: nothing may still be loading then.
    const auto finishWarmUp = qScopeGuard([&warmUp] { warmUp.finish(); });
    ivr::IvrApplication::setUpFonts();
    const bool measure = qEnvironmentVariableIntValue("IVR_EXIT_AFTER_FIRST_PAINT") == 1;
    int result = 1;
    try {
        result = ivr::Startup::Main(app.arguments().mid(1));
    } catch (const std::exception &error) {
        ivr::UnhandledFailure::show(QString::fromLocal8Bit(error.what()));
        return 1;
    }
    if (result != 0)
        return result;
    if (measure) {
        if (frmAppMain *frame = frmAppMain::existing())
            frame->installEventFilter(new FirstPaintWatch(frame));
    }
    return app.exec();
}
