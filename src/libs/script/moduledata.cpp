#include "moduledata.h"

#include "exittables.h"

namespace ivr {

namespace {

bool hasPrompt(int type)
{
    switch (type) {
    case 0:
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
        return true;
    default:
        return false;
    }
}

} // namespace

ModuleDataPtr ModuleData::createNew(int type, const QString &name)
{
    auto module = std::make_shared<ModuleData>();
    module->setModuleType(type);
    module->setName(name);
    Definition &d = module->definition();
    for (const QString &exit : ExitTables::keys(type, ExitWalk::DialogWrites))
        d.Properties(exit).setValue(QString());
    if (hasPrompt(type)) {
        d.setisTextMsg(true);
        d.setTextToPlay(QString());
        d.setFileName(QString());
    }
    switch (type) {
    case 3:
        d.setReplayCount(1);
        d.setPauseBetn(1);
        break;
    case 4:
        d.setPlayBeep(false);
        d.setTimeOut(5);
        break;
    case 5:
        d.setPreDefBuffer(QString());
        d.setPlayBeep(false);
        d.setTimeOut(5);
        d.setMinLength(1);
        d.setMaxLength(10);
        break;
    case 6:
        d.setDefaultExt(QString());
        break;
    case 7:
        d.setRecordLen(30);
        d.setPlayBeep(true);
        d.setStopOnDigit(true);
        break;
    case 11:
        d.setFileName(QString());
        d.setCommandLine(QString());
        d.setRunMode(0);
        break;
    case 12:
        d.setScriptName(QString());
        break;
    default:
        break;
    }
    if (type != CommonModuleType) {
        d.setDescription(QString());
        d.setCompact(false);
    }
    return module;
}

} // namespace ivr
