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

class tst_frmIVR : public QObject
{
    Q_OBJECT

private slots:
    void fieldCheck_data();
    void fieldCheck();
    void requestLine_data();
    void requestLine();
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

private:
    static void fill(frmIVR &form, const Fields &fields);
    template<typename T>
    static T *child(frmIVR &form, const char *name)
    {
        T *widget = form.findChild<T *>(QLatin1String(name));
        if (!widget)
            qFatal("no %s on the form", name);
        return widget;
    }
};

void tst_frmIVR::fill(frmIVR &form, const Fields &changes)
{
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

void tst_frmIVR::fieldCheck_data()
{
    QTest::addColumn<Fields>("fields");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QString>("focus");
    auto row = [](const char *name,
                  const Fields &f,
                  const char *message = "",
                  QMessageBox::Icon icon = QMessageBox::Information,
                  const char *focus = "") {
        QTest::newRow(name) << f << QString(message) << icon << QString(focus);
    };
    const char *badName = "Please enter a correct name.";
    const char *badPhone = "Please enter a correct Phone Number.";
    const char *badEmail = "Please enter correct Email Address";
    const auto none = QMessageBox::NoIcon;
    row("blank-name-counts-as-empty",
        {{"txtName", "   "}},
        "Please enter Name",
        QMessageBox::Information,
        "txtName");
    row("digit-in-name-without-icon", {{"txtName", "Ann2"}}, badName, none, "txtName");
    row("letter-beyond-z-refused", {{"txtName", "Zoë"}}, badName, none, "txtName");
    row("dotless-i-not-taken-for-I", {{"txtName", "Iıa"}}, badName, none, "txtName");
    row("name-checked-before-company",
        {{"txtName", "Ann2"}, {"txtCo", ""}},
        badName,
        none,
        "txtName");
    row("blank-company",
        {{"txtCo", " "}},
        "Please enter Company Name",
        QMessageBox::Information,
        "txtCo");
    row("empty-phone",
        {{"txtPhone", ""}},
        "Please enter Phone Number",
        QMessageBox::Information,
        "txtPhone");
    row("blank-inside-phone",
        {{"txtPhone", "555 1234"}},
        badPhone,
        QMessageBox::Information,
        "txtPhone");
    row("phone-checked-as-typed-not-trimmed",
        {{"txtPhone", "555-1234 "}},
        badPhone,
        QMessageBox::Information,
        "txtPhone");
    row("brackets-in-fax",
        {{"txtFax", "(020)"}},
        "Please enter a correct Fax Number.",
        QMessageBox::Information,
        "txtFax");
    row("letter-in-mobile",
        {{"txtMobile", "07x"}},
        "Please enter a correct Mobile Number.",
        QMessageBox::Information,
        "txtMobile");
    row("blank-email",
        {{"txtEmail", "  "}},
        "Please enter Email Address",
        QMessageBox::Information,
        "txtEmail");
    row("email-without-dot",
        {{"txtEmail", "ann@acme"}},
        badEmail,
        QMessageBox::Information,
        "txtEmail");
    row("email-without-at",
        {{"txtEmail", "ann.acme.com"}},
        badEmail,
        QMessageBox::Information,
        "txtEmail");
    row("empty-requirement-focuses-email",
        {{"txtReq", " \n "}},
        "Please enter requirement",
        QMessageBox::Information,
        "txtEmail");
    // Accepted: no message, the request goes out.
    row("hyphens-between-phone-digits-pass", {{"txtPhone", "020-555-1234"}});
    row("at-and-dot-are-enough", {{"txtEmail", "@."}});
    row("blanks-and-either-case-in-name-pass", {{"txtName", " ann LEE "}});
    row("blank-optional-numbers-not-checked",
        {{"txtFax", "  "}, {"txtMobile", " "}, {"txtAdd", ""}});
    row("address-never-checked", {{"txtAdd", "12 (rear) #3, +x"}});
}

void tst_frmIVR::fieldCheck()
{
    QFETCH(Fields, fields);
    QFETCH(QString, message);
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QString, focus);
    ProgramFolder folder({Flags::Shown});
    AnswerServer server;
    MessageRecorder recorder;
    frmIVR form(server.address());
    form.show();
    fill(form, fields);
    child<QLineEdit>(form, "txtCo")->setFocus();
    QTest::mouseClick(child<QPushButton>(form, "cmdSubmit"), Qt::LeftButton);

    if (message.isEmpty()) {
        QCOMPARE(recorder.count(), 0);
        QTRY_COMPARE(server.requestLines.size(), 1);
        return;
    }
    QCOMPARE(recorder.count(), 1);
    QCOMPARE(recorder.lastText(), message);
    QCOMPARE(recorder.messages().constFirst().icon, icon);
    QCOMPARE(recorder.messages().constFirst().title, QStringLiteral("IVR Script Designer"));
    QVERIFY(form.focusWidget());
    QCOMPARE(form.focusWidget()->objectName(), focus);
    QVERIFY2(child<QGroupBox>(form, "frFields")->isVisible(), "a refused check keeps the fields");
    QVERIFY(!child<QGroupBox>(form, "frIntExp")->isVisible());
}

void tst_frmIVR::requestLine_data()
{
    QTest::addColumn<Fields>("fields");
    QTest::addColumn<QByteArray>("query");
    const QByteArray head
            = "name=Ann&coname=Acme&address=Main%20Street&Phone=555-1234&fax=&mobile=";
    const QByteArray tail = "&email=ann@acme.com&req=";
    QTest::newRow("keys-in-order-with-capital-Phone") << Fields() << head + tail + "IVR";
    QTest::newRow("fields-sent-trimmed")
            << Fields{{"txtName", "  Ann "}, {"txtReq", "\n IVR \n"}} << head + tail + "IVR";
    // What HTTP cannot carry raw: a blank and a line break are percent-encoded.
    QTest::newRow("newline-in-requirement")
            << Fields{{"txtReq", "call me\nsoon"}} << head + tail + "call%20me%0Asoon";
    // An ampersand is not escaped: the page sees one key more.
    QTest::newRow("ampersand-goes-unescaped")
            << Fields{{"txtCo", "Smith&Sons"}}
            << QByteArray(head).replace("Acme", "Smith&Sons") + tail + "IVR";
    // A "#" starts the fragment, which never leaves the client: the query is
    // cut off there.
    QTest::newRow("hash-cuts-the-query")
            << Fields{{"txtReq", "lines #1 and #2"}} << head + tail + "lines%20";
}

void tst_frmIVR::requestLine()
{
    QFETCH(Fields, fields);
    QFETCH(QByteArray, query);
    ProgramFolder folder({Flags::Shown});
    AnswerServer server;
    MessageRecorder recorder;
    frmIVR form(server.address());
    form.show();
    fill(form, fields);
    QTest::mouseClick(child<QPushButton>(form, "cmdSubmit"), Qt::LeftButton);
    QTRY_COMPARE(server.requestLines.size(), 1);
    QCOMPARE(server.requestLines.constFirst(), "GET /mailsend.asp?" + query + " HTTP/1.1");
    QCOMPARE(recorder.count(), 0);
}

void tst_frmIVR::answerReplacesFields()
{
    ProgramFolder folder({Flags::Shown});
    AnswerServer server;
    MessageRecorder recorder;
    frmIVR form(server.address());
    form.show();
    fill(form, Fields());
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
    QCOMPARE(server.requestLines.size(), 1);
}

void tst_frmIVR::networkFailureShownInPane()
{
    ProgramFolder folder({Flags::Shown});
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const QString address = QStringLiteral("127.0.0.1:%1").arg(closed.serverPort());
    closed.close();
    MessageRecorder recorder;
    frmIVR form(address);
    form.show();
    fill(form, Fields());
    QTest::mouseClick(child<QPushButton>(form, "cmdSubmit"), Qt::LeftButton);
    auto *wb = child<QTextBrowser>(form, "wb");
    QTRY_VERIFY(wb->toPlainText().contains(QStringLiteral("could not be sent")));
    QVERIFY(child<QGroupBox>(form, "frIntExp")->isVisible());
    QCOMPARE(recorder.count(), 0);
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
