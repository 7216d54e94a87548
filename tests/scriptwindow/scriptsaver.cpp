// scriptsaver <file>: saves a large script until killed, every module of one
// save with the same description, alternating from save to save.
// scriptsaver <file> <source>: opens <source>, edits it, saves it once onto
// <file> on a disk that takes 4 KiB per file, and prints what it saw.

#include "frmscriptviewer.h"
#include "msgbox.h"
#include "vorelmodule.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTextStream>

#include <csignal>
#include <sys/resource.h>

static int saveOnFullDisk(frmScriptViewer &w, const QString &file, const QString &source)
{
    QStringList messages;
    ivr::MsgBox::setHook([&](const ivr::MsgBox::Message &m) {
        messages << QString::number(int(m.icon)) + QLatin1Char(' ') + m.text;
        return QMessageBox::Ok;
    });
    w.show();
    w.OpenScript(source);
    for (int i = 0; i < 100; ++i)
        w.AddModule(3, 2000 + 300 * (i % 10), 9000 + 1200 * (i / 10));
    VorelModule *module = w.cmVorelModule().at(2);
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held
                = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(
                type, QPointF(3, 3), module->mapToGlobal(QPointF(3, 3)), Qt::LeftButton, held, {});
        QApplication::sendEvent(module, &event); // a plain click is an edit
    }
    const bool changedBefore = w.Changed();
    w.setFileName(file);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    const bool ok = w.SaveScript(false);
    QTextStream out(stdout);
    out << "changed before " << changedBefore << "\nok " << ok << "\nchanged " << w.Changed()
        << "\nfile " << w.FileName() << "\ncaption " << w.windowTitle() << "\nmodules "
        << w.cmVorelModule().count() << '\n';
    const qsizetype asked = messages.size();
    out << "closes without question " << (w.close() && messages.size() == asked) << '\n';
    for (const QString &m : messages)
        out << "message " << m << '\n';
    return 0;
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2)
        return 2;
    frmScriptViewer w;
    if (argc > 2)
        return saveOnFullDisk(w, QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
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
