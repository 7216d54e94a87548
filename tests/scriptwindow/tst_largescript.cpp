#include "scriptwindowtesting.h"

#include "arrowplacer.h"
#include "exitkeys.h"
#include "modulelist.h"
#include "scriptfile.h"
#include "voreldirection.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

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

} // namespace

// A script of thousands of modules of every type opens with the arrows the
// small ones get, and saves back unchanged.
class tst_LargeScript : public QObject, swt::Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void opensWithExactArrowsAndSavesUnchanged();

private:
    QString writeScript();
};

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
    return ok ? path : QStringLiteral("<not saved>");
}

void tst_LargeScript::opensWithExactArrowsAndSavesUnchanged()
{
    const QString path = writeScript();
    frmScriptViewer w;
    w.OpenScript(path);
    QCOMPARE(m_messages->count(), 0);
    QCOMPARE(w.cmVorelModule().count(), Modules);

    const QHash<QString, qint16> at = swt::indices(w);
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
            ArrowPlacer::Place(w.cmVorelModule().at(from), w.cmVorelModule().at(to), &expected);
            QVERIFY(arrow->isVisible() && arrow->startPoint() == expected.startPoint()
                    && arrow->endPoint() == expected.endPoint());
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
    const QByteArray bytes = swt::readFile(saved);
    QVERIFY(bytes == swt::readFile(path));
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
