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
    void buildsTestedString_data();
    void buildsTestedString();
    void refusesWhatIsNoDatabase_data();
    void refusesWhatIsNoDatabase();
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

void tst_ConnectionStringDialog::buildsTestedString_data()
{
    QTest::addColumn<QStringList>("parts"); // control=text; $DB is the database
    QTest::addColumn<QString>("string");
    QTest::newRow("sqlite-parts-lost")
            << QStringList{"cboDriver=QSQLITE", "txtDatabase=$DB"} << "Driver=QSQLITE;Database=$DB";
    QTest::newRow("parts-out-of-order")
            << QStringList{"cboDriver=QSQLITE",
                           "txtUser=ivr",
                           "txtPassword=secret",
                           "txtHost=localhost",
                           "txtPort=5432",
                           "txtDatabase=$DB"}
            << "Driver=QSQLITE;Host=localhost;Port=5432;Database=$DB;User=ivr;Password=secret";
    QTest::newRow("separators-in-value-unquoted")
            << QStringList{"cboDriver=QSQLITE",
                           "txtDatabase=$DB",
                           "txtOptions=QSQLITE_BUSY_TIMEOUT=100;QSQLITE_ENABLE_REGEXP"}
            << "Driver=QSQLITE;Database=$DB;Options=\"QSQLITE_BUSY_TIMEOUT=100;"
               "QSQLITE_ENABLE_REGEXP\"";
    QTest::newRow("quote-in-value-not-doubled")
            << QStringList{"cboDriver=QSQLITE", "txtDatabase=$DB", "txtPassword=a\"b"}
            << "Driver=QSQLITE;Database=$DB;Password=\"a\"\"b\"";
}

void tst_ConnectionStringDialog::buildsTestedString()
{
    QFETCH(QStringList, parts);
    QFETCH(QString, string);
    const QString db = makeDatabase();
    parts.replaceInStrings("$DB", db);
    frmScriptViewer w;
    ivr::PropertyDialog *query = openQuery(w, QStringLiteral("Driver=QODBC;Database=old"));
    browse(query, [&](ivr::ConnectionStringDialog *dialog) {
        QCOMPARE(control<QLineEdit>(dialog, "txtPassword")->echoMode(), QLineEdit::Password);
        fill(dialog, parts);
        click(dialog, "cmdTest");
        QCOMPARE(m_messages->lastText(), QStringLiteral("Test connection succeeded."));
        QCOMPARE(m_messages->messages().last().icon, QMessageBox::Information);
        click(dialog, "cmdOk");
    });
    QCOMPARE(control<QLineEdit>(query, "txtConString")->text(), string.replace("$DB", db));
    click(query, "cmdOk");
    QVERIFY(w.Changed());
    QCOMPARE(module(w, 2)->moduleData()->definition().ConnectionString(), string);
}

void tst_ConnectionStringDialog::refusesWhatIsNoDatabase_data()
{
    QTest::addColumn<QString>("file");    // under the test folder
    QTest::addColumn<QByteArray>("held"); // what the file holds before, null for none
    QTest::newRow("missing-file-created") << "missing.db" << QByteArray();
    QTest::newRow("file-under-a-file-created") << "plain.txt/missing.db" << QByteArray();
    QTest::newRow("text-file-taken-for-database") << "plain.txt" << QByteArray("not a database\n");
}

void tst_ConnectionStringDialog::refusesWhatIsNoDatabase()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, held);
    QFile plain(m_folder->file("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    plain.write(held.isNull() ? QByteArray("x") : held);
    plain.close();
    const QString path = m_folder->file(file);
    frmScriptViewer w;
    ivr::PropertyDialog *query = openQuery(w, QStringLiteral("kept"));
    browse(query, [&](ivr::ConnectionStringDialog *dialog) {
        fill(dialog, {"cboDriver=QSQLITE", "txtDatabase=" + path});
        QVERIFY(!dialog->testConnection());
        QVERIFY(m_messages->lastText().startsWith("Test connection failed: "));
        QCOMPARE(m_messages->messages().last().icon, QMessageBox::Critical);
        click(dialog, "cmdCancel");
    });
    if (held.isNull()) {
        QVERIFY(!QFileInfo::exists(path));
    } else {
        QFile after(path);
        QVERIFY(after.open(QIODevice::ReadOnly));
        QCOMPARE(after.readAll(), held);
    }
    QCOMPARE(control<QLineEdit>(query, "txtConString")->text(), QStringLiteral("kept"));
    click(query, "cmdOk");
    QVERIFY(!w.Changed());
}

void tst_ConnectionStringDialog::cancelKeepsBoxAndNextOpensEmpty()
{
    frmScriptViewer w;
    ivr::PropertyDialog *query = openQuery(w, QStringLiteral("Driver=QSQLITE;Database=/a.db"));
    browse(query, [&](ivr::ConnectionStringDialog *dialog) {
        auto *driver = control<QComboBox>(dialog, "cboDriver");
        QStringList offered;
        for (int i = 0; i < driver->count(); ++i)
            offered << driver->itemText(i);
        QCOMPARE(offered, QSqlDatabase::drivers());
        QVERIFY(!driver->isEditable());
        fill(dialog, {"cboDriver=QSQLITE", "txtDatabase=/b.db", "txtUser=u"});
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
    QCOMPARE(control<QLineEdit>(query, "txtConString")->text(),
             QStringLiteral("Driver=QSQLITE;Database=/a.db"));
    QSignalSpy completed(query, &ivr::PropertyDialog::CompleteEdit);
    click(query, "cmdOk");
    QCOMPARE(completed.first().at(1).toBool(), false);
}

QTEST_MAIN(tst_ConnectionStringDialog)
#include "tst_connectionstringdialog.moc"
