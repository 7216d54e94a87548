#pragma once

#include <QDialog>

#include <memory>
#include <optional>

class QSqlDatabase;

namespace Ui {
class ConnectionStringDialog;
}

namespace ivr {

// Builds a database connection string from its parts for the query module:
// a driver of the installed Qt SQL drivers, host, port, database, user,
// password and options. "Test Connection" really connects. The string is
// key=value pairs joined by ";" (Driver, Host, Port, Database, User,
// Password, Options; empty parts left out), a value holding ";", "=" or a
// double quote put in double quotes with its own quotes doubled.
class ConnectionStringDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ConnectionStringDialog(QWidget *parent = nullptr);
    ~ConnectionStringDialog() override;

    // A new string, always from an empty dialog, modal over parent; nothing
    // when the user cancels.
    static std::optional<QString> PromptNew(QWidget *parent);

    QString ConnectionString() const;
    // Connects with the parts as they stand and says how it went; true when
    // it connected. A missing SQLite file is a failure and is never made.
    bool testConnection();

private:
    QString connectionFailure(QSqlDatabase &db);
    void driverChosen();

    std::unique_ptr<Ui::ConnectionStringDialog> ui;
};

} // namespace ivr
