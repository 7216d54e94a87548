#pragma once

#include "propertydialog.h"

#include <array>
#include <memory>

class QComboBox;

namespace Ui {
class frmPropDigit;
}

namespace ivr {

class PromptGroup;

// The digit menu (type 4): a prompt, then one exit for each key the caller
// may press (ten digits, star, hash) and one for no key in time. The exits
// stand on the page "Flow", the prompt on the page "Play".
class frmPropDigit : public PropertyDialog
{
    Q_OBJECT

public:
    static constexpr int FlowRows = 13;

    explicit frmPropDigit(QWidget *parent = nullptr);
    ~frmPropDigit() override;

    int helpContext() const override { return 4; }
    // The exit key that cboFlow(row) stands for.
    static QString flowKey(int row);

protected:
    void Load() override;
    void FillExitLists() override;
    void LoadFields() override;
    void CommitFields() override;

private:
    std::unique_ptr<Ui::frmPropDigit> ui;
    PromptGroup *m_prompt = nullptr;
    std::array<QComboBox *, FlowRows> m_cboFlow{};
    std::array<int, FlowRows> m_ExitSelection{};
};

} // namespace ivr
