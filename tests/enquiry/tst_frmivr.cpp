#include "calllog.h"
#include "frmivr.h"
#include "ivrerror.h"
#include "messagerecorder.h"
#include "programfolder.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

using namespace ivr;
using Flags = ProgramFolder::Options::Flags;

// A small web server on 127.0.0.1 that keeps the request line of every GET
// and answers with a short HTML page.
class AnswerServer : public QObject
{
    Q_OBJECT

public:
    AnswerServer()
    {
        m_server.listen(QHostAddress::LocalHost);
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *socket = m_server.nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
        });
    }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(m_server.serverPort()); }
    void close() { m_server.close(); }
    QList<QByteArray> requestLines;

private:
    void serve(QTcpSocket *socket)
    {
        m_pending[socket] += socket->readAll();
        const QByteArray head = m_pending[socket];
        if (!head.contains("\r\n\r\n"))
            return;
        requestLines << head.left(head.indexOf("\r\n"));
        const QByteArray page = "<html><body><h1>Thank you</h1><p>We will call you.</p>"
                                "<p><a href=\"http://127.0.0.1:1/elsewhere\">More</a></p>"
                                "</body></html>";
        socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\n"
                      "Connection: close\r\nContent-Length: "
                      + QByteArray::number(page.size()) + "\r\n\r\n" + page);
        socket->disconnectFromHost();
        m_pending.remove(socket);
    }
    QTcpServer m_server;
    QHash<QTcpSocket *, QByteArray> m_pending;
};

// Stands in for the mail program.
class MailHandler : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;
public slots:
    void open(const QUrl &url) { opened << url; }
};

// The form's fields by box name; a row names only what it changes from a
// valid enquiry.
using Fields = QMap<QString, QString>;

template<typename T>
static T *child(QWidget &form, const char *name)
{
    T *widget = form.findChild<T *>(QLatin1String(name));
    if (!widget)
        qFatal("no %s on the form", name);
    return widget;
}

// The form on a program folder of its own, talking to a server of the test's,
// shown and filled from a valid enquiry with the given changes.
struct Enquiry
{
    explicit Enquiry(const Fields &changes = {});
    ProgramFolder folder{{Flags::Shown}};
    AnswerServer server;
    MessageRecorder recorder;
    frmIVR form{server.address()};
};

class tst_frmIVR : public QObject
{
    Q_OBJECT

private slots:
    void submit_data();
    void submit();
    void answerReplacesFields();
    void networkFailureShownInPane();
    void hideStoresFlag_data();
    void hideStoresFlag();
    void hideFailureReachesCaller();
    void onlyHideEndsForm_data();
    void onlyHideEndsForm();
    void requirementStopsAt200_data();
    void requirementStopsAt200();
    void mailLinkOpensMailProgram();
};

Enquiry::Enquiry(const Fields &changes)
{
    form.show();
    Fields fields{{"txtName", "Ann"},
                  {"txtCo", "Acme"},
                  {"txtAdd", "Main Street"},
                  {"txtPhone", "555-1234"},
                  {"txtFax", ""},
                  {"txtMobile", ""},
                  {"txtEmail", "ann@acme.com"}};
    fields.insert(changes);
    fields.remove(QStringLiteral("txtReq"));
    for (auto it = fields.cbegin(); it != fields.cend(); ++it)
        child<QLineEdit>(form, qPrintable(it.key()))->setText(it.value());
    child<QPlainTextEdit>(form, "txtReq")->setPlainText(changes.value("txtReq", "IVR"));
}

void tst_frmIVR::submit_data()
{
    QTest::addColumn<Fields>("fields");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QByteArray>("query");
    auto refused = [](const char *name,
                      const Fields &f,
                      const char *message,
                      const char *focus,
                      QMessageBox::Icon icon = QMessageBox::Information) {
        QTest::newRow(name) << f << QString(message) << QString(focus) << icon << QByteArray();
    };
    const char *badName = "Please enter a correct name.";
    const char *badPhone = "Please enter a correct Phone Number.";
    const char *badEmail = "Please enter correct Email Address";
    const auto none = QMessageBox::NoIcon;
    refused("blank-name-counts-as-empty", {{"txtName", "   "}}, "Please enter Name", "txtName");
    refused("digit-in-name-without-icon", {{"txtName", "Ann2"}}, badName, "txtName", none);
    refused("letter-beyond-z-refused", {{"txtName", "Zoë"}}, badName, "txtName", none);
    refused("dotless-i-not-taken-for-I", {{"txtName", "Iıa"}}, badName, "txtName", none);
    refused("name-checked-before-company",
            {{"txtName", "A2"}, {"txtCo", ""}},
            badName,
            "txtName",
            none);
    refused("blank-company", {{"txtCo", " "}}, "Please enter Company Name", "txtCo");
    refused("empty-phone", {{"txtPhone", ""}}, "Please enter Phone Number", "txtPhone");
    refused("blank-inside-phone", {{"txtPhone", "555 1234"}}, badPhone, "txtPhone");
    refused("phone-checked-untrimmed", {{"txtPhone", "555-1234 "}}, badPhone, "txtPhone");
    refused("brackets-in-fax",
            {{"txtFax", "(020)"}},
            "Please enter a correct Fax Number.",
            "txtFax");
    refused("letter-in-mobile",
            {{"txtMobile", "07x"}},
            "Please enter a correct Mobile Number.",
            "txtMobile");
    refused("blank-email", {{"txtEmail", "  "}}, "Please enter Email Address", "txtEmail");
    refused("email-without-dot", {{"txtEmail", "ann@acme"}}, badEmail, "txtEmail");
    refused("email-without-at", {{"txtEmail", "ann.acme.com"}}, badEmail, "txtEmail");
    refused("empty-requirement-focuses-email",
            {{"txtReq", " \n "}},
            "Please enter requirement",
            "txtEmail");

    // Accepted: no message, and this exact request line goes out.
    auto sent = [](const char *name, const Fields &f, const QByteArray &query) {
        QTest::newRow(name) << f << QString() << QString() << QMessageBox::NoIcon << query;
    };
    const QByteArray plain = "name=Ann&coname=Acme&address=Main%20Street&Phone=555-1234&fax="
                             "&mobile=&email=ann@acme.com&req=IVR";
    auto with = [&](const char *from, const char *to) {
        return QByteArray(plain).replace(from, to);
    };
    sent("keys-in-order-with-capital-Phone", {}, plain);
    sent("fields-sent-trimmed", {{"txtName", "  Ann "}, {"txtReq", "\n IVR \n"}}, plain);
    sent("hyphens-between-phone-digits-pass",
         {{"txtPhone", "020-555-1234"}},
         with("555-1234", "020-555-1234"));
    sent("at-and-dot-are-enough", {{"txtEmail", "@."}}, with("ann@acme.com", "@."));
    sent("blank-optional-numbers-and-address-not-checked",
         {{"txtFax", "  "}, {"txtMobile", " "}, {"txtAdd", "12 (rear) +x"}},
         with("Main%20Street", "12%20(rear)%20+x"));
    // What HTTP cannot carry raw: a blank and a line break are percent-encoded.
    sent("newline-in-requirement",
         {{"txtReq", "call me\nsoon"}},
         with("req=IVR", "req=call%20me%0Asoon"));
    // An ampersand is not escaped: the page sees one key more.
    sent("ampersand-goes-unescaped", {{"txtCo", "Smith&Sons"}}, with("Acme&", "Smith&Sons&"));
    // A "#" starts the fragment, which never leaves the client: the query is cut off there.
    sent("hash-cuts-the-query", {{"txtReq", "lines #1 and #2"}}, with("req=IVR", "req=lines%20"));
}

void tst_frmIVR::submit()
{
    QFETCH(Fields, fields);
    QFETCH(QString, message);
    QFETCH(QString, focus);
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QByteArray, query);
    Enquiry e(fields);
    child<QLineEdit>(e.form, "txtCo")->setFocus();
    QTest::mouseClick(child<QPushButton>(e.form, "cmdSubmit"), Qt::LeftButton);
    if (message.isEmpty()) {
        QCOMPARE(e.recorder.count(), 0);
        QTRY_COMPARE(e.server.requestLines.size(), 1);
        QCOMPARE(e.server.requestLines.constFirst(), "GET /mailsend.asp?" + query + " HTTP/1.1");
        return;
    }
    QCOMPARE(e.recorder.count(), 1);
    QCOMPARE(e.recorder.lastText(), message);
    QCOMPARE(e.recorder.messages().constFirst().icon, icon);
    QCOMPARE(e.recorder.messages().constFirst().title, QStringLiteral("IVR Script Designer"));
    QVERIFY(e.form.focusWidget());
    QCOMPARE(e.form.focusWidget()->objectName(), focus);
    QVERIFY2(child<QGroupBox>(e.form, "frFields")->isVisible(), "a refused check keeps the fields");
    QVERIFY(!child<QGroupBox>(e.form, "frIntExp")->isVisible());
}

void tst_frmIVR::answerReplacesFields()
{
    Enquiry e;
    frmIVR &form = e.form;
    const QString shots = QCoreApplication::applicationDirPath();
    QVERIFY(form.grab().save(shots + QStringLiteral("/enquiry-fields.png")));

    QTest::mouseClick(child<QPushButton>(form, "cmdSubmit"), Qt::LeftButton);
    auto *wb = child<QTextBrowser>(form, "wb");
    QTRY_VERIFY(wb->toPlainText().contains(QStringLiteral("We will call you.")));
    QVERIFY(child<QGroupBox>(form, "frIntExp")->isVisible());
    QVERIFY2(!child<QGroupBox>(form, "frFields")->isVisible(),
             "the answer takes the fields' place");
    QVERIFY(!child<QGroupBox>(form, "frFields")->isEnabled());
    QVERIFY(form.grab().save(shots + QStringLiteral("/enquiry-answer.png")));

    // A link in the answer page must not carry the pane away on its own.
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QSignalSpy followed(wb, &QTextBrowser::anchorClicked);
    QSignalSpy sourceChanged(wb, &QTextBrowser::sourceChanged);
    wb->setFocus(Qt::TabFocusReason);
    QTest::keyClick(wb, Qt::Key_Tab);
    QTest::keyClick(wb, Qt::Key_Return);
    QCOMPARE(followed.count(), 1);
    QCOMPARE(sourceChanged.count(), 0);
    QVERIFY(wb->toPlainText().contains(QStringLiteral("We will call you.")));
    QCOMPARE(e.server.requestLines.size(), 1);
}

void tst_frmIVR::networkFailureShownInPane()
{
    Enquiry e;
    e.server.close();
    QTest::mouseClick(child<QPushButton>(e.form, "cmdSubmit"), Qt::LeftButton);
    QTRY_VERIFY(child<QTextBrowser>(e.form, "wb")->toPlainText().contains("could not be sent"));
    QVERIFY(child<QGroupBox>(e.form, "frIntExp")->isVisible());
    QCOMPARE(e.recorder.count(), 0);
}

void tst_frmIVR::hideStoresFlag_data()
{
    QTest::addColumn<Flags>("flags");
    QTest::addColumn<bool>("ticked");
    QTest::newRow("ticked-box-stored-as-one") << Flags::Shown << true;
    QTest::newRow("clear-box-clears-stored-one") << Flags::Hidden << false;
    QTest::newRow("empty-table-gets-one-row") << Flags::EmptyTable << true;
    QTest::newRow("empty-table-row-even-when-clear") << Flags::EmptyTable << false;
}

void tst_frmIVR::hideStoresFlag()
{
    QFETCH(Flags, flags);
    QFETCH(bool, ticked);
    ProgramFolder folder({flags});
    MessageRecorder recorder;
    {
        frmIVR form;
        form.show();
        auto *check = child<QCheckBox>(form, "Check1");
        if (check->isChecked() != ticked)
            QTest::mouseClick(check, Qt::LeftButton);
        QCOMPARE(check->isChecked(), ticked);
        QTest::mouseClick(child<QPushButton>(form, "cmdSkip"), Qt::LeftButton);
        QVERIFY(!form.isVisible());
        QCOMPARE(form.result(), int(QDialog::Accepted));
    }
    QCOMPARE(CallLog::readShowRegForm(), ticked);
    {
        QVERIFY(CallLog::OpenCallLog());
        QSqlQuery count(CallLog::CallLogConnection());
        QVERIFY(count.exec(QStringLiteral("select count(*) from flags")));
        QVERIFY(count.next());
        QCOMPARE(count.value(0).toInt(), 1);
    }
    CallLog::CloseCallLog();

    frmIVR next;
    QCOMPARE(child<QCheckBox>(next, "Check1")->isChecked(), ticked);
    QCOMPARE(recorder.count(), 0);
}

void tst_frmIVR::hideFailureReachesCaller()
{
    ProgramFolder folder({Flags::Shown});
    frmIVR form;
    QVERIFY(QFile::remove(folder.file(QStringLiteral("CallLog.db"))));
    QTimer::singleShot(0, &form, [&form] {
        QTest::mouseClick(child<QPushButton>(form, "cmdSkip"), Qt::LeftButton);
    });
    QVERIFY_THROWS_EXCEPTION(IvrError, form.exec());
    QVERIFY(!form.isVisible());
    QVERIFY2(!QFile::exists(folder.file(QStringLiteral("CallLog.db"))),
             "a missing database is never made afresh");
}

void tst_frmIVR::onlyHideEndsForm_data()
{
    QTest::addColumn<bool>("escape");
    QTest::newRow("escape-key-ignored") << true;
    QTest::newRow("window-close-ignored") << false;
}

void tst_frmIVR::onlyHideEndsForm()
{
    QFETCH(bool, escape);
    ProgramFolder folder({Flags::Shown});
    frmIVR form;
    QSignalSpy finished(&form, &QDialog::finished);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    if (escape)
        QTest::keyClick(child<QLineEdit>(form, "txtName"), Qt::Key_Escape);
    else
        QVERIFY(!form.close());
    QVERIFY(form.isVisible());
    QCOMPARE(finished.count(), 0);
    QVERIFY(form.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void tst_frmIVR::requirementStopsAt200_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("expected");
    const QString a199(199, QLatin1Char('a'));
    QTest::newRow("typing-past-limit-stops")
            << a199 << 199 << QStringLiteral("xyz") << QString() << a199 + QLatin1Char('x');
    QTest::newRow("paste-past-limit-cut")
            << QString() << 0 << QString() << QString(250, QLatin1Char('p'))
            << QString(200, QLatin1Char('p'));
    QTest::newRow("paste-in-middle-keeps-what-was-there")
            << QString(190, QLatin1Char('a')) << 10 << QString() << QString(20, QLatin1Char('b'))
            << QString(10, QLatin1Char('a')) + QString(10, QLatin1Char('b'))
                       + QString(180, QLatin1Char('a'));
}

void tst_frmIVR::requirementStopsAt200()
{
    QFETCH(QString, before);
    QFETCH(int, cursor);
    QFETCH(QString, typed);
    QFETCH(QString, pasted);
    QFETCH(QString, expected);
    ProgramFolder folder({Flags::Shown});
    frmIVR form;
    form.show();
    auto *req = child<QPlainTextEdit>(form, "txtReq");
    req->setPlainText(before);
    QTextCursor at = req->textCursor();
    at.setPosition(cursor);
    req->setTextCursor(at);
    req->setFocus();
    if (!typed.isEmpty())
        QTest::keyClicks(req, typed);
    if (!pasted.isEmpty()) {
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keySequence(req, QKeySequence::Paste);
    }
    QCOMPARE(req->toPlainText(), expected);
}

void tst_frmIVR::mailLinkOpensMailProgram()
{
    ProgramFolder folder({Flags::Shown});
    MailHandler handler;
    QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &handler, "open");
    auto unset = qScopeGuard([] { QDesktopServices::unsetUrlHandler(QStringLiteral("mailto")); });
    frmIVR form;
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *label = child<QLabel>(form, "Label3");
    QVERIFY(label->text().contains(frmIVR::mailbox()));
    // Reached by keyboard: Tab onto the link, Return follows it.
    label->setFocus(Qt::TabFocusReason);
    QTest::keyClick(label, Qt::Key_Tab);
    QTest::keyClick(label, Qt::Key_Return);
    QCOMPARE(handler.opened.size(), 1);
    QCOMPARE(handler.opened.constFirst(), QUrl(QStringLiteral("mailto:") + frmIVR::mailbox()));
}

QTEST_MAIN(tst_frmIVR)
#include "tst_frmivr.moc"
