#include "definitionkeys.h"

#include <utility>
#include <vector>

namespace ivr {

namespace {

using KnownKeys = std::vector<std::pair<QString, DefinitionKeys::Kind>>;

constexpr size_t KindBuckets = 128;

// Length, first and last letter spread the known keys over the buckets with
// at most three in one.
size_t bucketOf(QStringView key)
{
    return (size_t(key.size()) * 5 + key.back().unicode() + key.front().unicode() * 3u)
           % KindBuckets;
}

// Loading asks for the kind of every key of every module: comparing a key
// with the one to three known keys of its bucket takes less than half the
// time of looking it up in a QHash.
const std::vector<KnownKeys> &kinds()
{
    using K = DefinitionKeys::Kind;
    static const std::vector<KnownKeys> table = [] {
        std::vector<KnownKeys> t(KindBuckets);
        auto add = [&t](const QString &key, K kind) {
            t[bucketOf(key)].emplace_back(key, kind);
        };
        for (const QString &exit : DefinitionKeys::exitKeys())
            add(exit, K::Text);
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
            add(QString::fromLatin1(key), K::Text);
        for (const char *key : {"isTextMsg", "PlayBeep", "StopOnDigit", "Compact"})
            add(QString::fromLatin1(key), K::Flag);
        for (const char *key :
             {"ReplayCount", "PauseBetn", "TimeOut", "MinLength", "MaxLength", "RecordLen"})
            add(QString::fromLatin1(key), K::Number);
        add(QStringLiteral("RunMode"), K::Int32);
        add(QStringLiteral("Left"), K::Float);
        add(QStringLiteral("Top"), K::Float);
        return t;
    }();
    return table;
}

} // namespace

std::optional<DefinitionKeys::Kind> DefinitionKeys::kindOf(QStringView key)
{
    if (key.isEmpty())
        return std::nullopt;
    for (const auto &[known, kind] : kinds()[bucketOf(key)]) {
        if (known == key)
            return kind;
    }
    return std::nullopt;
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
