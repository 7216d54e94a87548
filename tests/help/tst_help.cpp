// The compiled help as the help window reads it: a collection of our own in a
// temporary folder, with the BdwIVRS.qch that the build put beside the program.
#include <QHelpEngine>
#include <QHelpLink>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QString Namespace = QStringLiteral("com.brindlewave.ivrdesigner");

// The topics the designer's windows open, by help context number from 1.
const QStringList ContextTopics = QStringLiteral("designer connect play digit number transfer "
                                                 "record query condition email executable "
                                                 "end scripts wavefiles")
                                          .split(' ');
} // namespace

class tst_Help : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void contextTopicIsInTheHelp_data();
    void contextTopicIsInTheHelp();

private:
    QTemporaryDir m_dir;
    std::unique_ptr<QHelpEngine> m_engine;
};

void tst_Help::initTestCase()
{
    QVERIFY2(QFile::exists(QStringLiteral(IVR_HELP_QCH)), "build the target ivr_help first");
    m_engine = std::make_unique<QHelpEngine>(m_dir.filePath(QStringLiteral("help.qhc")));
    m_engine->setReadOnly(false);
    QVERIFY2(m_engine->setupData(), qPrintable(m_engine->error()));
    QVERIFY2(m_engine->registerDocumentation(QStringLiteral(IVR_HELP_QCH)),
             qPrintable(m_engine->error()));
}

void tst_Help::contextTopicIsInTheHelp_data()
{
    QTest::addColumn<int>("context");
    QTest::addColumn<QString>("file");
    for (int context = 1; context <= ContextTopics.size(); ++context) {
        const QString file = QStringLiteral("bdw_d_%1.htm").arg(ContextTopics.at(context - 1));
        QTest::addRow("context-%d-%s-missing", context, qPrintable(file)) << context << file;
    }
}

void tst_Help::contextTopicIsInTheHelp()
{
    QFETCH(int, context);
    QFETCH(QString, file);
    const QUrl url(QStringLiteral("qthelp://%1/doc/%2").arg(Namespace, file));
    QVERIFY2(m_engine->fileData(url).contains("<title>"), qPrintable(file));
    const QList<QHelpLink> links
            = m_engine->documentsForIdentifier(QStringLiteral("context.%1").arg(context));
    QCOMPARE(links.size(), 1);
    QCOMPARE(links.constFirst().url.fileName(), file);
}

QTEST_MAIN(tst_Help)
#include "tst_help.moc"
