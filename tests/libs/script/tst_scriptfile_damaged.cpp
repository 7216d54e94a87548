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

// Whatever the damage, Load comes back: with modules and no message, or with
// nothing and exactly one message.
class tst_ScriptFileDamaged : public QObject
{
    Q_OBJECT

private slots:
    void damagedFileGivesListOrOneMessage();
};

void tst_ScriptFileDamaged::damagedFileGivesListOrOneMessage()
{
    int messages = 0;
    MsgBox::setHook([&](const MsgBox::Message &) {
        ++messages;
        return QMessageBox::Ok;
    });
    auto hookGone = qScopeGuard([] { MsgBox::clearHook(); });
    QTemporaryDir dir;
    const QString path = dir.filePath("script.ivr");
    auto check = [&](const QByteArray &content, const QString &variant) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) < 0)
            return false;
        file.close();
        messages = 0;
        const bool loaded = ScriptFile().Load(path).has_value();
        return messages == (loaded ? 0 : 1) || (qWarning() << variant << messages, false);
    };

    ModuleList list;
    for (int type : {1, 0, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13}) {
        ModuleDataPtr m = ModuleData::createNew(type, QString("Step %1").arg(type));
        m->definition().setLeft(type * 100.5f);
        list.Add(m);
    }
    auto common = std::make_shared<ModuleData>();
    common->setModuleType(98);
    common->setName("Common");
    common->definition().AddScript("/s/a.ivr");
    list.Add(common);
    bool ok = false;
    ScriptFile().Save(path, list, ok);
    QVERIFY(ok);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    const QJsonObject root = QJsonDocument::fromJson(good).object();
    QRandomGenerator random(20240611);

    for (int i = 0; i < 600; ++i)
        QVERIFY(check(good.left(qsizetype(i) * good.size() / 600), QString("truncated-%1").arg(i)));
    for (int i = 0; i < 1200; ++i) {
        QByteArray flipped = good;
        for (int n = 0; n <= i % 3; ++n)
            flipped[random.bounded(int(flipped.size()))] = char(random.bounded(256));
        QVERIFY(check(flipped, QString("byte-flip-%1").arg(i)));
    }
    const QJsonValue kinds[] = {"text",
                                -1e308,
                                4294967296.0,
                                true,
                                QJsonArray{1},
                                0.5,
                                QJsonObject{{"a", 1}},
                                QJsonValue::Null};
    for (int i = 0; i < 1200; ++i) {
        QJsonObject changed = root;
        QJsonArray modules = root["modules"].toArray();
        const int at = random.bounded(int(modules.size()));
        QJsonObject module = modules[at].toObject();
        QJsonObject definition = module["definition"].toObject();
        const QJsonValue kind = kinds[random.bounded(int(std::size(kinds)))];
        if (i % 2) {
            definition[definition.keys()[random.bounded(int(definition.size()))]] = kind;
            module["definition"] = definition;
        } else {
            module[i % 4 ? "type" : "name"] = kind;
        }
        modules[at] = module;
        changed["modules"] = modules;
        QVERIFY(check(QJsonDocument(changed).toJson(), QString("swapped-type-%1").arg(i)));
    }
    for (const char *key : {"FileName", "ScriptName"}) {
        QJsonObject changed = root;
        QJsonArray modules = root["modules"].toArray();
        QJsonObject definition = modules.last()["definition"].toObject();
        definition[key] = QJsonArray::fromStringList(QStringList(100000, "/w/x.wav"));
        modules[modules.size() - 1]
                = QJsonObject{{"name", "Common"}, {"type", 98}, {"definition", definition}};
        changed["modules"] = modules;
        QVERIFY(check(QJsonDocument(changed).toJson(QJsonDocument::Compact),
                      QString("huge-%1").arg(key)));
    }
}

QTEST_GUILESS_MAIN(tst_ScriptFileDamaged)
#include "tst_scriptfile_damaged.moc"
