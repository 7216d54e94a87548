#pragma once

#include "propertydialog.h"

#include <memory>

namespace Ui {
class frmPropConnect;
}

namespace ivr {

// The Connected module (type 1): which module follows when a call connects.
// It marks nothing as edited while open; OK compares the choice with the
// one it opened with.
class frmPropConnect : public PropertyDialog
{
    Q_OBJECT

public:
    explicit frmPropConnect(QWidget *parent = nullptr);
    ~frmPropConnect() override;

    int helpContext() const override { return 2; }

protected:
    void FillExitLists() override;
    void cmdOk_Click() override;

private:
    std::unique_ptr<Ui::frmPropConnect> ui;
    int m_ExitSelection = -1;
    bool m_okPressed = false; // set by OK and never read, as the form has it
};

} // namespace ivr
