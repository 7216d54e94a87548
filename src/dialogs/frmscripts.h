#pragma once

#include "propertydialog.h"

#include <QPointer>

#include <memory>

namespace Ui {
class FrmScripts;
}

namespace ivr {

class FrmCommon;

// The script call module (type 12): which of the script's associated
// scripts it starts. The list belongs to CommonModule, and Add New extends
// it on the spot through an Associate Script dialog of this dialog's own.
// The module has no exits and no row in the link matrix.
class FrmScripts : public PropertyDialog
{
    Q_OBJECT

public:
    explicit FrmScripts(QWidget *parent = nullptr);
    ~FrmScripts() override;

    int helpContext() const override { return 13; }

protected:
    void Load() override;
    void CommitFields() override;

private:
    void fillScripts();
    void CmdAddNew_Click();
    void mofrmCommon_CompleteEdit(bool edited);

    std::unique_ptr<Ui::FrmScripts> ui;
    QPointer<FrmCommon> m_mofrmCommon;
    // The row that names the module's script, -1 for none.
    int m_scriptSelection = -1;
};

} // namespace ivr
