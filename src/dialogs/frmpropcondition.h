#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropCondition;
}

namespace ivr {

// The Check Condition module (type 13): a condition text for the running
// program, stored unread, and the exits taken on its outcome.
class frmPropCondition : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropCondition(QWidget *parent = nullptr);
    ~frmPropCondition() override;

    int helpContext() const override { return 9; }

protected:
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropCondition> ui;
    int m_ExitSelection[2] = {-1, -1}; // OnSuccess, OnFail
};

} // namespace ivr
