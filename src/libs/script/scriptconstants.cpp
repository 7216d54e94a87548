#include "scriptconstants.h"

#include "scriptutility.h"

namespace ivr {

QString ScriptConstants::ConnectedModuleKey()
{
    return QStringLiteral("[Connected]");
}

QString ScriptConstants::EndModuleKey()
{
    return QStringLiteral("[End Call]");
}

QString ScriptConstants::ReservedModuleName()
{
    return QStringLiteral("[Common]");
}

QString ScriptConstants::ScriptSuffix()
{
    return QLatin1Char('.') + ScriptUtility::ScriptExtension();
}

} // namespace ivr
