#include "definitionkeys.h"

#include <QHash>

namespace ivr {

namespace {

const QHash<QString, DefinitionKeys::Kind> &kinds()
{
    using K = DefinitionKeys::Kind;
    static const QHash<QString, K> table = [] {
        QHash<QString, K> t;
        for (const QString &exit : DefinitionKeys::exitKeys())
            t.insert(exit, K::Text);
        for (const char *key : {"TextToPlay",
                                "FileName",
                                "PreDefBuffer",
                                "DefaultExt",
                                "QueryString",
                                "ConnectionString",
                                "SendTo",
                                "MailFrom",
                                "Subject",
                                "Attachment",
                                "Message",
                                "CommandLine",
                                "Condition",
                                "ScriptName",
                                "Description"})
            t.insert(QString::fromLatin1(key), K::Text);
        for (const char *key : {"isTextMsg", "PlayBeep", "StopOnDigit", "Compact"})
            t.insert(QString::fromLatin1(key), K::Flag);
        for (const char *key :
             {"ReplayCount", "PauseBetn", "TimeOut", "MinLength", "MaxLength", "RecordLen"})
            t.insert(QString::fromLatin1(key), K::Number);
        t.insert(QStringLiteral("RunMode"), K::Int32);
        t.insert(QStringLiteral("Left"), K::Float);
        t.insert(QStringLiteral("Top"), K::Float);
        return t;
    }();
    return table;
}

} // namespace

std::optional<DefinitionKeys::Kind> DefinitionKeys::kindOf(const QString &key)
{
    const auto it = kinds().constFind(key);
    if (it == kinds().constEnd())
        return std::nullopt;
    return *it;
}

const QStringList &DefinitionKeys::exitKeys()
{
    static const QStringList keys = [] {
        QStringList k{QStringLiteral("NextModule")};
        for (int digit = 0; digit <= 9; ++digit)
            k << QStringLiteral("OnDigit") + QString::number(digit);
        k << QStringLiteral("OnStar") << QStringLiteral("OnHash") << QStringLiteral("OnTimeOut")
          << QStringLiteral("OnSuccess") << QStringLiteral("OnFail") << QStringLiteral("OnNoRecord")
          << QStringLiteral("OnFinish");
        return k;
    }();
    return keys;
}

const QStringList &DefinitionKeys::commonMemberKeys()
{
    static const QStringList keys{QStringLiteral("FileName"),
                                  QStringLiteral("MonthFile"),
                                  QStringLiteral("BeepFileName"),
                                  QStringLiteral("ScriptName"),
                                  QStringLiteral("ScriptCount")};
    return keys;
}

} // namespace ivr
