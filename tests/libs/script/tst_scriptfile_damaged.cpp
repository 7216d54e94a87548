#include "msgbox.h"
#include "scriptfile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace ivr;

// Feeds Load a few thousand damaged copies of one good script. Whatever the
// damage, Load must come back: with modules and no message, or with nothing
// and exactly one message.
class tst_ScriptFileDamaged : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void damagedFileGivesListOrOneMessage_data();
    void damagedFileGivesListOrOneMessage();

private:
    QByteArray goodScript();
    static QJsonValue otherKind(const QJsonValue &value, quint32 pick);

    QTemporaryDir m_dir;
    int m_messages = 0;
};

void tst_ScriptFileDamaged::initTestCase()
{
    MsgBox::setHook([this](const MsgBox::Message &) {
        ++m_messages;
        return QMessageBox::Ok;
    });
}

void tst_ScriptFileDamaged::cleanupTestCase()
{
    MsgBox::clearHook();
}

QByteArray tst_ScriptFileDamaged::goodScript()
{
    ModuleList list;
    for (int type : {1, 0, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13}) {
        ModuleDataPtr m = ModuleData::createNew(type, QString("Step %1").arg(type));
        m->definition().setLeft(type * 100.5f);
        m->definition().setTop(type * 60.25f);
        m->definition().Properties("Extra").setValue(QVariantMap{{"k", QVariantList{1, "x"}}});
        list.Add(m);
    }
    auto common = std::make_shared<ModuleData>();
    common->setModuleType(98);
    common->setName("Common");
    common->definition().setFileName(3, "/w/3.wav");
    common->definition().AddScript("/s/a.ivr");
    list.Add(common);
    const QString path = m_dir.filePath("good.ivr");
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    QFile file(path);
    return ok && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonValue tst_ScriptFileDamaged::otherKind(const QJsonValue &value, quint32 pick)
{
    const QJsonValue kinds[] = {QJsonValue(QStringLiteral("text")),
                                QJsonValue(-1e308),
                                QJsonValue(4294967296.0),
                                QJsonValue(true),
                                QJsonValue(QJsonArray{1, "a"}),
                                QJsonValue(QJsonObject{{"a", 1}}),
                                QJsonValue(QJsonValue::Null),
                                QJsonValue(0.5)};
    QJsonValue chosen = kinds[pick % std::size(kinds)];
    return chosen.type() == value.type() ? kinds[(pick + 1) % std::size(kinds)] : chosen;
}

void tst_ScriptFileDamaged::damagedFileGivesListOrOneMessage_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = goodScript();
    QVERIFY(!good.isEmpty());
    QRandomGenerator random(20240611);

    for (int i = 0; i < 600; ++i)
        QTest::addRow("truncated-at-%d", i) << good.left(qsizetype(i) * good.size() / 600);
    for (int i = 0; i < 1200; ++i) {
        QByteArray flipped = good;
        for (int n = 0; n <= i % 3; ++n)
            flipped[random.bounded(int(flipped.size()))] = char(random.bounded(256));
        QTest::addRow("byte-flip-%d", i) << flipped;
    }
    for (int i = 0; i < 300; ++i) {
        QByteArray cut = good;
        cut.remove(random.bounded(int(cut.size())), random.bounded(1, 200));
        QTest::addRow("span-removed-%d", i) << cut;
    }
    const QJsonObject root = QJsonDocument::fromJson(good).object();
    const QJsonArray modules = root["modules"].toArray();
    for (int i = 0; i < 1200; ++i) {
        QJsonObject changed = root;
        QJsonArray list = modules;
        const int at = random.bounded(int(list.size()));
        QJsonObject module = list[at].toObject();
        QJsonObject definition = module["definition"].toObject();
        const QStringList keys = definition.keys();
        const quint32 pick = random.generate();
        switch (i % 4) {
        case 0:
        case 1: {
            const QString key = keys[random.bounded(int(keys.size()))];
            definition[key] = otherKind(definition[key], pick);
            module["definition"] = definition;
            break;
        }
        case 2:
            module[pick % 2 ? "type" : "name"] = otherKind(module["type"], pick);
            break;
        case 3:
            changed[pick % 2 ? "version" : "format"] = otherKind(root["version"], pick);
            break;
        }
        list[at] = module;
        changed["modules"] = list;
        QTest::addRow("swapped-type-%d", i) << QJsonDocument(changed).toJson();
    }
    auto withCommon = [&](const char *key, const QJsonValue &value) {
        QJsonObject changed = root;
        QJsonArray list = modules;
        QJsonObject common = list.last().toObject();
        QJsonObject definition = common["definition"].toObject();
        definition[key] = value;
        common["definition"] = definition;
        list.last() = common;
        changed["modules"] = list;
        return QJsonDocument(changed).toJson(QJsonDocument::Compact);
    };
    QJsonArray huge;
    for (int i = 0; i < 100000; ++i)
        huge.append(QStringLiteral("/w/x.wav"));
    QTest::newRow("huge-filename-array") << withCommon("FileName", huge);
    QTest::newRow("huge-scriptname-array") << withCommon("ScriptName", huge);
    QTest::newRow("deep-nesting") << QByteArray(100000, '[') + QByteArray(100000, ']');
    QTest::newRow("nul-bytes") << QByteArray(4096, '\0');
}

void tst_ScriptFileDamaged::damagedFileGivesListOrOneMessage()
{
    QFETCH(QByteArray, content);
    const QString path = m_dir.filePath("damaged.ivr");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(content), content.size());
    file.close();

    m_messages = 0;
    const std::optional<ModuleList> list = ScriptFile().Load(path);
    QCOMPARE(m_messages, list ? 0 : 1);
}

QTEST_GUILESS_MAIN(tst_ScriptFileDamaged)
#include "tst_scriptfile_damaged.moc"
