#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropPlay;
}

namespace ivr {

class PromptGroup;

// The Play module (type 3): one prompt, replayed with a pause, then one exit.
class frmPropPlay : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropPlay(QWidget *parent = nullptr);
    ~frmPropPlay() override;

    int helpContext() const override { return 3; }

protected:
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropPlay> ui;
    PromptGroup *m_prompt = nullptr;
    int m_ExitSelection = -1;
};

} // namespace ivr
