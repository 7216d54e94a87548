// Save and Load of large scripts next to the bare JSON work underneath them:
// a QJsonDocument parse of the same file, and a serialise of the same
// document written through QSaveFile. Prints the median of several runs.

#include "msgbox.h"
#include "scriptfile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace ivr;

namespace {

ModuleList mixedScript(int modules)
{
    static const int types[] = {3, 4, 5, 6, 7, 8, 9, 11, 12, 13};
    ModuleList list;
    list.Add(ModuleData::createNew(1, "Connected"));
    list.Add(ModuleData::createNew(0, "End Call"));
    for (int i = 2; i < modules; ++i) {
        ModuleDataPtr m = ModuleData::createNew(types[i % std::size(types)], QString::number(i));
        Definition &d = m->definition();
        d.setLeft(float(i % 40) * 2400.5f);
        d.setTop(float(i / 40) * 1500.0f);
        d.setDescription(QStringLiteral("Step %1 of the call").arg(i));
        d.setTextToPlay(QStringLiteral("Please hold while we connect you, caller %1.").arg(i));
        d.setNextModule(QStringLiteral("[%1]").arg(i + 1));
        d.setOnSuccess(QStringLiteral("[%1]").arg(i + 2));
        list.Add(m);
    }
    auto common = std::make_shared<ModuleData>();
    common->setModuleType(ModuleData::CommonModuleType);
    common->setName("Common");
    for (int i = 0; i < Definition::FileNameSlots; ++i)
        common->definition().setFileName(i, QStringLiteral("/opt/ivr/numbers/%1.wav").arg(i));
    list.Add(common);
    return list;
}

double medianMs(int runs, const std::function<void()> &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    MsgBox::setHook([](const MsgBox::Message &m) {
        std::fprintf(stderr, "message: %s\n", qPrintable(m.text));
        return QMessageBox::Ok;
    });
    QTemporaryDir dir;
    std::printf("%8s %10s %10s %10s %10s %8s %8s %10s\n",
                "modules",
                "Save ms",
                "bare ms",
                "Load ms",
                "bare ms",
                "save x",
                "load x",
                "file KB");
    for (int modules : {1000, 10000}) {
        const int runs = modules > 1000 ? 7 : 15;
        const ModuleList list = mixedScript(modules);
        const QString path = dir.filePath(QStringLiteral("bench%1.ivr").arg(modules));
        bool ok = false;
        const double save = medianMs(runs, [&] { ScriptFile().Save(path, list, ok); });
        if (!ok)
            return 1;
        const double load = medianMs(runs, [&] {
            if (!ScriptFile().Load(path))
                std::exit(1);
        });

        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return 1;
        const QByteArray bytes = file.readAll();
        const double bareLoad = medianMs(runs, [&] {
            QFile in(path);
            if (!in.open(QIODevice::ReadOnly) || QJsonDocument::fromJson(in.readAll()).isNull())
                std::exit(1);
        });
        const QJsonDocument document = QJsonDocument::fromJson(bytes);
        const QString barePath = dir.filePath(QStringLiteral("bare%1.json").arg(modules));
        const double bareSave = medianMs(runs, [&] {
            const QByteArray out = document.toJson(QJsonDocument::Indented);
            QSaveFile save(barePath);
            if (!save.open(QIODevice::WriteOnly) || save.write(out) != out.size() || !save.commit())
                std::exit(1);
        });
        std::printf("%8d %10.1f %10.1f %10.1f %10.1f %8.2f %8.2f %10lld\n",
                    modules,
                    save,
                    bareSave,
                    load,
                    bareLoad,
                    save / bareSave,
                    load / bareLoad,
                    qint64(bytes.size() / 1024));
    }
    return 0;
}
