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

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSet>

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

    // A folder named with a trailing "/" passes here; Load then says what it is.
    if (!ScriptUtility::FileExists(path))
        return;

    ScriptFile file;
    std::optional<ModuleList> list = file.Load(path);
    if (list && !fitsWindow(path, *list))
        list.reset();
    if (list) {
        m_fileKeys = list->unknownKeys();
        IndexByKey keys;
        placeModules(*list, keys);
        linkModules(*list, keys);
        m_ownFile = path;
    }
    m_FileName = path;
    setWindowTitle(path);
}

// The first pass: each module gets its control. A second module of one name
// is refused by the keys after its control is loaded; that control keeps no
// data, and every later walk meets it as a hole.
void frmScriptViewer::placeModules(const ModuleList &list, IndexByKey &keys)
{
    for (const ModuleDataPtr &m : list) {
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
}

// The second pass: the exits become matrix cells and arrows.
void frmScriptViewer::linkModules(const ModuleList &list, IndexByKey &keys)
{
    for (int k = m_VorelDirection1.ubound(); k >= 1; --k) {
        if (m_VorelDirection1.exists(qint16(k)))
            m_VorelDirection1.unload(qint16(k));
    }
    for (const ModuleDataPtr &m : list) {
        const QString fromKey = QLatin1Char('[') + m->Name() + QLatin1Char(']');
        const Definition &definition = m->definition();
        for (const QString &exit : ExitTables::keys(m->ModuleType(), ExitWalk::OpenScript))
            AddLink(keys, fromKey, definition.Properties(exit).Value().toString());
        const int type = m->ModuleType();
        if (type != ModuleTypes::EndCall && type != 6 && type != ModuleTypes::Common)
            m_DrawLine.RedefineModule(keys.Item(fromKey), *this, 1, QString());
    }
}

// Module and arrow indices are 16-bit: a script that would need one above
// 32,767 is refused before anything of it is loaded.
bool frmScriptViewer::fitsWindow(const QString &path, const ModuleList &list)
{
    QSet<QString> keys;
    int placed = 0; // from index 2 up, after Connected and End Call
    for (const ModuleDataPtr &m : list) {
        const int type = m->ModuleType();
        if (type == ModuleTypes::Common)
            continue;
        keys.insert(QLatin1Char('[') + m->Name().mid(1, m->Name().size() - 2) + QLatin1Char(']'));
        if (type != ModuleTypes::Connected && type != ModuleTypes::EndCall)
            ++placed;
    }
    int links = 0;
    for (const ModuleDataPtr &m : list) {
        for (const QString &exit : ExitTables::keys(m->ModuleType(), ExitWalk::OpenScript))
            links += keys.contains(m->definition().Properties(exit).Value().toString()) ? 1 : 0;
    }
    const auto refuse = [&path](const QString &reason) {
        MsgBox::critical(QStringLiteral("The script \"%1\" could not be opened: %2.")
                                 .arg(QDir::toNativeSeparators(path), reason));
        return false;
    };
    if (placed + 2 > HighestIndex + 1)
        return refuse(QStringLiteral("it has %1 modules, and a script window holds at most %2")
                              .arg(placed + 2)
                              .arg(HighestIndex + 1));
    if (links > HighestIndex)
        return refuse(QStringLiteral("it has %1 links, and a script window shows at most %2")
                              .arg(links)
                              .arg(HighestIndex));
    return true;
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
    QString chosen;
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
        chosen = m_FileName;
    }
    // Case counts: "x.IVR" is not taken as carrying the suffix.
    if (m_FileName.right(suffix.size()) != suffix)
        m_FileName += suffix;
    // The dialog asked before it named a file that exists; a suffix added
    // afterwards names one it did not ask about.
    if (!chosen.isEmpty() && m_FileName == chosen)
        m_ownFile = m_FileName;

    ModuleList list;
    if (!collectModules(list))
        return false;
    list.Add(m_CommonModule);
    list.setUnknownKeys(m_fileKeys);
    if (!keepOldFile())
        return false;
    setWindowTitle(m_FileName.left(m_FileName.size() - suffix.size()));

    bool ok = false;
    ScriptFile file;
    file.Save(m_FileName, list, ok);
    if (ok)
        m_ownFile = m_FileName;
    // The script counts as saved even when the library could not write it;
    // the library has told the user why.
    m_Changed = false;
    return ok;
}

bool frmScriptViewer::collectModules(ModuleList &list)
{
    const int top = m_cmVorelModule.ubound();
    for (int i = m_cmVorelModule.lbound(); i <= top; ++i) {
        try {
            VorelModule *c = m_cmVorelModule.at(qint16(i));
            c->Caption(); // the probe: a hole fails here
            if (!c->moduleData())
                throw IvrError(QStringLiteral("Module %1 has no data").arg(i));
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

// A save replaces the file whole. A file that this window neither loaded nor
// wrote, and that the user did not pick in the save dialog, may be anything
// (a script the loader refused, a newer version's script): its old bytes are
// kept beside it once, under a name that no later save takes.
bool frmScriptViewer::keepOldFile()
{
    const QFileInfo target(m_FileName);
    if (!target.isFile() || target.absoluteFilePath() == QFileInfo(m_ownFile).absoluteFilePath())
        return true;
    QString backup = m_FileName + QStringLiteral(".bak");
    for (int n = 1; QFileInfo::exists(backup) || QFileInfo(backup).isSymLink(); ++n)
        backup = m_FileName + QStringLiteral(".bak.") + QString::number(n);
    if (!QFile::copy(m_FileName, backup)) {
        MsgBox::critical(QStringLiteral("The script \"%1\" was not saved: the file it would "
                                        "replace could not be kept as \"%2\".")
                                 .arg(QDir::toNativeSeparators(m_FileName),
                                      QDir::toNativeSeparators(backup)));
        return false;
    }
    m_ownFile = m_FileName;
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
