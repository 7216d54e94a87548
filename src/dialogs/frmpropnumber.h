#pragma once

#include "propertydialog.h"

#include <array>
#include <memory>

namespace Ui {
class frmPropNumber;
}

namespace ivr {

class PromptGroup;

// The number entry (type 5): a prompt, then a number of a least and a
// greatest length typed within a time limit; one exit for a number, one for
// the time running out. Laid out as the digit menu, on two pages.
class frmPropNumber : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropNumber(QWidget *parent = nullptr);
    ~frmPropNumber() override;

    int helpContext() const override { return 5; }
    bool ValidateFields() override;

protected:
    void Load() override;
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropNumber> ui;
    PromptGroup *m_prompt = nullptr;
    std::array<int, 2> m_ExitSelection{-1, -1}; // cboSuccess, cboTimeout
};

} // namespace ivr
