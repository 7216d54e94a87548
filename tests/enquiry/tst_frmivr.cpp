#include "calllog.h"
#include "frmivr.h"
#include "messagerecorder.h"
#include "programfolder.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
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

using namespace ivr;
using Flags = ProgramFolder::Options::Flags;

// Keeps the request line of every GET on 127.0.0.1 and answers with a page
// that holds a link.
class AnswerServer : public QTcpServer
{
public:
    AnswerServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *s = nextPendingConnection();
            connect(s, &QTcpSocket::readyRead, this, [this, s] {
                if (!s->canReadLine() || s->property("answered").toBool())
                    return;
                s->setProperty("answered", true);
                requestLines << s->readLine().trimmed();
                s->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\n\r\n"
                         "<p>We will call you.</p><a href=\"http://127.0.0.1:1/x\">More</a>");
                s->disconnectFromHost();
            });
        });
    }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(serverPort()); }
    QList<QByteArray> requestLines;
};

template<typename T>
static T *child(QWidget &form, const char *name)
{
    T *widget = form.findChild<T *>(QLatin1String(name));
    if (!widget)
        qFatal("no %s on the form", name);
    return widget;
}

// The shown form, filled with a valid enquiry except for one field.
struct Enquiry
{
    explicit Enquiry(const QString &field = {}, const QString &value = {})
    {
        form.show();
        const QString valid = "txtName=Ann|txtCo=Acme|txtAdd=Main Street|txtPhone=555-1234|"
                              "txtFax=|txtMobile=|txtEmail=ann@acme.com|txtReq=IVR";
        for (const QString &pair : valid.split('|')) {
            const QString name = pair.section('=', 0, 0);
            const QString t = name == field ? value : pair.section('=', 1);
            if (auto *line = form.findChild<QLineEdit *>(name))
                line->setText(t);
            else
                child<QPlainTextEdit>(form, "txtReq")->setPlainText(t);
        }
    }
    ProgramFolder folder{{Flags::Shown}};
    AnswerServer server;
    MessageRecorder recorder;
    frmIVR form{server.address()};
};

class tst_frmIVR : public QObject
{
    Q_OBJECT

public slots:
    void openMail(const QUrl &url) { m_mailOpened << url; } // stands in for the mail program

private slots:
    void submit_data();
    void submit();
    void answerReplacesFields();
    void networkFailureShownInPane();
    void hideStoresFlag_data();
    void hideStoresFlag();
    void escapeLeavesFormUp();
    void requirementStopsAt200();
    void mailLinkOpensMailProgram();

private:
    QList<QUrl> m_mailOpened;
};

void tst_frmIVR::submit_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QString>("focus");
    QTest::addColumn<QByteArray>("query");
    auto refused = [](const char *row,
                      const char *field,
                      const char *value,
                      const char *message,
                      QMessageBox::Icon icon = QMessageBox::Information,
                      const char *focus = nullptr) {
        QTest::newRow(row) << QString(field) << QString(value) << QString(message) << icon
                           << QString(focus ? focus : field) << QByteArray();
    };
    const char *badName = "Please enter a correct name.";
    refused("blank-name-counts-as-empty", "txtName", "   ", "Please enter Name");
    refused("digit-in-name-without-icon", "txtName", "Ann2", badName, QMessageBox::NoIcon);
    refused("letter-beyond-z-refused", "txtName", "Zoë", badName, QMessageBox::NoIcon);
    refused("blank-inside-phone", "txtPhone", "555 1234", "Please enter a correct Phone Number.");
    refused("letter-in-mobile", "txtMobile", "07x", "Please enter a correct Mobile Number.");
    refused("email-without-at", "txtEmail", "ann.acme", "Please enter correct Email Address");
    refused("empty-requirement-focuses-email",
            "txtReq",
            " \n ",
            "Please enter requirement",
            QMessageBox::Information,
            "txtEmail");

    auto sent = [](const char *row, const char *field, const char *value, const QByteArray &q) {
        const QByteArray plain = "name=Ann&coname=Acme&address=Main%20Street&Phone=555-1234&fax="
                                 "&mobile=&email=ann@acme.com&req=";
        QTest::newRow(row) << QString(field) << QString(value) << QString() << QMessageBox::NoIcon
                           << QString() << plain + q;
    };
    sent("keys-in-order-with-capital-Phone", "", "", "IVR");
    sent("newline-in-requirement", "txtReq", "call me\nsoon", "call%20me%0Asoon");
    sent("ampersand-goes-unescaped", "txtReq", "R&D", "R&D");
    // The fragment never leaves the client: the query ends at the "#".
    sent("hash-cuts-the-query", "txtReq", "lines #1 and #2", "lines%20");
}

void tst_frmIVR::submit()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, message);
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QString, focus);
    QFETCH(QByteArray, query);
    Enquiry e(field, value);
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
    QVERIFY(e.form.focusWidget());
    QCOMPARE(e.form.focusWidget()->objectName(), focus);
    QVERIFY(child<QGroupBox>(e.form, "frFields")->isVisible());
}

void tst_frmIVR::answerReplacesFields()
{
    Enquiry e;
    const QString shots = QCoreApplication::applicationDirPath();
    QVERIFY(e.form.grab().save(shots + "/enquiry-fields.png"));
    QTest::mouseClick(child<QPushButton>(e.form, "cmdSubmit"), Qt::LeftButton);
    auto *wb = child<QTextBrowser>(e.form, "wb");
    QTRY_VERIFY(wb->toPlainText().contains("We will call you."));
    QVERIFY(!child<QGroupBox>(e.form, "frFields")->isVisible());
    QVERIFY(e.form.grab().save(shots + "/enquiry-answer.png"));

    // A link in the answer page does not carry the pane away.
    e.form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&e.form));
    QSignalSpy sourceChanged(wb, &QTextBrowser::sourceChanged);
    wb->setFocus(Qt::TabFocusReason);
    QTest::keyClick(wb, Qt::Key_Tab);
    QTest::keyClick(wb, Qt::Key_Return);
    QCOMPARE(sourceChanged.count(), 0);
    QVERIFY(wb->toPlainText().contains("We will call you."));
    QCOMPARE(e.server.requestLines.size(), 1);
}

void tst_frmIVR::networkFailureShownInPane()
{
    Enquiry e;
    e.server.close();
    QTest::mouseClick(child<QPushButton>(e.form, "cmdSubmit"), Qt::LeftButton);
    QTRY_VERIFY(child<QTextBrowser>(e.form, "wb")->toPlainText().contains("could not be sent"));
    QCOMPARE(e.recorder.count(), 0);
}

void tst_frmIVR::hideStoresFlag_data()
{
    QTest::addColumn<Flags>("flags");
    QTest::addColumn<bool>("ticked");
    QTest::newRow("ticked-box-not-stored-as-one") << Flags::Shown << true;
    QTest::newRow("clear-box-leaves-stored-one") << Flags::Hidden << false;
    QTest::newRow("empty-table-gets-no-row") << Flags::EmptyTable << true;
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
        QTest::mouseClick(child<QPushButton>(form, "cmdSkip"), Qt::LeftButton);
        QVERIFY(!form.isVisible());
    }
    QCOMPARE(CallLog::readShowRegForm(), ticked);
    QVERIFY(CallLog::OpenCallLog());
    QSqlQuery rows(CallLog::CallLogConnection());
    QVERIFY(rows.exec("select count(*) from flags") && rows.next());
    QCOMPARE(rows.value(0).toInt(), 1);
    CallLog::CloseCallLog();
    frmIVR next;
    QCOMPARE(child<QCheckBox>(next, "Check1")->isChecked(), ticked);
    QCOMPARE(recorder.count(), 0);
}

void tst_frmIVR::escapeLeavesFormUp()
{
    ProgramFolder folder({Flags::Shown});
    frmIVR form;
    QSignalSpy finished(&form, &QDialog::finished);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QTest::keyClick(child<QLineEdit>(form, "txtName"), Qt::Key_Escape);
    QVERIFY(!form.close());
    QVERIFY(form.isVisible());
    QCOMPARE(finished.count(), 0);
}

void tst_frmIVR::requirementStopsAt200()
{
    ProgramFolder folder({Flags::Shown});
    frmIVR form;
    form.show();
    auto *req = child<QPlainTextEdit>(form, "txtReq");
    req->setFocus();
    req->setPlainText(QString(199, 'a'));
    req->moveCursor(QTextCursor::End);
    QTest::keyClicks(req, "xyz");
    QCOMPARE(req->toPlainText(), QString(199, 'a') + 'x');
    req->clear();
    QGuiApplication::clipboard()->setText(QString(250, 'p'));
    QTest::keySequence(req, QKeySequence::Paste);
    QCOMPARE(req->toPlainText(), QString(200, 'p'));
}

void tst_frmIVR::mailLinkOpensMailProgram()
{
    ProgramFolder folder({Flags::Shown});
    QDesktopServices::setUrlHandler("mailto", this, "openMail");
    auto unset = qScopeGuard([] { QDesktopServices::unsetUrlHandler("mailto"); });
    frmIVR form;
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *label = child<QLabel>(form, "Label3");
    label->setFocus(Qt::TabFocusReason);
    QTest::keyClick(label, Qt::Key_Tab);
    QTest::keyClick(label, Qt::Key_Return);
    QCOMPARE(m_mailOpened, QList<QUrl>{QUrl("mailto:" + frmIVR::mailbox())});
}

QTEST_MAIN(tst_frmIVR)
#include "tst_frmivr.moc"
