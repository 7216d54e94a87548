#include "calllog.h"
#include "frmivr.h"
#include "messagerecorder.h"
#include "programfolder.h"

#include <QtNetwork>
#include <QtTest>
#include <QtWidgets>

using namespace ivr;
using Flags = ProgramFolder::Options::Flags;

// Keeps the request line of every GET on 127.0.0.1 and answers it: with a
// page that holds a link, with a body that never ends, with a page nested
// far too deeply (100,000 blocks, or 20 tables, each within the last), or not
// at all; or listens no more.
class AnswerServer : public QTcpServer
{
public:
    enum Answer { Page, Endless, NestedDivs, NestedTables, Silent, Closed };

    explicit AnswerServer(Answer answer = Page)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            QTcpSocket *s = nextPendingConnection();
            connect(s, &QTcpSocket::readyRead, this, [this, s, answer] {
                if (!s->canReadLine() || s->property("answered").toBool())
                    return;
                s->setProperty("answered", true);
                requestLines << s->readLine().trimmed();
                reply(s, answer);
            });
        });
        address = QStringLiteral("127.0.0.1:%1").arg(serverPort());
        if (answer == Closed)
            close();
    }
    QString address;
    QList<QByteArray> requestLines;
    qint64 sent = 0;

private:
    void reply(QTcpSocket *s, Answer answer)
    {
        const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/%1\r\n"
                                "Connection: close\r\n\r\n";
        const QByteArray html = QByteArray(head).replace("%1", "html");
        if (answer == Page)
            s->write(html + "<p>We will call you.</p><a href=\"http://127.0.0.1:1/x\">More</a>");
        if (answer == NestedDivs) // left open, as HTML allows
            s->write(html + QByteArray("<div>").repeated(100000) + "We will call you.");
        if (answer == NestedTables)
            s->write(html + QByteArray("<table><tr><td>").repeated(20) + "We will call you.");
        if (answer != Endless && answer != Silent)
            s->disconnectFromHost();
        if (answer != Endless)
            return;
        // Stops by itself at 64 MiB, so that a form without a limit fails its
        // test instead of the machine.
        s->write(QByteArray(head).replace("%1", "plain"));
        connect(s, &QTcpSocket::bytesWritten, s, [this, s] {
            if (s->state() == QAbstractSocket::ConnectedState && s->bytesToWrite() < 65536
                && sent < 64 * 1024 * 1024)
                sent += s->write(QByteArray("more\n").repeated(13107));
        });
    }
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
             "txtEmail=ann@acme.com|txtReq=IVR|"
             + changes);
    }
    void fill(const QString &changes)
    {
        for (const QString &pair : changes.split('|', Qt::SkipEmptyParts)) {
            const QString name = pair.section('=', 0, 0), value = pair.section('=', 1);
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
    frmIVR form{server.address};
};

class tst_frmIVR : public QObject
{
    Q_OBJECT

public slots:
    void openMail(const QUrl &url) { m_mailOpened << url; } // stands in for the mail program

private slots:
    // A refused row also fails every field checked after its own, so that a
    // check that runs too late is heard too. The focus goes to the field
    // that failed, but for the requirement's.
    void refused_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *fault, const char *change, const char *message) {
            QTest::newRow(fault) << change << message;
        };
        const char *badName = "Please enter a correct name.";
        row("blank-name-counts-as-filled", "txtName=   ", "Please enter Name");
        row("digit-in-name-taken-or-icon-shown", "txtName=Ann2", badName);
        row("letter-beyond-z-taken", "txtName=Zoë", badName);
        row("dot-in-name-taken", "txtName=A. Smith", badName);
        row("blank-company-counts-as-filled", "txtCo=  ", "Please enter Company Name");
        row("blank-phone-counts-as-filled", "txtPhone= ", "Please enter Phone Number");
        row("blank-inside-phone-taken", "txtPhone=555 1", "Please enter a correct Phone Number.");
        row("bracket-in-fax-taken", "txtFax=(01)234", "Please enter a correct Fax Number.");
        row("letter-in-mobile-taken", "txtMobile=07x", "Please enter a correct Mobile Number.");
        row("blank-email-counts-as-filled", "txtEmail=  ", "Please enter Email Address");
        row("email-without-at-taken", "txtEmail=ann.acme", "Please enter correct Email Address");
        row("email-without-dot-taken", "txtEmail=ann@acme", "Please enter correct Email Address");
        row("empty-requirement-not-focusing-email", "txtReq= \n ", "Please enter requirement");
    }
    void refused()
    {
        QFETCH(QString, change);
        QFETCH(QString, message);
        const QStringList order{"txtName=",
                                "txtCo=",
                                "txtPhone=",
                                "txtFax=x",
                                "txtMobile=x",
                                "txtEmail=",
                                "txtReq="};
        const QString field = change.section('=', 0, 0);
        qsizetype at = 0;
        while (!order.at(at).startsWith(field + '='))
            ++at;
        Enquiry e(change + '|' + order.mid(at + 1).join('|'));
        // The address box is never where a check sends the focus.
        child<QLineEdit>(e.form, "txtAdd")->setFocus();
        QCOMPARE(e.submit(), message);
        QCOMPARE(e.recorder.count(), 1);
        // The name's character check alone speaks without an icon.
        QCOMPARE(e.recorder.messages().constFirst().icon,
                 message.contains("correct name") ? QMessageBox::NoIcon : QMessageBox::Information);
        QVERIFY(e.form.focusWidget());
        QCOMPARE(e.form.focusWidget()->objectName(), field == "txtReq" ? "txtEmail" : field);
        QVERIFY(child<QGroupBox>(e.form, "frFields")->isVisible());
        QCOMPARE(e.server.requestLines.size(), 0);
    }

    void sent_data()
    {
        QTest::addColumn<QString>("changes");
        QTest::addColumn<QByteArray>("query");
        const QByteArray plain = "name=Ann&coname=Acme&address=Main%20Street&Phone=555-1234&fax="
                                 "&mobile=&email=ann@acme.com&req=";
        QTest::newRow("field-under-another-key-or-untrimmed")
                << "txtName= Bo |txtCo= B Co |txtAdd= 1 H |txtFax=5-2|txtMobile=07|txtEmail= @. "
                   "|txtReq= R "
                << QByteArray("name=Bo&coname=B%20Co&address=1%20H&Phone=555-1234&fax=5-2&mobile=07"
                              "&email=@.&req=R");
        QTest::newRow("ampersand-escaped-or-newline-lost")
                << "txtReq=R&D\nsoon" << plain + "R&D%0Asoon";
        // The fragment never leaves the client: the query ends at the "#".
        QTest::newRow("hash-sent-in-the-query") << "txtReq=lines #1 and #2" << plain + "lines%20";
    }
    // The answer takes the fields' place, and a link in it does not carry the pane away.
    void sent()
    {
        QFETCH(QString, changes);
        QFETCH(QByteArray, query);
        Enquiry e(changes);
        const QString shots = QCoreApplication::applicationDirPath();
        QVERIFY(e.form.grab().save(shots + "/enquiry-fields.png"));
        QCOMPARE(e.submit(), QString());
        QTRY_COMPARE(e.server.requestLines.size(), 1);
        QCOMPARE(e.server.requestLines.constFirst(), "GET /mailsend.asp?" + query + " HTTP/1.1");
        auto *wb = child<QTextBrowser>(e.form, "wb");
        QTRY_VERIFY(wb->toPlainText().contains("We will call you."));
        QVERIFY(!child<QGroupBox>(e.form, "frFields")->isVisible());
        QVERIFY(e.form.grab().save(shots + "/enquiry-answer.png"));
        e.form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&e.form));
        QSignalSpy sourceChanged(wb, &QTextBrowser::sourceChanged);
        wb->setFocus(Qt::TabFocusReason);
        QTest::keyClick(wb, Qt::Key_Tab);
        QTest::keyClick(wb, Qt::Key_Return);
        QCOMPARE(sourceChanged.count(), 0);
        QVERIFY(wb->toPlainText().contains("We will call you."));
        QCOMPARE(e.server.requestLines.size(), 1);
        QCOMPARE(e.recorder.count(), 0);
    }

    void centredOnOwnerOrScreen_data()
    {
        QTest::addColumn<bool>("owned");
        QTest::newRow("frame-guessed-beside-a-framed-window") << false;
        QTest::newRow("owner-frame-ignored") << true;
    }
    void centredOnOwnerOrScreen()
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

    void answerPageHasLimits_data()
    {
        QTest::addColumn<AnswerServer::Answer>("answer");
        QTest::addColumn<QString>("shown");
        QTest::newRow("endless-body-kept-whole") << AnswerServer::Endless << "larger than 1024 KiB";
        QTest::newRow("deep-blocks-laid-out")
                << AnswerServer::NestedDivs << "too large to be shown";
        QTest::newRow("deep-tables-laid-out") << AnswerServer::NestedTables << "nested too deeply";
        QTest::newRow("silent-server-waited-for") << AnswerServer::Silent << "did not answer";
        QTest::newRow("network-failure-not-in-pane") << AnswerServer::Closed << "could not be sent";
    }
    void answerPageHasLimits()
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
        QCOMPARE(e.recorder.count(), 0);
        // The way out still works.
        QTest::mouseClick(child<QPushButton>(e.form, "cmdSkip"), Qt::LeftButton);
        QVERIFY(!e.form.isVisible());
    }

    void hideStoresFlag_data()
    {
        QTest::addColumn<Flags>("flags");
        QTest::addColumn<bool>("ticked");
        QTest::newRow("ticked-box-not-stored-as-one") << Flags::Shown << true;
        QTest::newRow("clear-box-leaves-stored-one") << Flags::Hidden << false;
        QTest::newRow("empty-table-not-written") << Flags::EmptyTable << true;
    }
    void hideStoresFlag()
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
        frmIVR next;
        QCOMPARE(child<QCheckBox>(next, "Check1")->isChecked(), ticked);
        QCOMPARE(recorder.count(), 0);
    }

    // Escape and closing the window leave the form up: only its buttons end
    // it. The requirement takes 200 characters, typed or pasted, and the
    // mailbox link opens the mail program.
    void formKeepsItsRules()
    {
        ProgramFolder folder({Flags::Shown});
        QDesktopServices::setUrlHandler("mailto", this, "openMail");
        auto unset = qScopeGuard([] { QDesktopServices::unsetUrlHandler("mailto"); });
        frmIVR form;
        QSignalSpy finished(&form, &QDialog::finished);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QTest::keyClick(child<QLineEdit>(form, "txtName"), Qt::Key_Escape);
        QVERIFY(!form.close() && form.isVisible());
        QCOMPARE(finished.count(), 0);

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

        auto *label = child<QLabel>(form, "Label3");
        label->setFocus(Qt::TabFocusReason);
        QTest::keyClick(label, Qt::Key_Tab);
        QTest::keyClick(label, Qt::Key_Return);
        QCOMPARE(m_mailOpened, QList<QUrl>{QUrl("mailto:" + frmIVR::mailbox())});
    }

private:
    QList<QUrl> m_mailOpened;
};

QTEST_MAIN(tst_frmIVR)
#include "tst_frmivr.moc"
