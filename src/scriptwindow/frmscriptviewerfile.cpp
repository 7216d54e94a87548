// The script window's file side: open, save and run.

#include "frmscriptviewer.h"

#include "appfolder.h"
#include "exittables.h"
#include "hiddenprocess.h"
#include "indexbykey.h"
#include "ivrerror.h"
#include "moduletypes.h"
#include "msgbox.h"
#include "screenpointer.h"
#include "scriptcanvas.h"
#include "scriptconstants.h"
#include "scriptfile.h"
#include "scriptutility.h"
#include "voreldirection.h"
#include "vorelmodule.h"

#include <QFileInfo>
#include <QScopeGuard>

using namespace ivr;

void frmScriptViewer::OpenScript(const QString &path)
{
    m_picMain->setVisible(false);
    m_picMain->setUpdatesEnabled(false);
    ScreenPointer::set(ScreenPointer::Hourglass);
    // Also when a damaged script throws half way (two modules of one name).
    const auto restore = qScopeGuard([this] {
        m_Changed = false;
        ScreenPointer::set(ScreenPointer::Default);
        m_picMain->setUpdatesEnabled(true);
        m_picMain->setVisible(true);
    });

    if (!QFileInfo(path).isFile())
        return;

    IndexByKey keys;
    ScriptFile file;
    const std::optional<ModuleList> list = file.Load(path);
    if (list) {
        for (const ModuleDataPtr &m : *list) {
            m->setName(m->Name().mid(1, m->Name().size() - 2));
            if (m->ModuleType() == ModuleTypes::Common) {
                m_CommonModule = m;
                continue;
            }
            qint16 index = 0;
            if (m->ModuleType() == ModuleTypes::Connected) {
                index = 0;
            } else if (m->ModuleType() == ModuleTypes::EndCall) {
                index = 1;
            } else {
                index = NextFreeModule();
                m_cmVorelModule.load(index);
            }
            m_DrawLine.Add(index, *this);
            keys.Add(QLatin1Char('[') + m->Name() + QLatin1Char(']'), index);
            VorelModule *module = m_cmVorelModule.at(index);
            module->Attach(m);
            module->setLeft(m->definition().Left());
            module->setTop(m->definition().Top());
            module->setVisible(true);
        }

        for (qint16 k = m_VorelDirection1.ubound(); k >= 1; --k) {
            if (m_VorelDirection1.exists(k))
                m_VorelDirection1.unload(k);
        }

        for (const ModuleDataPtr &m : *list) {
            const QString fromKey = QLatin1Char('[') + m->Name() + QLatin1Char(']');
            const Definition &definition = m->definition();
            for (const QString &exit : ExitTables::keys(m->ModuleType(), ExitWalk::OpenScript))
                AddLink(keys, fromKey, definition.Properties(exit).Value().toString());
            const int type = m->ModuleType();
            if (type != ModuleTypes::EndCall && type != 6 && type != ModuleTypes::Common)
                m_DrawLine.RedefineModule(keys.Item(fromKey), *this, 1, QString());
        }
    }
    m_FileName = path;
    setWindowTitle(path);
}

void frmScriptViewer::AddLink(IndexByKey &keys, const QString &FromKey, const QString &ToKey)
{
    if (FromKey.isEmpty() || ToKey.isEmpty())
        return;
    // An exit that names no module of the script (left behind by a delete)
    // fails here and is dropped: no cell, no arrow, its text kept.
    try {
        const qint16 k = NextFreeArrow();
        const qint16 a = keys.Item(FromKey);
        const qint16 b = keys.Item(ToKey);
        m_DrawLine.setLineMatrix(a, b, k);
        m_VorelDirection1.load(k);
    } catch (const IvrError &) {
    }
}

bool frmScriptViewer::SaveScript(bool SaveAs)
{
    const QString suffix = ScriptConstants::ScriptSuffix();
    if (m_FileName.isEmpty() || SaveAs) {
        CommonDialog &dialog = commonDialog();
        const QString extension = ScriptUtility::ScriptExtension();
        dialog.DialogTitle = QStringLiteral("Save");
        dialog.CancelError = false;
        dialog.Flags = 18;
        dialog.FileName = windowTitle() + suffix;
        dialog.Filter = QStringLiteral("Brindlewave IVR Script (*.") + extension
                        + QStringLiteral(") |*.") + extension;
        dialog.ShowSave(this);
        if (dialog.FileName.isEmpty())
            return false;
        m_FileName = dialog.FileName;
    }
    // Case counts: "x.IVR" is not taken as carrying the suffix.
    if (m_FileName.right(suffix.size()) != suffix)
        m_FileName += suffix;

    ModuleList list;
    if (!collectModules(list))
        return false;
    list.Add(m_CommonModule);
    setWindowTitle(m_FileName.left(m_FileName.size() - suffix.size()));

    bool ok = false;
    ScriptFile file;
    file.Save(m_FileName, list, ok);
    // The script counts as saved even when the library could not write it;
    // the library has told the user why.
    m_Changed = false;
    return ok;
}

bool frmScriptViewer::collectModules(ModuleList &list)
{
    const qint16 top = m_cmVorelModule.ubound();
    for (qint16 i = m_cmVorelModule.lbound(); i <= top; ++i) {
        try {
            m_cmVorelModule.at(i)->Caption(); // the probe: a hole fails here
            VorelModule *c = m_cmVorelModule.at(i);
            Definition &definition = c->moduleData()->definition();
            definition.setDescription(c->Description());
            definition.setLeft(c->Left());
            definition.setTop(c->Top());
            definition.setCompact(c->Compact());
            list.Add(c->moduleData());
        } catch (const IvrError &) {
            // A hole below the top costs nothing; one at the top ends the
            // save before anything is written.
            if (i >= top)
                return false;
        }
    }
    return true;
}

void frmScriptViewer::RunScript()
{
    if (m_FileName.isEmpty() || m_Changed) {
        const auto answer = MsgBox::show(QStringLiteral("You must save the script before run.")
                                                 + QLatin1Char('\n')
                                                 + QStringLiteral("Do you want to save it Now?"),
                                         QMessageBox::Information,
                                         QMessageBox::Yes | QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return;
        if (!SaveScript(false))
            return;
    }
    // The runner learns nothing of the script from its command line: its one
    // parameter is the state of Changed, which is always "False" by now.
    HiddenProcess::start(AppFolder::file(QStringLiteral("VorelRun")),
                         {m_Changed ? QStringLiteral("True") : QStringLiteral("False")},
                         AppFolder::path());
}
