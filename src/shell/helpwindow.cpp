#include "helpwindow.h"

#include "shellicons.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHelpContentModel>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchQueryWidget>
#include <QHelpSearchResultWidget>
#include <QPointer>
#include <QSplitter>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryFile>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace ivr {

namespace {

QString g_helpFile;
QPointer<HelpWindow> g_window;

// Pages, pictures and style sheets of a topic come out of the help engine.
class HelpBrowser : public QTextBrowser
{
public:
    explicit HelpBrowser(QWidget *parent)
        : QTextBrowser(parent)
    {}
    QHelpEngine *engine = nullptr;

    QVariant loadResource(int type, const QUrl &name) override
    {
        if (engine && name.scheme() == QLatin1String("qthelp"))
            return engine->fileData(name);
        return QTextBrowser::loadResource(type, name);
    }
};

const char *const kTopics[] = {
        nullptr,
        "bdw_d_designer.htm",
        "bdw_d_connect.htm",
        "bdw_d_play.htm",
        "bdw_d_digit.htm",
        "bdw_d_number.htm",
        "bdw_d_transfer.htm",
        "bdw_d_record.htm",
        "bdw_d_query.htm",
        "bdw_d_condition.htm",
        "bdw_d_email.htm",
        "bdw_d_executable.htm",
        "bdw_d_end.htm",
        "bdw_d_scripts.htm",
        "bdw_d_wavefiles.htm",
};

QString cacheFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
}

bool canWriteIn(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return false;
    QTemporaryFile probe(folder + QStringLiteral("/write-test-XXXXXX"));
    return probe.open();
}

} // namespace

void HelpWindow::setHelpFile(const QString &path)
{
    g_helpFile = path;
}

QString HelpWindow::helpFile()
{
    return g_helpFile;
}

QString HelpWindow::topicForContext(int context)
{
    if (context < 1 || context >= int(std::size(kTopics)))
        return {};
    return QString::fromLatin1(kTopics[context]);
}

HelpWindow *HelpWindow::instance(QWidget *owner)
{
    if (!g_window)
        g_window = new HelpWindow(owner);
    return g_window;
}

HelpWindow *HelpWindow::existing()
{
    return g_window;
}

HelpWindow::HelpWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Brindlewave IVR Script Designer Help"));
    setAccessibleName(windowTitle());
    setWindowIcon(ShellIcons::window());
    setAttribute(Qt::WA_DeleteOnClose, false);
    resize(900, 600);

    auto *browser = new HelpBrowser(this);
    m_browser = browser;
    m_browser->setObjectName(QStringLiteral("helpPage"));
    m_browser->setAccessibleName(QStringLiteral("Help topic"));
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("helpNavigation"));
    m_tabs->setAccessibleName(QStringLiteral("Help navigation"));

    auto *splitter = new QSplitter(this);
    splitter->addWidget(m_tabs);
    splitter->addWidget(m_browser);
    splitter->setStretchFactor(1, 3);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    setUpEngine();
    browser->engine = m_engine;
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::setUpEngine()
{
    const QString file = g_helpFile;
    if (file.isEmpty() || !QFileInfo(file).isFile())
        return;
    const QString ns = QHelpEngineCore::namespaceName(file);
    if (ns.isEmpty())
        return;
    const QString cache = cacheFolder();
    QDir().mkpath(cache);
    auto *engine = new QHelpEngine(cache + QStringLiteral("/BdwIVRS.qhc"), this);
    // The collection is ours to fill: a read-only engine refuses to register.
    engine->setReadOnly(false);
    if (!engine->setupData()) {
        delete engine;
        return;
    }
    // A collection made for a help file elsewhere, or an older one, is
    // brought in line with the file beside this program.
    const QString registered = engine->documentationFileName(ns);
    const bool stale
            = !registered.isEmpty()
              && (QFileInfo(registered).canonicalFilePath() != QFileInfo(file).canonicalFilePath()
                  || QFileInfo(registered).lastModified() < QFileInfo(file).lastModified());
    if (stale)
        engine->unregisterDocumentation(ns);
    if (registered.isEmpty() || stale) {
        if (!engine->registerDocumentation(file)) {
            delete engine;
            return;
        }
        engine->searchEngine()->reindexDocumentation();
    }
    m_engine = engine;
    m_namespace = ns;

    m_tabs->addTab(engine->contentWidget(), QStringLiteral("&Contents"));
    m_tabs->addTab(engine->indexWidget(), QStringLiteral("&Index"));
    auto *search = new QWidget(m_tabs);
    auto *searchLayout = new QVBoxLayout(search);
    QHelpSearchEngine *searchEngine = engine->searchEngine();
    searchLayout->addWidget(searchEngine->queryWidget());
    searchLayout->addWidget(searchEngine->resultWidget(), 1);
    m_tabs->addTab(search, QStringLiteral("&Search"));
    engine->contentWidget()->setAccessibleName(QStringLiteral("Contents"));
    engine->indexWidget()->setAccessibleName(QStringLiteral("Index"));
    searchEngine->queryWidget()->setAccessibleName(QStringLiteral("Search for"));
    searchEngine->resultWidget()->setAccessibleName(QStringLiteral("Search results"));

    connect(engine->contentWidget(), &QHelpContentWidget::linkActivated, this, &HelpWindow::open);
    // The contents are read in the background; show the topics of the top
    // level once they are there instead of one closed book.
    QHelpContentWidget *contents = engine->contentWidget();
    connect(engine->contentModel(), &QHelpContentModel::contentsCreated, contents, [contents] {
        contents->expandToDepth(0);
    });
    connect(engine->indexWidget(),
            &QHelpIndexWidget::documentActivated,
            this,
            [this](const QHelpLink &link, const QString &) { open(link.url); });
    connect(searchEngine->queryWidget(), &QHelpSearchQueryWidget::search, this, [searchEngine] {
        searchEngine->search(searchEngine->queryWidget()->searchInput());
    });
    connect(searchEngine->resultWidget(),
            &QHelpSearchResultWidget::requestShowLink,
            this,
            &HelpWindow::open);
}

void HelpWindow::showMissing()
{
    // A help file that is there and readable failed in the cache folder,
    // where the collection and the search index are made.
    const bool fileReadable = !g_helpFile.isEmpty() && QFileInfo(g_helpFile).isReadable()
                              && !QHelpEngineCore::namespaceName(g_helpFile).isEmpty();
    if (fileReadable && !canWriteIn(cacheFolder())) {
        m_browser->setHtml(QStringLiteral("<h2>Help is not available</h2><p>The help needs a "
                                          "cache folder it can write to, and <b>%1</b> cannot "
                                          "be written. Make it writable and start the program "
                                          "again.</p>")
                                   .arg(QDir::toNativeSeparators(cacheFolder()).toHtmlEscaped()));
        return;
    }
    const QString file = g_helpFile.isEmpty() ? QStringLiteral("BdwIVRS.qch") : g_helpFile;
    m_browser->setHtml(QStringLiteral("<h2>Help is not available</h2><p>The help file "
                                      "<b>%1</b> could not be found or read. Reinstall the "
                                      "program to restore it.</p>")
                               .arg(file.toHtmlEscaped()));
}

void HelpWindow::open(const QUrl &url)
{
    m_browser->setSource(url);
}

void HelpWindow::showTopic(const QString &topic)
{
    if (!m_engine)
        showMissing();
    else
        open(QUrl(QStringLiteral("qthelp://%1/doc/%2").arg(m_namespace, topic)));
    show();
    raise();
    activateWindow();
}

QUrl HelpWindow::currentUrl() const
{
    return m_browser->source();
}

QString HelpWindow::pageText() const
{
    return m_browser->toPlainText();
}

} // namespace ivr
