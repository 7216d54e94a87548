#pragma once

#include <QDialog>
#include <QString>

#include <chrono>
#include <exception>
#include <memory>

namespace Ui {
class frmIVR;
}

namespace ivr {

class AnswerPage;

// The contact form offered at start until the user ticks "Never show this
// message again" and leaves with "&Hide". It checks its fields locally, sends
// them to mailsend.asp on the enquiry server and shows the answer page in
// place of the fields. "&Hide" is the only way out: it stores the box in
// CallLog.db first.
class frmIVR : public QDialog
{
    Q_OBJECT

public:
    // server: host and optional port of the enquiry page; empty means the
    // deployment's own server.
    explicit frmIVR(const QString &server = QString(), QWidget *parent = nullptr);
    ~frmIVR() override;

    static QString defaultServer();
    static QString mailbox();

    // A database failure while storing the flag is rethrown here, once the
    // form is down, so that it reaches the program's own failure handling.
    int exec() override;
    void setVisible(bool visible) override;

    // How long the enquiry server may stay silent before the answer pane
    // says so.
    void setAnswerTimeout(std::chrono::milliseconds timeout);

public slots:
    // Escape would end the form without storing the flag.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void LoadFields();
    bool ValidateFields();
    QString buildQuery() const;
    void showAnswerPane();
    void limitRequirement(int position, int charsRemoved, int charsAdded);
    void cmdSubmit_Click();
    void cmdSkip_Click();
    void Label2_Click();
    void centre();

    std::unique_ptr<Ui::frmIVR> ui;
    QString m_server;
    AnswerPage *m_answer = nullptr;
    std::exception_ptr m_failure;
    bool m_executing = false;
};

} // namespace ivr
