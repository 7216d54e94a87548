#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class FrmExecutable;
}

namespace ivr {

// The Run Other Application module (type 11): the program, its arguments and
// its run mode for the running program, and the exits on success and failure.
class FrmExecutable : public PropertyDialog
{
    Q_OBJECT

public:
    explicit FrmExecutable(QWidget *parent = nullptr);
    ~FrmExecutable() override;

    int helpContext() const override { return 11; }

protected:
    void Load() override;
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    void cmdBrowse_Click();

    std::unique_ptr<Ui::FrmExecutable> ui;
    int m_ExitSelection[2] = {-1, -1}; // OnSuccess, OnFail
};

} // namespace ivr
