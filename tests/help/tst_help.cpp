// The compiled help as the help window reads it: a collection of our own in a
// temporary folder, with the BdwIVRS.qch that the build put beside the program.
#include <QHelpEngine>
#include <QHelpLink>
#include <QTemporaryDir>
#include <QTest>

class tst_Help : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QFile::exists(QStringLiteral(IVR_HELP_QCH)), "build the target ivr_help first");
        m_engine = std::make_unique<QHelpEngine>(m_dir.filePath("help.qhc"));
        m_engine->setReadOnly(false);
        QVERIFY2(m_engine->setupData(), qPrintable(m_engine->error()));
        QVERIFY2(m_engine->registerDocumentation(QStringLiteral(IVR_HELP_QCH)),
                 qPrintable(m_engine->error()));
    }

    // The topics the designer's windows open, by help context number from 1.
    void contextTopicIsInTheHelp_data()
    {
        QTest::addColumn<int>("context");
        QTest::addColumn<QString>("file");
        const QStringList topics = QStringLiteral("designer connect play digit number transfer "
                                                  "record query condition email executable "
                                                  "end scripts wavefiles")
                                           .split(' ');
        for (int context = 1; context <= topics.size(); ++context) {
            const QString file = "bdw_d_" + topics.at(context - 1) + ".htm";
            QTest::addRow("context-%d-%s-missing", context, qPrintable(file)) << context << file;
        }
    }
    void contextTopicIsInTheHelp()
    {
        QFETCH(int, context);
        QFETCH(QString, file);
        const QUrl url("qthelp://com.brindlewave.ivrdesigner/doc/" + file);
        QVERIFY2(m_engine->fileData(url).contains("<title>"), qPrintable(file));
        const QList<QHelpLink> links
                = m_engine->documentsForIdentifier(QStringLiteral("context.%1").arg(context));
        QCOMPARE(links.size(), 1);
        QCOMPARE(links.constFirst().url.fileName(), file);
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<QHelpEngine> m_engine;
};

QTEST_MAIN(tst_Help)
#include "tst_help.moc"
