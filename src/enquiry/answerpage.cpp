#include "answerpage.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStringDecoder>
#include <QTextBrowser>

namespace ivr {

namespace {

QString decodePage(const QString &type, const QByteArray &body)
{
    const qsizetype at = type.indexOf(QLatin1String("charset="), 0, Qt::CaseInsensitive);
    if (at >= 0) {
        const QString charset = type.mid(at + 8).section(QLatin1Char(';'), 0, 0).trimmed();
        QStringDecoder decoder(charset.toLatin1().constData());
        if (decoder.isValid())
            return decoder.decode(body);
    }
    QStringDecoder fromPage = QStringDecoder::decoderForHtml(body);
    if (fromPage.isValid())
        return fromPage.decode(body);
    return QString::fromUtf8(body);
}

bool isVoidElement(QStringView name)
{
    static const QString kVoid = QStringLiteral(
            " area base br col embed hr img input link meta param source track wbr ");
    const QString word = QLatin1Char(' ') + name.toString().toLower() + QLatin1Char(' ');
    return !name.isEmpty() && kVoid.contains(word);
}

} // namespace

AnswerPage::AnswerPage(QTextBrowser *view, QObject *parent)
    : QObject(parent)
    , m_view(view)
    , m_network(new QNetworkAccessManager(this))
{}

void AnswerPage::fetch(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(int(m_timeout.count()));
    m_body.clear();
    m_tooLarge = false;
    m_reply = m_network->get(request);
    connect(m_reply, &QNetworkReply::readyRead, this, &AnswerPage::takeData);
    connect(m_reply, &QNetworkReply::finished, this, &AnswerPage::finished);
}

void AnswerPage::takeData()
{
    // Read as it comes, so that the reply's own buffer never holds more than
    // the limit either.
    m_body += m_reply->read(kSizeLimit + 1 - m_body.size());
    if (m_body.size() > kSizeLimit) {
        m_tooLarge = true;
        m_reply->abort();
    }
}

void AnswerPage::finished()
{
    QNetworkReply *reply = m_reply;
    reply->deleteLater();
    if (!m_tooLarge && reply->isOpen())
        m_body += reply->read(kSizeLimit + 1 - m_body.size());
    if (m_tooLarge || m_body.size() > kSizeLimit) {
        showText(tr("The enquiry was sent, but the answer page is larger than %1 KiB and is "
                    "not shown.")
                         .arg(kSizeLimit / 1024),
                 QString());
        return;
    }
    const auto error = reply->error();
    if (error != QNetworkReply::NoError && m_body.isEmpty()) {
        const QString reason = error == QNetworkReply::OperationCanceledError
                                               || error == QNetworkReply::TimeoutError
                                       ? tr("The server did not answer within %1 seconds.")
                                                 .arg(double(m_timeout.count()) / 1000.0)
                                       : reply->errorString();
        showText(tr("The enquiry could not be sent.\n\n%1").arg(reason), QString());
        return;
    }
    show(reply->header(QNetworkRequest::ContentTypeHeader).toString(), m_body);
}

void AnswerPage::show(const QString &type, const QByteArray &body)
{
    const QString page = decodePage(type, body);
    if (type.startsWith(QLatin1String("text/plain"), Qt::CaseInsensitive))
        showText(page, QString());
    else if (page.size() > kPageLimit)
        showText(textOf(page), tr("The answer page is too large to be shown as a page."));
    else if (nestingDepth(page, kNestingLimit) > kNestingLimit)
        showText(textOf(page), tr("The answer page is nested too deeply to be shown as a page."));
    else
        m_view->setHtml(page);
}

void AnswerPage::showText(QString text, const QString &note)
{
    const bool shortened = text.size() > kPageLimit;
    text.truncate(kPageLimit);
    // Line breaking in the text view slows down with the square of a run
    // without blanks: no run is left longer than a line.
    constexpr int kLongestRun = 100;
    int run = 0;
    QString shown;
    shown.reserve(text.size() + text.size() / kLongestRun);
    for (const QChar c : std::as_const(text)) {
        run = c.isSpace() ? 0 : run + 1;
        if (run > kLongestRun) {
            shown += QLatin1Char('\n');
            run = 1;
        }
        shown += c;
    }
    if (shortened)
        shown += QStringLiteral("\n[...]");
    m_view->setPlainText(note.isEmpty() ? shown : note + QStringLiteral("\n\n") + shown);
}

QString AnswerPage::textOf(const QString &html)
{
    QString text;
    text.reserve(html.size());
    qsizetype at = 0;
    while (at < html.size()) {
        const qsizetype open = html.indexOf(QLatin1Char('<'), at);
        const qsizetype close = open < 0 ? -1 : html.indexOf(QLatin1Char('>'), open);
        if (close < 0) {
            text += QStringView(html).mid(at);
            break;
        }
        text += QStringView(html).mid(at, open - at);
        text += QLatin1Char(' ');
        at = close + 1;
    }
    static const char *const kEntities[][2] = {{"&lt;", "<"},
                                               {"&gt;", ">"},
                                               {"&quot;", "\""},
                                               {"&#39;", "'"},
                                               {"&nbsp;", " "},
                                               {"&amp;", "&"}};
    for (const auto &entity : kEntities)
        text.replace(QLatin1String(entity[0]), QLatin1String(entity[1]));
    return text.simplified();
}

int AnswerPage::nestingDepth(const QString &html, int limit)
{
    int depth = 0;
    int deepest = 0;
    const qsizetype size = html.size();
    qsizetype at = html.indexOf(QLatin1Char('<'));
    while (at >= 0 && at + 1 < size && deepest <= limit) {
        const bool comment = QStringView(html).mid(at, 4) == QLatin1String("<!--");
        const qsizetype close = comment ? html.indexOf(QLatin1String("-->"), at)
                                        : html.indexOf(QLatin1Char('>'), at);
        if (close < 0)
            break; // nothing after this is a whole tag
        const QChar next = html.at(at + 1);
        if (next == QLatin1Char('/')) {
            depth = std::max(depth - 1, 0);
        } else if (!comment && next.isLetter()) {
            qsizetype nameEnd = at + 1;
            while (nameEnd < close && html.at(nameEnd).isLetterOrNumber())
                ++nameEnd;
            const bool selfClosing = html.at(close - 1) == QLatin1Char('/');
            if (!selfClosing && !isVoidElement(QStringView(html).mid(at + 1, nameEnd - at - 1)))
                deepest = std::max(deepest, ++depth);
        }
        at = html.indexOf(QLatin1Char('<'), close);
    }
    return deepest;
}

} // namespace ivr
