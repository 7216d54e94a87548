#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropEnd;
}

namespace ivr {

class PromptGroup;

// The End Call module (type 0): what the caller hears last. No name, no exits;
// its end only enables the window again.
class frmPropEnd : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropEnd(QWidget *parent = nullptr);
    ~frmPropEnd() override;

    int helpContext() const override { return 12; }

protected:
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropEnd> ui;
    PromptGroup *m_prompt = nullptr;
};

} // namespace ivr
