// The compiled help as the help window reads it: a collection of our own in a
// temporary folder, with the BdwIVRS.qch that the build put beside the program.
#include <QHelpEngine>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchResult>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QString Namespace = QStringLiteral("com.brindlewave.ivrdesigner");

QUrl topicUrl(const QString &file)
{
    return QUrl(QStringLiteral("qthelp://%1/doc/%2").arg(Namespace, file));
}

// The topics the designer's windows open, by help context number from 1.
const QStringList ContextTopics = QStringLiteral("designer connect play digit number transfer "
                                                 "record query condition email executable "
                                                 "end scripts wavefiles")
                                          .split(' ');

QString topicFile(int context)
{
    return QStringLiteral("bdw_d_%1.htm").arg(ContextTopics.at(context - 1));
}
} // namespace

class tst_Help : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void contextTopicIsInTheHelp_data();
    void contextTopicIsInTheHelp();
    void linksBetweenTopicsResolve();
    void fullTextSearchFindsTopic_data();
    void fullTextSearchFindsTopic();

private:
    QTemporaryDir m_dir;
    std::unique_ptr<QHelpEngine> m_engine;
};

void tst_Help::initTestCase()
{
    QVERIFY2(QFile::exists(QStringLiteral(IVR_HELP_QCH)), "build the target ivr_help first");
    QVERIFY(m_dir.isValid());
    m_engine = std::make_unique<QHelpEngine>(m_dir.filePath(QStringLiteral("help.qhc")));
    // A fresh collection is written to, as the help window's first start does.
    m_engine->setReadOnly(false);
    QVERIFY2(m_engine->setupData(), qPrintable(m_engine->error()));
    QVERIFY2(m_engine->registerDocumentation(QStringLiteral(IVR_HELP_QCH)),
             qPrintable(m_engine->error()));
    QCOMPARE(m_engine->registeredDocumentations(), QStringList{Namespace});
}

void tst_Help::contextTopicIsInTheHelp_data()
{
    QTest::addColumn<int>("context");
    QTest::addColumn<QString>("file");
    for (int context = 1; context <= ContextTopics.size(); ++context)
        QTest::addRow("context-%d-%s-missing", context, qPrintable(topicFile(context)))
                << context << topicFile(context);
}

// The help window opens a dialog's topic by file name; a topic left out of
// the project's file list, or a keyword identifier pointing at the wrong
// page, would open an empty or a wrong page.
void tst_Help::contextTopicIsInTheHelp()
{
    QFETCH(int, context);
    QFETCH(QString, file);

    const QByteArray page = m_engine->fileData(topicUrl(file));
    QVERIFY2(!page.isEmpty(), qPrintable(file));
    QVERIFY(page.contains("<title>"));
    QVERIFY(page.contains("ivrhelp.css"));

    const QList<QHelpLink> links
            = m_engine->documentsForIdentifier(QStringLiteral("context.%1").arg(context));
    QCOMPARE(links.size(), 1);
    QCOMPARE(links.constFirst().url.fileName(), file);
}

// Every link from one topic to another, and the style sheet, lead to a page
// that is in the compiled help.
void tst_Help::linksBetweenTopicsResolve()
{
    QVERIFY(!m_engine->fileData(topicUrl(QStringLiteral("ivrhelp.css"))).isEmpty());
    static const QRegularExpression href(QStringLiteral("href=\"([^\"#:]+)\""));
    int checked = 0;
    for (int context = 1; context <= ContextTopics.size(); ++context) {
        const QString file = topicFile(context);
        const QString page = QString::fromUtf8(m_engine->fileData(topicUrl(file)));
        for (const auto &match : href.globalMatch(page)) {
            const QString target = match.captured(1);
            QVERIFY2(!m_engine->fileData(topicUrl(target)).isEmpty(),
                     qPrintable(file + QStringLiteral(" -> ") + target));
            ++checked;
        }
    }
    QVERIFY(checked > ContextTopics.size());
}

void tst_Help::fullTextSearchFindsTopic_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("file");
    QTest::newRow("time-out-exit-not-indexed") << "OnTimeOut"
                                               << "bdw_d_digit.htm";
    QTest::newRow("runner-not-explained") << "VorelRun"
                                          << "bdw_d_running.htm";
    QTest::newRow("number-words-not-indexed") << "Billion"
                                              << "bdw_d_wavefiles.htm";
}

void tst_Help::fullTextSearchFindsTopic()
{
    QFETCH(QString, word);
    QFETCH(QString, file);

    QHelpSearchEngine *search = m_engine->searchEngine();
    static bool indexed = false;
    if (!indexed) {
        QSignalSpy done(search, &QHelpSearchEngine::indexingFinished);
        search->reindexDocumentation();
        QVERIFY(done.count() > 0 || done.wait(60000));
        indexed = true;
    }

    QSignalSpy found(search, &QHelpSearchEngine::searchingFinished);
    search->search(word);
    QVERIFY(found.count() > 0 || found.wait(60000));

    QStringList files;
    for (const QHelpSearchResult &result : search->searchResults(0, search->searchResultCount()))
        files << result.url().fileName();
    QVERIFY2(files.contains(file), qPrintable(files.join(QLatin1Char(' '))));
}

QTEST_MAIN(tst_Help)
#include "tst_help.moc"
