#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>

#include <chrono>

class QNetworkAccessManager;
class QNetworkReply;
class QTextBrowser;
class QUrl;

namespace ivr {

// Fetches the enquiry server's answer and shows it in the form's browser
// pane. The form is modal and comes before the main window, and its only
// way out ("&Hide") must stay usable whatever the server does: the answer
// has a time limit, a size limit, and a page the text view would take
// minutes to lay out is shown as plain text instead.
class AnswerPage : public QObject
{
    Q_OBJECT

public:
    // What is fetched at most; more is cut off unread.
    static constexpr qsizetype kSizeLimit = 1024 * 1024;
    // What the text view lays out as a page: its time grows with the page and
    // steeply with nesting (each table in a table doubles it past eight).
    // Answer pages are a few KiB deep in a handful of elements; beyond these
    // limits the page's text is shown instead.
    static constexpr qsizetype kPageLimit = 64 * 1024;
    static constexpr int kNestingLimit = 32;

    AnswerPage(QTextBrowser *view, QObject *parent);

    void fetch(const QUrl &url);
    // How long the server may stay silent before the request is given up.
    void setTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }

    // The deepest nesting of elements in an HTML text, counted up to limit + 1.
    static int nestingDepth(const QString &html, int limit);
    // The words of an HTML text, without its markup.
    static QString textOf(const QString &html);

private:
    void takeData();
    void finished();
    void show(const QString &type, const QByteArray &body);
    void showText(QString text, const QString &note);

    QTextBrowser *m_view;
    QNetworkAccessManager *m_network;
    QPointer<QNetworkReply> m_reply;
    QByteArray m_body;
    bool m_tooLarge = false;
    std::chrono::milliseconds m_timeout{30000};
};

} // namespace ivr
