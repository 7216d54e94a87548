#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropTransfer;
}

namespace ivr {

class PromptGroup;

// The Transfer module (type 6): a prompt, then the call goes to an
// extension and leaves the script, so there are no exits.
class frmPropTransfer : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropTransfer(QWidget *parent = nullptr);
    ~frmPropTransfer() override;

    int helpContext() const override { return 6; }

protected:
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropTransfer> ui;
    PromptGroup *m_prompt = nullptr;
};

} // namespace ivr
