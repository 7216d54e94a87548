#pragma once

#include "commondialog.h"
#include "propertydialog.h"

#include <memory>

namespace Ui {
class FrmCommon;
}

namespace ivr {

// The scripts this script may start (Associate Script). It edits a working
// copy of CommonModule's list and writes it back whole at OK; it has no
// module name, no exits and no check. The script window opens it from its
// Property menu entry, the script call dialog from its Add New button.
class FrmCommon : public PropertyDialog
{
    Q_OBJECT

public:
    explicit FrmCommon(QWidget *parent = nullptr);
    ~FrmCommon() override;

    int helpContext() const override { return 13; }

protected:
    void Load() override;
    void CommitFields() override;

private:
    void cmdBrowse_Click();
    void CmdAddScript_Click();
    void cmdDelete_Click();
    void cmdWaveFiles_Click();

    std::unique_ptr<Ui::FrmCommon> ui;
    // The dialog's own picker: it keeps its last file, so a cancelled browse
    // brings that file back.
    CommonDialog m_dlgCommonDialog;
    // The last file a browse accepted; Add works only once there is one.
    QString m_browsedFile;
};

} // namespace ivr
