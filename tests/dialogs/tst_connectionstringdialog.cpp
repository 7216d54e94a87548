#include "connectionstringdialog.h"
#include "dialogtesting.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTimer>

using namespace dialogtesting;

// The connection string of the query module, built through its own dialog
// over the query dialog of a real script window and tested on real SQLite
// files. The dialog is modal: each test works it from a timer while the
// query dialog waits on it.
class tst_ConnectionStringDialog : public QObject, private Fixture
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(setUp()); }
    void cleanup() { tearDown(); }
    void testsAndBuildsString_data();
    void testsAndBuildsString();
    void cancelKeepsBoxAndNextOpensEmpty();

private:
    // Opens the query dialog of a fresh module, with text in its box.
    ivr::PropertyDialog *openQuery(frmScriptViewer &w, const QString &text);
    // Presses "..." of the query dialog and works the connection dialog.
    void browse(ivr::PropertyDialog *query,
                std::function<void(ivr::ConnectionStringDialog *)> work);
    QString makeDatabase();
};

ivr::PropertyDialog *tst_ConnectionStringDialog::openQuery(frmScriptViewer &w, const QString &text)
{
    w.AddModule(8, 3000, 3000);
    module(w, 2)->moduleData()->definition().setConnectionString(text);
    return open(w, 2);
}

void tst_ConnectionStringDialog::browse(ivr::PropertyDialog *query,
                                        std::function<void(ivr::ConnectionStringDialog *)> work)
{
    bool worked = false;
    QTimer::singleShot(0, this, [&] {
        auto *dialog
                = qobject_cast<ivr::ConnectionStringDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QCOMPARE(dialog->parentWidget(), query);
        QCOMPARE(dialog->windowModality(), Qt::WindowModal);
        worked = true;
        work(dialog);
        if (dialog->isVisible()) // a failed check above leaves it open
            dialog->reject();
    });
    click(query, "cmdBrowse");
    QVERIFY(worked);
}

QString tst_ConnectionStringDialog::makeDatabase()
{
    const QString path = m_folder->file(QStringLiteral("callers.db"));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "make");
        db.setDatabaseName(path);
        db.open();
        QSqlQuery(db).exec(QStringLiteral("create table callers(number text)"));
        db.close();
    }
    QSqlDatabase::removeDatabase("make");
    return path;
}

void tst_ConnectionStringDialog::testsAndBuildsString_data()
{
    QTest::addColumn<QString>("parts");   // control=text|...; $DB is a real database
    QTest::addColumn<QString>("string");  // "" when the test fails
    QTest::addColumn<QByteArray>("held"); // plain.txt before and after, null when missing
    const auto row = [](const char *fault, const char *parts, const char *string, QByteArray held) {
        QTest::newRow(fault) << QString(parts) << QString(string) << held;
    };
    row("sqlite-parts-lost", "txtDatabase=$DB", "Driver=QSQLITE;Database=$DB", "x");
    row("parts-out-of-order",
        "txtUser=ivr|txtPassword=secret|txtHost=localhost|txtPort=5432|txtDatabase=$DB",
        "Driver=QSQLITE;Host=localhost;Port=5432;Database=$DB;User=ivr;Password=secret",
        "x");
    row("separators-in-value-unquoted",
        "txtDatabase=$DB|txtOptions=A=1;B",
        "Driver=QSQLITE;Database=$DB;Options=\"A=1;B\"",
        "x");
    row("quote-in-value-not-doubled",
        "txtDatabase=$DB|txtPassword=a\"b",
        "Driver=QSQLITE;Database=$DB;Password=\"a\"\"b\"",
        "x");
    row("missing-file-created", "txtDatabase=$DIR/missing.db", "", "x");
    row("file-under-a-file-created", "txtDatabase=$DIR/plain.txt/missing.db", "", "x");
    row("text-file-taken-for-database", "txtDatabase=$DIR/plain.txt", "", "not a database\n");
}

// A string is taken only after a test that succeeded; a failed test creates
// or changes no file.
void tst_ConnectionStringDialog::testsAndBuildsString()
{
    QFETCH(QString, parts);
    QFETCH(QString, string);
    QFETCH(QByteArray, held);
    QFile plain(m_folder->file("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write(held) == held.size());
    plain.close();
    const QString db = makeDatabase();
    parts.replace("$DB", db).replace("$DIR", QFileInfo(db).path());
    string.replace("$DB", db);
    frmScriptViewer w;
    ivr::PropertyDialog *query = openQuery(w, QStringLiteral("kept"));
    browse(query, [&](ivr::ConnectionStringDialog *dialog) {
        QCOMPARE(control<QLineEdit>(dialog, "txtPassword")->echoMode(), QLineEdit::Password);
        fill(dialog, "cboDriver=QSQLITE|" + parts);
        click(dialog, "cmdTest");
        const ivr::MsgBox::Message said = m_messages->messages().last();
        if (string.isEmpty()) {
            QVERIFY(said.text.startsWith("Test connection failed: "));
            QCOMPARE(said.icon, QMessageBox::Critical);
            click(dialog, "cmdCancel");
        } else {
            QCOMPARE(said.text, QStringLiteral("Test connection succeeded."));
            QCOMPARE(said.icon, QMessageBox::Information);
            click(dialog, "cmdOk");
        }
    });
    QVERIFY(plain.open(QIODevice::ReadOnly));
    QCOMPARE(plain.readAll(), held);
    QVERIFY(!QFileInfo::exists(m_folder->file("missing.db")));
    QCOMPARE(shownIn(query, "txtConString"), string.isEmpty() ? "kept" : string);
    click(query, "cmdOk");
    QCOMPARE(w.Changed(), !string.isEmpty());
    QCOMPARE(definitionOf(w, 2).ConnectionString(), string.isEmpty() ? "kept" : string);
}

void tst_ConnectionStringDialog::cancelKeepsBoxAndNextOpensEmpty()
{
    frmScriptViewer w;
    ivr::PropertyDialog *query = openQuery(w, QStringLiteral("Driver=QSQLITE;Database=/a.db"));
    browse(query, [&](ivr::ConnectionStringDialog *dialog) {
        auto *driver = control<QComboBox>(dialog, "cboDriver");
        QCOMPARE(items(driver), QSqlDatabase::drivers());
        QVERIFY(!driver->isEditable());
        fill(dialog, "cboDriver=QSQLITE|txtDatabase=/b.db|txtUser=u");
        click(dialog, "cmdCancel");
    });
    browse(query, [&](ivr::ConnectionStringDialog *dialog) {
        QCOMPARE(control<QComboBox>(dialog, "cboDriver")->currentIndex(), -1);
        for (QLineEdit *box : dialog->findChildren<QLineEdit *>())
            QVERIFY2(box->text().isEmpty(), qPrintable(box->objectName()));
        QVERIFY(!control(dialog, "cmdOk")->isEnabled());
        QVERIFY(!control(dialog, "cmdTest")->isEnabled());
        QCOMPARE(dialog->ConnectionString(), QString());
        click(dialog, "cmdCancel");
    });
    QCOMPARE(shownIn(query, "txtConString"), QStringLiteral("Driver=QSQLITE;Database=/a.db"));
    QSignalSpy completed(query, &ivr::PropertyDialog::CompleteEdit);
    click(query, "cmdOk");
    QCOMPARE(completed.first().at(1).toBool(), false);
}

QTEST_MAIN(tst_ConnectionStringDialog)
#include "tst_connectionstringdialog.moc"
