// The same bare window, linking what the designer links (Qt SQL, Multimedia
// and Help, flite, libsndfile) without using any of it before the first paint.
#include "barewindow.h"

#include <QAudioDevice>
#include <QHelpEngineCore>
#include <QMediaDevices>
#include <QSqlDatabase>

#include <sndfile.h>

extern "C" {
#include <flite.h>
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    BareWindow window;
    window.show();
    const int result = app.exec();
    // Never taken in a measurement; keeps every library linked in.
    if (argc > 99) {
        flite_init();
        std::puts(sf_version_string());
        QSqlDatabase::drivers();
        QMediaDevices::defaultAudioOutput();
        QHelpEngineCore::namespaceName(QString());
    }
    return result;
}
