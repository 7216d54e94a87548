#pragma once

#include <QString>
#include <QUrl>
#include <QWidget>

class QHelpEngine;
class QTextBrowser;
class QTabWidget;

namespace ivr {

// The program's own help viewer over the compiled help beside the program:
// contents, index and full-text search on the left, the topic on the right.
// Its collection file and search index are made at first use in the user's
// cache folder; nothing of it is touched before the user asks for help.
class HelpWindow : public QWidget
{
    Q_OBJECT

public:
    // The help file of the program (set at start-up).
    static void setHelpFile(const QString &path);
    static QString helpFile();
    // The topic page of a help context number; empty for an unknown one.
    static QString topicForContext(int context);

    // The one help window, made at first use. Its owner (the main window)
    // takes it along when it goes, so that the process ends with its last form.
    static HelpWindow *instance(QWidget *owner);
    // The help window if it is open, without making one.
    static HelpWindow *existing();
    ~HelpWindow() override;

    // Shows the window at a topic such as "bdw_d_designer.htm". A missing or
    // unreadable help file is said in the window itself.
    void showTopic(const QString &topic);

    bool helpFound() const { return m_engine != nullptr; }
    QUrl currentUrl() const;
    QString pageText() const;
    QHelpEngine *engine() const { return m_engine; }

private:
    explicit HelpWindow(QWidget *parent = nullptr);
    void setUpEngine();
    void showMissing();
    void open(const QUrl &url);

    QHelpEngine *m_engine = nullptr;
    QString m_namespace;
    QString m_registeredFile;
    QTextBrowser *m_browser = nullptr;
    QTabWidget *m_tabs = nullptr;
};

} // namespace ivr
