#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropEMail;
}

namespace ivr {

// The Send E-Mail module (type 9): five mail texts stored unchecked for the
// running program, and the exits on success and failure.
class frmPropEMail : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropEMail(QWidget *parent = nullptr);
    ~frmPropEMail() override;

    int helpContext() const override { return 10; }

protected:
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    void cmdBrowse_Click();

    std::unique_ptr<Ui::frmPropEMail> ui;
    int m_ExitSelection[2] = {-1, -1}; // OnSuccess, OnFail
};

} // namespace ivr
