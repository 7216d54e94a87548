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
#include <QScreen>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTextBrowser>

using namespace ivr;
using Flags = ProgramFolder::Options::Flags;

// Keeps the request line of every GET on 127.0.0.1 and answers it: with a
// page that holds a link, with a body that never ends, with a page nested
// far too deeply (100,000 blocks, or 20 tables, each within the last), or not
// at all.
class AnswerServer : public QTcpServer
{
public:
    enum Answer { Page, Endless, NestedDivs, NestedTables, Silent };

    explicit AnswerServer(Answer answer = Page)
        : m_answer(answer)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *s = nextPendingConnection();
            connect(s, &QTcpSocket::readyRead, this, [this, s] {
                if (!s->canReadLine() || s->property("answered").toBool())
                    return;
                s->setProperty("answered", true);
                requestLines << s->readLine().trimmed();
                reply(s);
            });
        });
    }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(serverPort()); }
    QList<QByteArray> requestLines;
    qint64 sent = 0;

private:
    void reply(QTcpSocket *s)
    {
        const QByteArray header = "HTTP/1.1 200 OK\r\nContent-Type: text/%1\r\n"
                                  "Connection: close\r\n\r\n";
        switch (m_answer) {
        case Page:
            s->write(QByteArray(header).replace("%1", "html")
                     + "<p>We will call you.</p><a href=\"http://127.0.0.1:1/x\">More</a>");
            s->disconnectFromHost();
            break;
        case NestedDivs:
        case NestedTables:
            // Left open, as HTML allows.
            s->write(QByteArray(header).replace("%1", "html")
                     + (m_answer == NestedDivs ? QByteArray("<div>").repeated(100000)
                                               : QByteArray("<table><tr><td>").repeated(20))
                     + "We will call you.");
            s->disconnectFromHost();
            break;
        case Endless:
            // Stops by itself at 64 MiB, so that a form without a limit
            // fails its test instead of the machine.
            s->write(QByteArray(header).replace("%1", "plain"));
            connect(s, &QTcpSocket::bytesWritten, s, [this, s] {
                if (s->state() == QAbstractSocket::ConnectedState && s->bytesToWrite() < 65536
                    && sent < 64 * 1024 * 1024) {
                    sent += s->write(QByteArray("more\n").repeated(13107));
                }
            });
            break;
        case Silent:
            break;
        }
    }

    Answer m_answer;
};

template<typename T>
static T *child(QWidget &form, const char *name)
{
    T *widget = form.findChild<T *>(QLatin1String(name));
    if (!widget)
        qFatal("no %s on the form", name);
    return widget;
}

// The shown form, filled with a valid enquiry and then with the changes
// given as "field=value|field=value".
struct Enquiry
{
    explicit Enquiry(const QString &changes = {}, AnswerServer::Answer answer = AnswerServer::Page)
        : server(answer)
    {
        form.show();
        fill("txtName=Ann|txtCo=Acme|txtAdd=Main Street|txtPhone=555-1234|txtFax=|txtMobile=|"
             "txtEmail=ann@acme.com|txtReq=IVR");
        fill(changes);
    }
    void fill(const QString &changes)
    {
        for (const QString &pair : changes.split('|', Qt::SkipEmptyParts)) {
            const QString name = pair.section('=', 0, 0);
            const QString value = pair.section('=', 1);
            if (auto *line = form.findChild<QLineEdit *>(name))
                line->setText(value);
            else
                child<QPlainTextEdit>(form, qPrintable(name))->setPlainText(value);
        }
    }
    QString submit()
    {
        recorder.clear();
        QTest::mouseClick(child<QPushButton>(form, "cmdSubmit"), Qt::LeftButton);
        return recorder.lastText();
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
    void checksRunInTableOrder();
    void centredOnOwnerOrScreen_data();
    void centredOnOwnerOrScreen();
    void answerPageHasLimits_data();
    void answerPageHasLimits();
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
    QTest::addColumn<QString>("changes");
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
        QTest::newRow(row) << QString(field) + '=' + value << QString(message) << icon
                           << QString(focus ? focus : field) << QByteArray();
    };
    const char *badName = "Please enter a correct name.";
    const auto noIcon = QMessageBox::NoIcon;
    refused("blank-name-counts-as-empty", "txtName", "   ", "Please enter Name");
    refused("digit-in-name-without-icon", "txtName", "Ann2", badName, noIcon);
    refused("letter-beyond-z-refused", "txtName", "Zoë", badName, noIcon);
    refused("dot-in-name-refused", "txtName", "A. Smith", badName, noIcon);
    refused("blank-company-counts-as-empty", "txtCo", "  ", "Please enter Company Name");
    refused("blank-phone-counts-as-empty", "txtPhone", " ", "Please enter Phone Number");
    refused("blank-inside-phone", "txtPhone", "555 1234", "Please enter a correct Phone Number.");
    refused("bracket-in-fax", "txtFax", "(01)234", "Please enter a correct Fax Number.");
    refused("letter-in-mobile", "txtMobile", "07x", "Please enter a correct Mobile Number.");
    refused("blank-email-counts-as-empty", "txtEmail", "  ", "Please enter Email Address");
    refused("email-without-at", "txtEmail", "ann.acme", "Please enter correct Email Address");
    refused("email-without-dot", "txtEmail", "ann@acme", "Please enter correct Email Address");
    refused("empty-requirement-focuses-email",
            "txtReq",
            " \n ",
            "Please enter requirement",
            QMessageBox::Information,
            "txtEmail");

    auto sent = [](const char *row, const char *changes, const QByteArray &query) {
        QTest::newRow(row) << QString(changes) << QString() << QMessageBox::NoIcon << QString()
                           << query;
    };
    const QByteArray plain = "name=Ann&coname=Acme&address=Main%20Street&Phone=555-1234&fax="
                             "&mobile=&email=ann@acme.com&req=";
    sent("keys-in-order-with-capital-Phone", "", plain + "IVR");
    sent("each-field-under-its-own-key",
         "txtName= Bo |txtCo= Bee Co |txtAdd= 1 Hill |txtFax=555-2|txtMobile=07-3|txtEmail= @. "
         "|txtReq= R ",
         "name=Bo&coname=Bee%20Co&address=1%20Hill&Phone=555-1234&fax=555-2&mobile=07-3"
         "&email=@.&req=R");
    sent("newline-in-requirement", "txtReq=call me\nsoon", plain + "call%20me%0Asoon");
    sent("ampersand-goes-unescaped", "txtReq=R&D", plain + "R&D");
    // The fragment never leaves the client: the query ends at the "#".
    sent("hash-cuts-the-query", "txtReq=lines #1 and #2", plain + "lines%20");
}

void tst_frmIVR::submit()
{
    QFETCH(QString, changes);
    QFETCH(QString, message);
    QFETCH(QMessageBox::Icon, icon);
    QFETCH(QString, focus);
    QFETCH(QByteArray, query);
    Enquiry e(changes);
    // The address box is never where a check sends the focus.
    child<QLineEdit>(e.form, "txtAdd")->setFocus();
    QCOMPARE(e.submit(), message);
    if (message.isEmpty()) {
        QCOMPARE(e.recorder.count(), 0);
        QTRY_COMPARE(e.server.requestLines.size(), 1);
        QCOMPARE(e.server.requestLines.constFirst(), "GET /mailsend.asp?" + query + " HTTP/1.1");
        return;
    }
    QCOMPARE(e.recorder.count(), 1);
    QCOMPARE(e.recorder.messages().constFirst().icon, icon);
    QVERIFY(e.form.focusWidget());
    QCOMPARE(e.form.focusWidget()->objectName(), focus);
    QVERIFY(child<QGroupBox>(e.form, "frFields")->isVisible());
}

void tst_frmIVR::checksRunInTableOrder()
{
    // Every check fails at first; each mend lets the next one speak.
    Enquiry e("txtName=|txtCo=|txtPhone=|txtFax=x|txtMobile=x|txtEmail=|txtReq=");
    const char *const steps[][2] = {
            {"", "Please enter Name"},
            {"txtName=Ann2", "Please enter a correct name."},
            {"txtName=Ann", "Please enter Company Name"},
            {"txtCo=Acme", "Please enter Phone Number"},
            {"txtPhone=5 5", "Please enter a correct Phone Number."},
            {"txtPhone=555", "Please enter a correct Fax Number."},
            {"txtFax=", "Please enter a correct Mobile Number."},
            {"txtMobile=", "Please enter Email Address"},
            {"txtEmail=ann", "Please enter correct Email Address"},
            {"txtEmail=ann@acme.com", "Please enter requirement"},
            {"txtReq=IVR", ""},
    };
    for (const auto &step : steps) {
        e.fill(step[0]);
        QCOMPARE(e.submit(), QString(step[1]));
    }
    QTRY_COMPARE(e.server.requestLines.size(), 1);
}

void tst_frmIVR::centredOnOwnerOrScreen_data()
{
    QTest::addColumn<bool>("owned");
    QTest::newRow("frame-guessed-beside-a-framed-window") << false;
    QTest::newRow("owner-frame-ignored") << true;
}

void tst_frmIVR::centredOnOwnerOrScreen()
{
    QFETCH(bool, owned);
    ProgramFolder folder({Flags::Shown});
    // A window with a frame on the screen is what Qt guesses a dialog's frame from.
    QWidget owner;
    owner.setGeometry(130, 90, 600, 500);
    owner.show();
    QVERIFY(QTest::qWaitForWindowExposed(&owner));
    frmIVR form(QString(), owned ? &owner : nullptr);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    const QRect area = owned ? owner.frameGeometry() : form.screen()->geometry();
    const QRect placed = form.frameGeometry();
    QCOMPARE(placed.size(), QSize(7155 / 15, 6360 / 15));
    QCOMPARE(form.geometry(), placed); // no frame of its own
    // As much room on either side, but for an odd pixel.
    QVERIFY(std::abs((placed.left() - area.left()) - (area.right() - placed.right())) <= 1);
    QVERIFY(std::abs((placed.top() - area.top()) - (area.bottom() - placed.bottom())) <= 1);
}

void tst_frmIVR::answerPageHasLimits_data()
{
    QTest::addColumn<AnswerServer::Answer>("answer");
    QTest::addColumn<QString>("shown");
    QTest::newRow("endless-body-kept-whole") << AnswerServer::Endless << "larger than 1024 KiB";
    QTest::newRow("deep-blocks-laid-out") << AnswerServer::NestedDivs << "too large to be shown";
    QTest::newRow("deep-tables-laid-out") << AnswerServer::NestedTables << "nested too deeply";
    QTest::newRow("silent-server-waited-for") << AnswerServer::Silent << "did not answer";
}

void tst_frmIVR::answerPageHasLimits()
{
    QFETCH(AnswerServer::Answer, answer);
    QFETCH(QString, shown);
    Enquiry e({}, answer);
    e.form.setAnswerTimeout(std::chrono::milliseconds(300));
    QCOMPARE(e.submit(), QString());
    auto *wb = child<QTextBrowser>(e.form, "wb");
    QTRY_VERIFY2(wb->toPlainText().contains(shown), qPrintable(wb->toPlainText().left(200)));
    if (answer == AnswerServer::NestedDivs || answer == AnswerServer::NestedTables)
        QVERIFY(wb->toPlainText().contains("We will call you."));
    // Cut off near the limit, not taken in whole until the server gives up.
    QVERIFY2(e.server.sent < 16 * 1024 * 1024, qPrintable(QString::number(e.server.sent)));
    // The way out still works.
    QTest::mouseClick(child<QPushButton>(e.form, "cmdSkip"), Qt::LeftButton);
    QVERIFY(!e.form.isVisible());
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
