#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropQuery;
}

namespace ivr {

// The Database Query module (type 8): a connection string and a query for
// the running program, and the exits on success, failure and no record.
// The designer stores both texts and connects only when asked to test a
// string being built.
class frmPropQuery : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropQuery(QWidget *parent = nullptr);
    ~frmPropQuery() override;

    int helpContext() const override { return 8; }

protected:
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    void cmdBrowse_Click();

    std::unique_ptr<Ui::frmPropQuery> ui;
    int m_ExitSelection[3] = {-1, -1, -1}; // OnSuccess, OnFail, OnNoRecord
};

} // namespace ivr
