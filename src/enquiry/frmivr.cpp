#include "frmivr.h"
#include "ui_frmivr.h"

#include "answerpage.h"
#include "calllog.h"
#include "ivrerror.h"
#include "msgbox.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace ivr {

namespace {
constexpr int kRequirementLimit = 200;

bool isNameCharacter(QChar c)
{
    // Plain Latin letters only: some other letters upper-case into "A".."Z"
    // (a dotless i becomes "I") and would slip through.
    if (c.unicode() > 0x7f)
        return false;
    const QChar upper = c.toUpper();
    return c == QLatin1Char(' ') || (upper >= QLatin1Char('A') && upper <= QLatin1Char('Z'));
}

bool isNumberCharacter(QChar c)
{
    return c == QLatin1Char('-') || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
}

bool allOf(const QString &text, bool (*rule)(QChar))
{
    return std::all_of(text.cbegin(), text.cend(), rule);
}

QString invitation()
{
    // The mailbox stands where the sentence leaves room for it, as a link of
    // the label itself, so that it never depends on how wide the font is.
    const QString address = frmIVR::mailbox().toHtmlEscaped();
    return QStringLiteral("If you&#39;re looking for a complete IVR Package for your organization "
                          "please mail us at <a href=\"mailto:%1\">%1</a> or fill the form below "
                          "so that we can get in touch with you.  ")
            .arg(address);
}

} // namespace

frmIVR::frmIVR(const QString &server, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , ui(std::make_unique<Ui::frmIVR>())
    , m_server(server.isEmpty() ? defaultServer() : server)
{
    ui->setupUi(this);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(8.25);
    setFont(font);

    m_answer = new AnswerPage(ui->wb, this);
    ui->Label3->setText(invitation());
    ui->lblMessage->setAttribute(Qt::WA_TransparentForMouseEvents);

    connect(ui->txtReq->document(),
            &QTextDocument::contentsChange,
            this,
            &frmIVR::limitRequirement);
    connect(ui->cmdSubmit, &QPushButton::clicked, this, &frmIVR::cmdSubmit_Click);
    connect(ui->cmdSkip, &QPushButton::clicked, this, &frmIVR::cmdSkip_Click);
    connect(ui->Label3, &QLabel::linkActivated, this, &frmIVR::Label2_Click);

    LoadFields();
}

frmIVR::~frmIVR() = default;

QString frmIVR::defaultServer()
{
    return QStringLiteral(IVR_ENQUIRY_SERVER);
}

QString frmIVR::mailbox()
{
    return QStringLiteral(IVR_ENQUIRY_MAILBOX);
}

int frmIVR::exec()
{
    m_executing = true;
    const int result = QDialog::exec();
    m_executing = false;
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
    return result;
}

void frmIVR::setAnswerTimeout(std::chrono::milliseconds timeout)
{
    m_answer->setTimeout(timeout);
}

void frmIVR::setVisible(bool visible)
{
    if (visible && !isVisible())
        centre();
    QDialog::setVisible(visible);
}

void frmIVR::centre()
{
    // Qt would place a dialog by the frame it guesses from other windows;
    // this one has none, so the client area itself is centred on the
    // owner's outer frame, or on the screen when there is no owner.
    QRect area;
    if (QWidget *owner = parentWidget() ? parentWidget()->window() : nullptr)
        area = owner->frameGeometry();
    else if (const QScreen *where = screen())
        area = where->geometry();
    if (area.isEmpty())
        return;
    move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
}

void frmIVR::reject() {}

void frmIVR::closeEvent(QCloseEvent *event)
{
    event->ignore();
}

void frmIVR::LoadFields()
{
    // An empty table leaves the box as the form has it: clear.
    if (CallLog::readShowRegForm())
        ui->Check1->setChecked(true);
    ui->frFields->setEnabled(true);
    ui->frFields->show();
    ui->frIntExp->setEnabled(false);
    ui->frIntExp->hide();
}

bool frmIVR::ValidateFields()
{
    struct Check
    {
        bool failed;
        const char *message;
        QMessageBox::Icon icon;
        QWidget *focus;
    };
    const QString name = ui->txtName->text();
    const QString phone = ui->txtPhone->text();
    const QString fax = ui->txtFax->text();
    const QString mobile = ui->txtMobile->text();
    const QString email = ui->txtEmail->text().trimmed();
    const auto info = QMessageBox::Information;
    // An empty requirement puts the focus on the e-mail box, not on the
    // requirement itself: deliberate, and kept that way.
    const Check checks[] = {
            {name.trimmed().isEmpty(), "Please enter Name", info, ui->txtName},
            {!allOf(name, isNameCharacter),
             "Please enter a correct name.",
             QMessageBox::NoIcon,
             ui->txtName},
            {ui->txtCo->text().trimmed().isEmpty(), "Please enter Company Name", info, ui->txtCo},
            {phone.trimmed().isEmpty(), "Please enter Phone Number", info, ui->txtPhone},
            {!allOf(phone, isNumberCharacter),
             "Please enter a correct Phone Number.",
             info,
             ui->txtPhone},
            {!fax.trimmed().isEmpty() && !allOf(fax, isNumberCharacter),
             "Please enter a correct Fax Number.",
             info,
             ui->txtFax},
            {!mobile.trimmed().isEmpty() && !allOf(mobile, isNumberCharacter),
             "Please enter a correct Mobile Number.",
             info,
             ui->txtMobile},
            {email.isEmpty(), "Please enter Email Address", info, ui->txtEmail},
            {!email.contains(QLatin1Char('@')) || !email.contains(QLatin1Char('.')),
             "Please enter correct Email Address",
             info,
             ui->txtEmail},
            {ui->txtReq->toPlainText().trimmed().isEmpty(),
             "Please enter requirement",
             info,
             ui->txtEmail},
    };
    for (const Check &check : checks) {
        if (check.failed) {
            MsgBox::show(QString::fromLatin1(check.message),
                         check.icon,
                         QMessageBox::Ok,
                         QString(),
                         this);
            check.focus->setFocus(Qt::OtherFocusReason);
            return false;
        }
    }
    return true;
}

QString frmIVR::buildQuery() const
{
    // The page reads the fields exactly as typed: nothing is escaped.
    return QStringLiteral("name=") + ui->txtName->text().trimmed() + QStringLiteral("&coname=")
           + ui->txtCo->text().trimmed() + QStringLiteral("&address=")
           + ui->txtAdd->text().trimmed() + QStringLiteral("&Phone=")
           + ui->txtPhone->text().trimmed() + QStringLiteral("&fax=") + ui->txtFax->text().trimmed()
           + QStringLiteral("&mobile=") + ui->txtMobile->text().trimmed()
           + QStringLiteral("&email=") + ui->txtEmail->text().trimmed() + QStringLiteral("&req=")
           + ui->txtReq->toPlainText().trimmed();
}

void frmIVR::showAnswerPane()
{
    ui->frFields->setEnabled(false);
    ui->frFields->hide();
    ui->frIntExp->setEnabled(true);
    ui->frIntExp->show();
    ui->wb->setFocus(Qt::OtherFocusReason);
}

void frmIVR::limitRequirement(int position, int /*charsRemoved*/, int charsAdded)
{
    QTextDocument *document = ui->txtReq->document();
    const int excess = document->characterCount() - 1 - kRequirementLimit;
    if (excess <= 0 || charsAdded <= 0)
        return;
    // Whatever came in last is cut back, typed or pasted, so that what the
    // user already had stays whole.
    const int end = std::min(position + charsAdded, document->characterCount() - 1);
    const int start = std::max(end - excess, 0);
    QTextCursor cursor(document);
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void frmIVR::cmdSubmit_Click()
{
    if (!ValidateFields())
        return;
    // The server name has no scheme of its own, and "localhost:8080" alone
    // would read as one. The text goes out as the user typed it; only what
    // HTTP cannot carry (blanks, line breaks) is percent-encoded on the way.
    const QString address = QStringLiteral("http://") + m_server + QStringLiteral("/mailsend.asp?")
                            + buildQuery();
    const QUrl url = QUrl::fromEncoded(address.toUtf8(), QUrl::TolerantMode);
    showAnswerPane();
    if (!url.isValid()) {
        ui->wb->setPlainText(url.errorString());
        MsgBox::show(url.errorString(), QMessageBox::NoIcon, QMessageBox::Ok, QString(), this);
        return;
    }
    ui->wb->setPlainText(tr("Sending your enquiry to %1 ...").arg(m_server));
    m_answer->fetch(url);
}

void frmIVR::cmdSkip_Click()
{
    try {
        CallLog::writeShowRegForm(ui->Check1->isChecked());
    } catch (const IvrError &error) {
        // Outside exec() there is nobody to hand the failure to: say it here
        // and keep the form, so that the user can try again.
        if (!m_executing) {
            MsgBox::critical(error.description());
            return;
        }
        m_failure = std::current_exception();
    }
    accept();
}

void frmIVR::Label2_Click()
{
    QDesktopServices::openUrl(QUrl(QStringLiteral("mailto:") + mailbox()));
}

} // namespace ivr
