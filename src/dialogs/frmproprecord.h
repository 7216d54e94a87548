#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropRecord;
}

namespace ivr {

class PromptGroup;

// The Record module (type 7): a prompt, a recording of limited length that a
// key may end, then one exit.
class frmPropRecord : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropRecord(QWidget *parent = nullptr);
    ~frmPropRecord() override;

    int helpContext() const override { return 7; }

protected:
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropRecord> ui;
    PromptGroup *m_prompt = nullptr;
    int m_ExitSelection = -1;
};

} // namespace ivr
