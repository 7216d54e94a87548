#include "connectionstringdialog.h"
#include "ui_connectionstringdialog.h"

#include "frameservices.h"
#include "msgbox.h"
#include "screenpointer.h"

#include <QFileInfo>
#include <QIntValidator>
#include <QShortcut>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace ivr {

namespace {

const char kTestConnection[] = "ConnectionStringDialogTest";
constexpr int QueryHelpContext = 8;

QString quoted(QString value)
{
    if (!value.contains(QLatin1Char(';')) && !value.contains(QLatin1Char('='))
        && !value.contains(QLatin1Char('"')))
        return value;
    value.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + value + QLatin1Char('"');
}

} // namespace

ConnectionStringDialog::ConnectionStringDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ConnectionStringDialog>())
{
    ui->setupUi(this);
    setWindowTitle(QStringLiteral("Connection String"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(8.25);
    setFont(font);
    setFixedSize(size());
    ui->cboDriver->addItems(QSqlDatabase::drivers());
    ui->cboDriver->setCurrentIndex(-1);
    ui->txtPort->setValidator(new QIntValidator(1, 65535, ui->txtPort));
    ui->cmdOk->setDefault(true);
    driverChosen();
    connect(ui->cboDriver,
            &QComboBox::currentIndexChanged,
            this,
            &ConnectionStringDialog::driverChosen);
    connect(ui->cmdTest, &QPushButton::clicked, this, &ConnectionStringDialog::testConnection);
    connect(ui->cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [] {
        if (FrameServices *frame = appMain())
            frame->showHelpContext(QueryHelpContext);
    });
}

ConnectionStringDialog::~ConnectionStringDialog() = default;

std::optional<QString> ConnectionStringDialog::PromptNew(QWidget *parent)
{
    ConnectionStringDialog dialog(parent);
    dialog.setWindowModality(Qt::WindowModal);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.ConnectionString();
}

void ConnectionStringDialog::driverChosen()
{
    // Without a driver there is nothing to test and no string to give.
    const bool chosen = ui->cboDriver->currentIndex() >= 0;
    ui->cmdTest->setEnabled(chosen);
    ui->cmdOk->setEnabled(chosen);
}

QString ConnectionStringDialog::ConnectionString() const
{
    const QList<std::pair<const char *, QString>> parts{
            {"Driver", ui->cboDriver->currentText()},
            {"Host", ui->txtHost->text()},
            {"Port", ui->txtPort->text()},
            {"Database", ui->txtDatabase->text()},
            {"User", ui->txtUser->text()},
            {"Password", ui->txtPassword->text()},
            {"Options", ui->txtOptions->text()},
    };
    QStringList pairs;
    for (const auto &[key, value] : parts) {
        if (!value.isEmpty())
            pairs << QLatin1String(key) + QLatin1Char('=') + quoted(value);
    }
    return pairs.join(QLatin1Char(';'));
}

bool ConnectionStringDialog::testConnection()
{
    ScreenPointer::set(ScreenPointer::Hourglass);
    QString failure;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(ui->cboDriver->currentText(),
                                                    QLatin1String(kTestConnection));
        failure = connectionFailure(db);
        db.close();
    }
    QSqlDatabase::removeDatabase(QLatin1String(kTestConnection));
    ScreenPointer::set(ScreenPointer::Default);
    if (failure.isEmpty()) {
        MsgBox::show(QStringLiteral("Test connection succeeded."),
                     QMessageBox::Information,
                     QMessageBox::Ok,
                     QString(),
                     this);
        return true;
    }
    MsgBox::show(QStringLiteral("Test connection failed: ") + failure,
                 QMessageBox::Critical,
                 QMessageBox::Ok,
                 QString(),
                 this);
    return false;
}

// Why the connection of the parts as they stand fails, or an empty text.
QString ConnectionStringDialog::connectionFailure(QSqlDatabase &db)
{
    if (!db.isValid())
        return QStringLiteral("the driver %1 is not available.").arg(ui->cboDriver->currentText());
    const bool sqlite = db.driverName() == QLatin1String("QSQLITE");
    const QString database = ui->txtDatabase->text();
    // Qt's SQLite driver makes a missing file without a word; a test must
    // leave nothing behind.
    if (sqlite && !QFileInfo(database).isFile())
        return QStringLiteral("the database file \"%1\" does not exist.").arg(database);
    db.setHostName(ui->txtHost->text());
    if (!ui->txtPort->text().isEmpty())
        db.setPort(ui->txtPort->text().toInt());
    db.setDatabaseName(database);
    db.setUserName(ui->txtUser->text());
    db.setPassword(ui->txtPassword->text());
    QString options = ui->txtOptions->text();
    if (sqlite)
        options += QLatin1String(options.isEmpty() ? "" : ";")
                   + QStringLiteral("QSQLITE_OPEN_READONLY");
    db.setConnectOptions(options);
    if (!db.open())
        return db.lastError().text().trimmed();
    // SQLite opens any file; reading its schema tells a database from the rest.
    if (sqlite) {
        QSqlQuery probe(db);
        if (!probe.exec(QStringLiteral("select count(*) from sqlite_master")))
            return probe.lastError().text().trimmed();
    }
    return {};
}

} // namespace ivr
