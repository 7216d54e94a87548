// Build step: draws the main window's pictures once and writes their pixels
// into the folder given, for the program's resources (see ShellIcons).
#include "shellicons.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fputs("usage: make_shell_pictures <folder>\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "cannot make %s\n", argv[1]);
        return 1;
    }
    const auto write = [&folder](const QImage &image, const QString &name) {
        const QString path
                = folder.filePath(QFileInfo(ivr::ShellIcons::prerenderedPath(name)).fileName());
        QSaveFile file(path);
        bool ok = file.open(QIODevice::WriteOnly);
        for (int y = 0; ok && y < image.height(); ++y) {
            const qint64 row = qint64(image.width()) * 4;
            ok = file.write(reinterpret_cast<const char *>(image.constScanLine(y)), row) == row;
        }
        if (ok && file.commit())
            return true;
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    };
    bool ok = write(ivr::ShellIcons::paintSplash(ivr::ShellIcons::SplashSize),
                    QStringLiteral("splash"));
    ok = write(ivr::ShellIcons::paintWindow(), QStringLiteral("window")) && ok;
    for (int index = 0; index < 7; ++index)
        ok = write(ivr::ShellIcons::paintToolbar(index), QStringLiteral("toolbar-%1").arg(index))
             && ok;
    return ok ? 0 : 1;
}
