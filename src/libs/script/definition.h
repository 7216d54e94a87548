#pragma once

#include "property.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>
#include <memory>

// One keyed value as a member pair: Key() and setKey(), both reaching the
// same stored value as Properties("Key").
#define IVR_DEFINITION_KEY(Type, ArgType, Key, Get, Set)                                           \
    Type Key() const                                                                               \
    {                                                                                              \
        return Get(u"" #Key);                                                                      \
    }                                                                                              \
    void set##Key(ArgType v)                                                                       \
    {                                                                                              \
        Set(u"" #Key, v);                                                                          \
    }
#define IVR_TEXT_KEY(Key) IVR_DEFINITION_KEY(QString, const QString &, Key, text, setText)
#define IVR_FLAG_KEY(Key) IVR_DEFINITION_KEY(bool, bool, Key, flag, setFlag)
#define IVR_NUMBER_KEY(Key) IVR_DEFINITION_KEY(double, double, Key, number, setNumber)
#define IVR_FLOAT_KEY(Key) IVR_DEFINITION_KEY(float, float, Key, floatValue, setFloat)

namespace ivr {

// The type-specific data of one module: named keys, each reachable as a
// member (TextToPlay(), setTextToPlay()) and by name (Properties("TextToPlay")),
// both reaching one stored value. A key never set reads "", 0 or false.
// Keys the program does not know (from a newer file) are kept as they came.
//
// A CommonModule (type 98) keeps its spoken-number table, its month table,
// its beep file and its associated scripts as direct members, not as
// Properties entries.
class Definition
{
public:
    static constexpr int FileNameSlots = 32;
    static constexpr int MonthFileSlots = 12;

    Property Properties(const QString &key) { return Property(this, key); }
    const Property Properties(const QString &key) const
    {
        return Property(const_cast<Definition *>(this), key);
    }

    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);

    // Exits: "[Target]" or "".
    IVR_TEXT_KEY(NextModule)
    IVR_TEXT_KEY(OnDigit0)
    IVR_TEXT_KEY(OnDigit1)
    IVR_TEXT_KEY(OnDigit2)
    IVR_TEXT_KEY(OnDigit3)
    IVR_TEXT_KEY(OnDigit4)
    IVR_TEXT_KEY(OnDigit5)
    IVR_TEXT_KEY(OnDigit6)
    IVR_TEXT_KEY(OnDigit7)
    IVR_TEXT_KEY(OnDigit8)
    IVR_TEXT_KEY(OnDigit9)
    IVR_TEXT_KEY(OnStar)
    IVR_TEXT_KEY(OnHash)
    IVR_TEXT_KEY(OnTimeOut)
    IVR_TEXT_KEY(OnSuccess)
    IVR_TEXT_KEY(OnFail)
    IVR_TEXT_KEY(OnNoRecord)
    IVR_TEXT_KEY(OnFinish)

    // The prompt: spoken text or wave file. In type 11 FileName is the
    // program to start.
    IVR_FLAG_KEY(isTextMsg)
    IVR_TEXT_KEY(TextToPlay)
    IVR_TEXT_KEY(FileName)

    IVR_NUMBER_KEY(ReplayCount)
    IVR_NUMBER_KEY(PauseBetn)
    IVR_NUMBER_KEY(TimeOut)
    IVR_NUMBER_KEY(MinLength)
    IVR_NUMBER_KEY(MaxLength)
    IVR_NUMBER_KEY(RecordLen)
    IVR_FLAG_KEY(PlayBeep)
    IVR_FLAG_KEY(StopOnDigit)

    IVR_TEXT_KEY(PreDefBuffer)
    IVR_TEXT_KEY(DefaultExt)
    IVR_TEXT_KEY(QueryString)
    IVR_TEXT_KEY(ConnectionString)
    IVR_TEXT_KEY(SendTo)
    IVR_TEXT_KEY(MailFrom)
    IVR_TEXT_KEY(Subject)
    IVR_TEXT_KEY(Attachment)
    IVR_TEXT_KEY(Message)
    IVR_TEXT_KEY(CommandLine)
    IVR_TEXT_KEY(Condition)
    qint32 RunMode() const;
    void setRunMode(qint32 v);
    // Type 12: the script to start. CommonModule's list is ScriptName(int).
    IVR_TEXT_KEY(ScriptName)

    // Asked of any canvas module.
    IVR_TEXT_KEY(Description)
    IVR_FLAG_KEY(Compact)
    IVR_FLOAT_KEY(Left)
    IVR_FLOAT_KEY(Top)

    // CommonModule: the wave files of the spoken numbers (0..31) and months
    // (0..11). An unset slot, and a slot out of range, reads "".
    QString FileName(int i) const;
    void setFileName(int i, const QString &path);
    QString MonthFile(int i) const;
    void setMonthFile(int i, const QString &path);
    QString BeepFileName() const { return m_beepFileName; }
    void setBeepFileName(const QString &path) { m_beepFileName = path; }

    // CommonModule: the associated scripts, counted from 1. RemoveScript marks
    // the first entry of that name that is not yet marked and leaves the
    // numbering alone, so a walk that reads n = ScriptCount() once and then
    // removes ScriptName(1)..ScriptName(n) in turn empties the list, equal
    // names included. The numbering is packed the next time the count is
    // read or a script is added.
    qint16 ScriptCount() const;
    QString ScriptName(int i) const;
    void AddScript(const QString &name);
    void RemoveScript(const QString &name);
    // The scripts that are not removed, in order.
    QStringList scriptNames() const;

    // The file's form of the keyed values (for ScriptFile).
    const QJsonObject &storedValues() const { return m_values; }
    void setStoredValues(const QJsonObject &values) { m_values = values; }

private:
    struct ScriptEntry
    {
        QString name;
        bool removed = false;
    };
    // The CommonModule's tables: one module of a script has them, so every
    // other module carries a null pointer instead of 44 empty texts.
    struct Tables
    {
        std::array<QString, FileNameSlots> fileNames;
        std::array<QString, MonthFileSlots> monthFiles;
    };

    QString text(QStringView key) const;
    void setText(QStringView key, const QString &v);
    bool flag(QStringView key) const;
    void setFlag(QStringView key, bool v);
    double number(QStringView key) const;
    void setNumber(QStringView key, double v);
    float floatValue(QStringView key) const;
    void setFloat(QStringView key, float v);
    void packScripts() const;
    Tables &tables();

    QJsonObject m_values;
    std::unique_ptr<Tables> m_tables; // made at the first table write
    QString m_beepFileName;
    mutable QList<ScriptEntry> m_scripts;
};

} // namespace ivr
