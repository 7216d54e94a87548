// Opening and saving scripts of 100, 1,000 and 5,000 linked modules through
// the script window (controls, matrix, arrows), next to the script file
// alone.

#include "frmscriptviewer.h"
#include "scriptfile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

using namespace ivr;

namespace {

// A chain of play modules with a digit menu every tenth module whose
// thirteen exits fan out over the ten modules after it.
void writeScript(const QString &path, int modules)
{
    ModuleList list;
    const auto add = [&](int type, const QString &name, float left, float top) {
        ModuleDataPtr m = ModuleData::createNew(type, name);
        m->definition().setLeft(left);
        m->definition().setTop(top);
        list.Add(m);
        return m;
    };
    const auto nameOf = [&](int i) {
        return i >= modules - 2 ? QStringLiteral("End Call") : QStringLiteral("M%1").arg(i);
    };
    add(1, QStringLiteral("Connected"), 1215, 675)->definition().setNextModule("[M0]");
    for (int i = 0; i < modules - 2; ++i) {
        const bool menu = i % 10 == 9;
        ModuleDataPtr m = add(
                menu ? 4 : 3, nameOf(i), 600 + 2700.5f * (i % 30), 600 + 1500.25f * (i / 30 % 35));
        if (!menu) {
            m->definition().setNextModule("[" + nameOf(i + 1) + "]");
            continue;
        }
        for (int d = 0; d < 10; ++d)
            m->definition()
                    .Properties(QStringLiteral("OnDigit%1").arg(d))
                    .setValue("[" + nameOf(qMin(modules - 2, i + 1 + d)) + "]");
        m->definition().setOnStar("[" + nameOf(i - 1) + "]");
        m->definition().setOnHash("[End Call]");
        m->definition().setOnTimeOut("[" + nameOf(i) + "]");
    }
    add(0, QStringLiteral("End Call"), 1215, 3870);
    ModuleDataPtr common = ModuleData::createNew(ModuleData::CommonModuleType, QStringLiteral("Common"));
    list.Add(common);
    bool ok = false;
    ScriptFile().Save(path, list, ok);
}

double msSince(const QElapsedTimer &t)
{
    return t.nsecsElapsed() / 1e6;
}

// The process's resident memory, in MiB.
double residentMiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024;
    }
    return 0;
}

const char *holds(bool ok)
{
    return ok ? "holds" : "MISSED";
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTextStream out(stdout);
    QTemporaryDir dir;
    double emptyWindow = 0;
    {
        frmScriptViewer empty;
        QCoreApplication::processEvents();
        emptyWindow = residentMiB();
    }
    double withThousand = 0;
    double closeAt5000 = 0;
    out << "modules  file load  file save  window open  window save  (ms)" << Qt::endl;
    double openAt1000 = 0;
    double openAt5000 = 0;
    for (int modules : {100, 1000, 5000}) {
        const QString path = dir.filePath(QStringLiteral("s%1.ivr").arg(modules));
        writeScript(path, modules);
        QElapsedTimer t;

        t.start();
        const auto list = ScriptFile().Load(path);
        const double fileLoad = msSince(t);
        t.start();
        bool ok = false;
        ScriptFile().Save(dir.filePath(QStringLiteral("bare.ivr")), *list, ok);
        const double fileSave = msSince(t);

        auto *w = new frmScriptViewer;
        t.start();
        w->OpenScript(path);
        const double open = msSince(t);
        w->setFileName(dir.filePath(QStringLiteral("window.ivr")));
        t.start();
        w->SaveScript(false);
        const double save = msSince(t);
        if (modules == 1000) {
            QCoreApplication::processEvents();
            withThousand = residentMiB();
        }
        t.start();
        delete w;
        const double close = msSince(t);

        out << qSetFieldWidth(7) << modules << qSetFieldWidth(11) << fileLoad << fileSave
            << qSetFieldWidth(13) << open << save << qSetFieldWidth(0) << "   (closing the window "
            << close << " ms)" << Qt::endl;
        if (modules == 1000)
            openAt1000 = open;
        if (modules == 5000) {
            openAt5000 = open;
            closeAt5000 = close;
        }
    }
    const double growth = openAt5000 / openAt1000;
    out << "window open growth 1,000 -> 5,000 modules: x" << growth << Qt::endl;
    out << "aims: open 1,000 < 100 ms: " << openAt1000 << " " << holds(openAt1000 < 100)
        << "; open 5,000 < 600 ms: " << openAt5000 << " " << holds(openAt5000 < 600)
        << "; growth <= x6: " << holds(growth <= 6) << "; close 5,000 < 200 ms: " << closeAt5000
        << " " << holds(closeAt5000 < 200) << Qt::endl;
    const double memoryAim = 2 * emptyWindow + 50;
    out << "resident memory: empty window " << emptyWindow << " MiB, 1,000 modules open "
        << withThousand << " MiB, aim < " << memoryAim
        << " MiB: " << holds(withThousand < memoryAim) << Qt::endl;
    return 0;
}
