// scriptsaver <file>: saves a large script until killed, every module of one
// save with the same description, alternating from save to save.

#include "frmscriptviewer.h"
#include "vorelmodule.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2)
        return 2;
    frmScriptViewer w;
    for (int i = 0; i < 400; ++i)
        w.AddModule(3, 2000 + 300 * (i % 40), 1000 + 1200 * (i / 40));
    w.setFileName(QString::fromLocal8Bit(argv[1]));
    for (int round = 0;; ++round) {
        const QString text = round % 2 ? QStringLiteral("odd save") : QStringLiteral("even save");
        for (VorelModule *module : w.cmVorelModule())
            module->setDescription(text);
        if (!w.SaveScript(false))
            return 1;
        if (round == 0)
            QTextStream(stdout) << "saved" << Qt::endl;
    }
}
