#include "frmscriptviewer.h"

#include "arrowplacer.h"
#include "exitkeys.h"
#include "messagerecorder.h"
#include "modulelist.h"
#include "programfolder.h"
#include "scriptfile.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

#include <memory>

namespace {

constexpr int Modules = 2000;

QString nameOf(int i)
{
    return i == 0   ? QStringLiteral("Connected")
           : i == 1 ? QStringLiteral("End Call")
                    : QStringLiteral("M%1").arg(i);
}

int typeOf(int i)
{
    // One Connected and one End Call; the other types take turns.
    return i == 0 ? 1 : i == 1 ? 0 : 2 + i % 12;
}

// Module i's exit k names a module some way ahead (a loop now and then), and
// every seventh exit names a module that the script does not hold.
QString targetOf(int i, int k)
{
    if ((i + k) % 7 == 0)
        return QStringLiteral("Missing %1").arg(i);
    if ((i + k) % 11 == 0)
        return nameOf(i);
    return nameOf((i + 1 + 37 * k) % Modules);
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

} // namespace

// A script of thousands of modules of every type opens with the arrows the
// small ones get, and saves back unchanged.
class tst_LargeScript : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void opensWithExactArrowsAndSavesUnchanged();

private:
    QString writeScript();
    std::unique_ptr<ProgramFolder> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void tst_LargeScript::init()
{
    m_folder = std::make_unique<ProgramFolder>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
}

void tst_LargeScript::cleanup()
{
    m_messages.reset();
    m_folder.reset();
}

QString tst_LargeScript::writeScript()
{
    ivr::ModuleList list;
    for (int i = 0; i < Modules; ++i) {
        ivr::ModuleDataPtr m = ivr::ModuleData::createNew(typeOf(i), nameOf(i));
        m->definition().setLeft(600 + 2700.5f * (i % 40));
        m->definition().setTop(600 + 1500.25f * (i / 40));
        for (int k = 0; k < allExits().size(); ++k)
            m->definition().Properties(allExits().at(k)).setValue("[" + targetOf(i, k) + "]");
        list.Add(m);
    }
    list.Add(ivr::ModuleData::createNew(98, QStringLiteral("Common")));
    const QString path = m_folder->file(QStringLiteral("large.ivr"));
    bool ok = false;
    ivr::ScriptFile().Save(path, list, ok);
    return ok ? path : QString();
}

void tst_LargeScript::opensWithExactArrowsAndSavesUnchanged()
{
    const QString path = writeScript();
    QVERIFY(!path.isEmpty());
    frmScriptViewer w;
    w.OpenScript(path);
    QCOMPARE(m_messages->count(), 0);
    QCOMPARE(w.cmVorelModule().count(), Modules);

    QHash<QString, qint16> at;
    for (auto it = w.cmVorelModule().begin(); it != w.cmVorelModule().end(); ++it)
        at.insert((*it)->moduleData()->Name(), it.index());
    QSet<QPair<qint16, qint16>> links;
    for (int i = 0; i < Modules; ++i) {
        for (const QString &key : arrowedExits(typeOf(i))) {
            const QString target = targetOf(i, int(allExits().indexOf(key)));
            if (at.contains(target))
                links.insert({at.value(nameOf(i)), at.value(target)});
        }
    }
    QVERIFY(links.size() > Modules);

    VorelDirection expected(0);
    QSet<qint16> arrows;
    for (const qint16 from : at) {
        for (const qint16 to : at) {
            const qint16 cell = w.DrawLine().LineMatrix(from, to);
            QVERIFY2((cell > 0) == links.contains({from, to}),
                     qPrintable(QStringLiteral("%1 -> %2").arg(from).arg(to)));
            if (cell <= 0)
                continue;
            QVERIFY(!arrows.contains(cell));
            arrows.insert(cell);
            VorelDirection *arrow = w.VorelDirection1().at(cell);
            QVERIFY(arrow->isVisible());
            ArrowPlacer::Place(w.cmVorelModule().at(from), w.cmVorelModule().at(to), &expected);
            QCOMPARE(arrow->startPoint(), expected.startPoint());
            QCOMPARE(arrow->endPoint(), expected.endPoint());
        }
    }
    // A second exit to the same module leaves its first arrow loaded but hidden.
    int shown = 0;
    for (VorelDirection *arrow : w.VorelDirection1())
        shown += arrow->isVisible() ? 1 : 0;
    QCOMPARE(shown, arrows.size());

    const QString saved = m_folder->file(QStringLiteral("saved.ivr"));
    w.setFileName(saved);
    QVERIFY(w.SaveScript(false));
    const QByteArray bytes = readFile(saved);
    QVERIFY(bytes == readFile(path));
    // Each module stands in the file as Qt writes it indented, two levels in.
    const QJsonArray entries = QJsonDocument::fromJson(bytes).object().value(u"modules").toArray();
    QCOMPARE(entries.size(), Modules + 1);
    for (qsizetype i = 0; i < entries.size(); i += 97) {
        QByteArray text = QJsonDocument(entries.at(i).toObject()).toJson(QJsonDocument::Indented);
        text.chop(1);
        QVERIFY(bytes.contains("        " + text.replace('\n', "\n        ")));
    }
}

QTEST_MAIN(tst_LargeScript)
#include "tst_largescript.moc"
