#pragma once

#include "property.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>

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

    // Keys that hold a value, in a stable order.
    QStringList keys() const;
    bool hasKey(const QString &key) const { return m_values.contains(key); }

    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);

    // Exits: "[Target]" or "".
    QString NextModule() const { return text(u"NextModule"); }
    void setNextModule(const QString &v) { setText(u"NextModule", v); }
    QString OnDigit0() const { return text(u"OnDigit0"); }
    void setOnDigit0(const QString &v) { setText(u"OnDigit0", v); }
    QString OnDigit1() const { return text(u"OnDigit1"); }
    void setOnDigit1(const QString &v) { setText(u"OnDigit1", v); }
    QString OnDigit2() const { return text(u"OnDigit2"); }
    void setOnDigit2(const QString &v) { setText(u"OnDigit2", v); }
    QString OnDigit3() const { return text(u"OnDigit3"); }
    void setOnDigit3(const QString &v) { setText(u"OnDigit3", v); }
    QString OnDigit4() const { return text(u"OnDigit4"); }
    void setOnDigit4(const QString &v) { setText(u"OnDigit4", v); }
    QString OnDigit5() const { return text(u"OnDigit5"); }
    void setOnDigit5(const QString &v) { setText(u"OnDigit5", v); }
    QString OnDigit6() const { return text(u"OnDigit6"); }
    void setOnDigit6(const QString &v) { setText(u"OnDigit6", v); }
    QString OnDigit7() const { return text(u"OnDigit7"); }
    void setOnDigit7(const QString &v) { setText(u"OnDigit7", v); }
    QString OnDigit8() const { return text(u"OnDigit8"); }
    void setOnDigit8(const QString &v) { setText(u"OnDigit8", v); }
    QString OnDigit9() const { return text(u"OnDigit9"); }
    void setOnDigit9(const QString &v) { setText(u"OnDigit9", v); }
    QString OnStar() const { return text(u"OnStar"); }
    void setOnStar(const QString &v) { setText(u"OnStar", v); }
    QString OnHash() const { return text(u"OnHash"); }
    void setOnHash(const QString &v) { setText(u"OnHash", v); }
    QString OnTimeOut() const { return text(u"OnTimeOut"); }
    void setOnTimeOut(const QString &v) { setText(u"OnTimeOut", v); }
    QString OnSuccess() const { return text(u"OnSuccess"); }
    void setOnSuccess(const QString &v) { setText(u"OnSuccess", v); }
    QString OnFail() const { return text(u"OnFail"); }
    void setOnFail(const QString &v) { setText(u"OnFail", v); }
    QString OnNoRecord() const { return text(u"OnNoRecord"); }
    void setOnNoRecord(const QString &v) { setText(u"OnNoRecord", v); }
    QString OnFinish() const { return text(u"OnFinish"); }
    void setOnFinish(const QString &v) { setText(u"OnFinish", v); }

    // The prompt: spoken text or wave file. In type 11 FileName is the
    // program to start.
    bool isTextMsg() const { return flag(u"isTextMsg"); }
    void setisTextMsg(bool v) { setFlag(u"isTextMsg", v); }
    QString TextToPlay() const { return text(u"TextToPlay"); }
    void setTextToPlay(const QString &v) { setText(u"TextToPlay", v); }
    QString FileName() const { return text(u"FileName"); }
    void setFileName(const QString &v) { setText(u"FileName", v); }

    double ReplayCount() const { return number(u"ReplayCount"); }
    void setReplayCount(double v) { setNumber(u"ReplayCount", v); }
    double PauseBetn() const { return number(u"PauseBetn"); }
    void setPauseBetn(double v) { setNumber(u"PauseBetn", v); }
    double TimeOut() const { return number(u"TimeOut"); }
    void setTimeOut(double v) { setNumber(u"TimeOut", v); }
    double MinLength() const { return number(u"MinLength"); }
    void setMinLength(double v) { setNumber(u"MinLength", v); }
    double MaxLength() const { return number(u"MaxLength"); }
    void setMaxLength(double v) { setNumber(u"MaxLength", v); }
    double RecordLen() const { return number(u"RecordLen"); }
    void setRecordLen(double v) { setNumber(u"RecordLen", v); }
    bool PlayBeep() const { return flag(u"PlayBeep"); }
    void setPlayBeep(bool v) { setFlag(u"PlayBeep", v); }
    bool StopOnDigit() const { return flag(u"StopOnDigit"); }
    void setStopOnDigit(bool v) { setFlag(u"StopOnDigit", v); }

    QString PreDefBuffer() const { return text(u"PreDefBuffer"); }
    void setPreDefBuffer(const QString &v) { setText(u"PreDefBuffer", v); }
    QString DefaultExt() const { return text(u"DefaultExt"); }
    void setDefaultExt(const QString &v) { setText(u"DefaultExt", v); }
    QString QueryString() const { return text(u"QueryString"); }
    void setQueryString(const QString &v) { setText(u"QueryString", v); }
    QString ConnectionString() const { return text(u"ConnectionString"); }
    void setConnectionString(const QString &v) { setText(u"ConnectionString", v); }
    QString SendTo() const { return text(u"SendTo"); }
    void setSendTo(const QString &v) { setText(u"SendTo", v); }
    QString MailFrom() const { return text(u"MailFrom"); }
    void setMailFrom(const QString &v) { setText(u"MailFrom", v); }
    QString Subject() const { return text(u"Subject"); }
    void setSubject(const QString &v) { setText(u"Subject", v); }
    QString Attachment() const { return text(u"Attachment"); }
    void setAttachment(const QString &v) { setText(u"Attachment", v); }
    QString Message() const { return text(u"Message"); }
    void setMessage(const QString &v) { setText(u"Message", v); }
    QString CommandLine() const { return text(u"CommandLine"); }
    void setCommandLine(const QString &v) { setText(u"CommandLine", v); }
    QString Condition() const { return text(u"Condition"); }
    void setCondition(const QString &v) { setText(u"Condition", v); }
    qint32 RunMode() const;
    void setRunMode(qint32 v);
    // Type 12: the script to start. CommonModule's list is ScriptName(int).
    QString ScriptName() const { return text(u"ScriptName"); }
    void setScriptName(const QString &v) { setText(u"ScriptName", v); }

    // Asked of any canvas module.
    QString Description() const { return text(u"Description"); }
    void setDescription(const QString &v) { setText(u"Description", v); }
    bool Compact() const { return flag(u"Compact"); }
    void setCompact(bool v) { setFlag(u"Compact", v); }
    float Left() const { return floatValue(u"Left"); }
    void setLeft(float v) { setFloat(u"Left", v); }
    float Top() const { return floatValue(u"Top"); }
    void setTop(float v) { setFloat(u"Top", v); }

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

    QString text(QStringView key) const;
    void setText(QStringView key, const QString &v);
    bool flag(QStringView key) const;
    void setFlag(QStringView key, bool v);
    double number(QStringView key) const;
    void setNumber(QStringView key, double v);
    float floatValue(QStringView key) const;
    void setFloat(QStringView key, float v);
    void packScripts() const;

    QJsonObject m_values;
    std::array<QString, FileNameSlots> m_fileNames;
    std::array<QString, MonthFileSlots> m_monthFiles;
    QString m_beepFileName;
    mutable QList<ScriptEntry> m_scripts;
};

} // namespace ivr
