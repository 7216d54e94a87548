#include "scriptfile.h"

#include "definitionkeys.h"
#include "msgbox.h"
#include "scriptfilereader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QVarLengthArray>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ivr {

namespace {

// Far above any script a person draws (10,000 modules take a few MB), low
// enough that a stray huge file is refused before it is read into memory.
constexpr qint64 MaxScriptFileSize = qint64(128) * 1024 * 1024;

void reportLoadFailure(const QString &path, const QString &reason)
{
    MsgBox::critical(QStringLiteral("The script \"%1\" could not be opened: %2.")
                             .arg(QDir::toNativeSeparators(path), reason));
}

void reportSaveFailure(const QString &path, const QString &reason)
{
    MsgBox::critical(QStringLiteral("The script \"%1\" could not be saved: %2.")
                             .arg(QDir::toNativeSeparators(path), reason));
}

QJsonArray textArray(const QStringList &texts)
{
    QJsonArray array;
    for (const QString &text : texts)
        array.append(text);
    return array;
}

QJsonObject definitionToJson(const ModuleData &module)
{
    const Definition &d = module.definition();
    QJsonObject stored = d.storedValues();
    if (module.ModuleType() == ModuleData::CommonModuleType) {
        QStringList numbers, months;
        for (int i = 0; i < Definition::FileNameSlots; ++i)
            numbers << d.FileName(i);
        for (int i = 0; i < Definition::MonthFileSlots; ++i)
            months << d.MonthFile(i);
        const QStringList scripts = d.scriptNames();
        stored.insert(u"FileName", textArray(numbers));
        stored.insert(u"MonthFile", textArray(months));
        stored.insert(u"BeepFileName", d.BeepFileName());
        stored.insert(u"ScriptName", textArray(scripts));
        stored.insert(u"ScriptCount", qint64(scripts.size()));
        return stored;
    }
    // Every canvas module carries its place and look, set or not, so that a
    // reader of the file finds them on each one. Searched for as Latin-1, the
    // form the object keeps them in: a search with UTF-16 keys costs two
    // fifths more.
    using namespace Qt::StringLiterals;
    if (!stored.contains("Description"_L1))
        stored.insert(u"Description", QString());
    if (!stored.contains("Left"_L1))
        stored.insert(u"Left", 0.0);
    if (!stored.contains("Top"_L1))
        stored.insert(u"Top", 0.0);
    if (!stored.contains("Compact"_L1))
        stored.insert(u"Compact", false);
    return stored;
}

// The members of an object as the lines of an indented document, without
// its braces: "    \"key\": value,\n...". Empty for an empty object.
QByteArray memberLines(const QJsonObject &object)
{
    if (object.isEmpty())
        return {};
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Indented);
    return text.mid(2, text.size() - 4); // "{\n" and "}\n"
}

// Appends the lines of text, each line after the first indented by the given
// blanks. The output is sized once and the lines copied in whole: appending
// line by line took nearly a tenth of a large save. The breaks are found once, as
// the copying finds them: counting them first with QByteArrayView::count
// took more than the rest of the indenting.
void appendIndented(QByteArray &out, QByteArrayView text, QByteArrayView indent)
{
    QVarLengthArray<qsizetype, 64> breaks;
    for (qsizetype at = text.indexOf('\n'); at >= 0; at = text.indexOf('\n', at + 1))
        breaks.append(at);
    qsizetype at = out.size();
    out.resize(at + text.size() + breaks.size() * indent.size());
    char *const to = out.data();
    qsizetype from = 0;
    for (const qsizetype end : breaks) {
        std::memcpy(to + at, text.data() + from, size_t(end + 1 - from));
        at += end + 1 - from;
        std::memcpy(to + at, indent.data(), size_t(indent.size()));
        at += indent.size();
        from = end + 1;
    }
    std::memcpy(to + at, text.data() + from, size_t(text.size() - from));
}

// True for a text that JSON holds as it stands: printable ASCII without a
// quote or a backslash, so its bytes are what Qt would write.
bool writesAsIs(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.unicode() >= 0x20 && c.unicode() < 0x80 && c != u'"' && c != u'\\';
    });
}

// One module's entry as the lines of the indented document, its first line
// without indent and its last without a break. Building the entry as an
// object only to write its name and type took a seventh of a large save; a
// module with keys of a newer version, or a name that needs escapes, is
// still written through the object so that Qt orders and escapes them.
void appendModule(QByteArray &out, const ModuleData &module)
{
    constexpr QByteArrayView EntryIndent = "\n        ";
    constexpr QByteArrayView MemberIndent = "\n            ";
    const QString name = module.Name();
    if (!module.unknownKeys().isEmpty() || !writesAsIs(name)) {
        QJsonObject entry = module.unknownKeys();
        entry.insert(u"name", name);
        entry.insert(u"type", module.ModuleType());
        entry.insert(u"definition", definitionToJson(module));
        const QByteArray text = QJsonDocument(entry).toJson(QJsonDocument::Indented);
        appendIndented(out, QByteArrayView(text).chopped(1), EntryIndent.sliced(1));
        return;
    }
    const QByteArray definition
            = QJsonDocument(definitionToJson(module)).toJson(QJsonDocument::Indented);
    out += "{";
    out += MemberIndent;
    out += "\"definition\": ";
    appendIndented(out, QByteArrayView(definition).chopped(1), MemberIndent.sliced(1));
    out += ",";
    out += MemberIndent;
    out += "\"name\": \"";
    out += name.toLatin1();
    out += "\",";
    out += MemberIndent;
    out += "\"type\": ";
    out += QByteArray::number(module.ModuleType());
    out += EntryIndent;
    out += "}";
}

// The document is written module by module rather than built whole: one
// QJsonArray holding every module costs three times the writing itself on a
// large script. The output is the same indented JSON. Top-level keys this
// version does not know follow the modules; inside a module they stand in
// Qt's order among the known ones.
QByteArray serialise(const ModuleList &list)
{
    QByteArray out;
    out.reserve(qsizetype(list.count()) * 640 + 128);
    out += "{\n    \"format\": \"" + ScriptFileReader::formatName().toUtf8() + "\",\n";
    out += "    \"version\": " + QByteArray::number(ScriptFileReader::FormatVersion) + ",\n";
    out += "    \"modules\": [";
    const char *separator = "\n        ";
    for (const ModuleDataPtr &module : list) {
        out += separator;
        appendModule(out, *module);
        separator = ",\n        ";
    }
    QJsonObject unknown = list.unknownKeys();
    for (const QStringView key : {u"format", u"version", u"modules"})
        unknown.remove(key);
    const QByteArray more = memberLines(unknown);
    if (more.isEmpty())
        out += "\n    ]\n}\n";
    else
        out += "\n    ],\n" + more + "}\n";
    return out;
}

// Why a file can't be made at that path, in words, before trying: the
// system's own "No such file or directory" says neither which folder is
// missing nor that a file stands where a folder should be.
QString placeProblem(const QString &path)
{
    if (path.isEmpty())
        return QStringLiteral("no file name was given");
    const QFileInfo target(path);
    if (target.isDir())
        return QStringLiteral("a folder of that name is in the way");
    const QFileInfo folder(target.absolutePath());
    if (!folder.exists())
        return QStringLiteral("the folder \"%1\" does not exist")
                .arg(QDir::toNativeSeparators(folder.filePath()));
    if (!folder.isDir())
        return QStringLiteral("\"%1\" is a file, not a folder")
                .arg(QDir::toNativeSeparators(folder.filePath()));
    return {};
}

// What lies at a path that can't be a script, in words, before it is opened:
// opening a FIFO waits for a writer and opening a device may act on it.
QString sourceProblem(const QFileInfo &info)
{
    if (info.filePath().isEmpty() || !info.exists())
        return QStringLiteral("the file does not exist");
    if (info.isDir())
        return QStringLiteral("it is a folder, not a file");
    if (!info.isFile())
        return QStringLiteral("it is not a regular file");
    if (info.size() > MaxScriptFileSize)
        return QStringLiteral("the file is too large to be a script (%1 bytes)").arg(info.size());
    return {};
}

// The bytes of a script file, or nothing with the reason in problem. The
// file is opened without waiting and checked again once open, for what was
// put in its place after the first look; at most one byte beyond the size
// limit is read, since a file such as those under /proc may say it is empty
// and never end.
std::optional<QByteArray> readScript(const QString &path, QString &problem)
{
    problem = sourceProblem(QFileInfo(path));
    if (!problem.isEmpty())
        return std::nullopt;
    const int fd = ::open(QFile::encodeName(path).constData(),
                          O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        problem = qt_error_string(errno);
        return std::nullopt;
    }
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        problem = file.errorString();
        return std::nullopt;
    }
    struct stat status = {};
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        problem = QStringLiteral("it is not a regular file");
        return std::nullopt;
    }
    // Read straight into one buffer of the size the file gives, grown only
    // for a file that says less than it holds: a buffer per read and its
    // copy cost a large script as much again as the reading.
    constexpr qint64 Chunk = qint64(1) << 20;
    QByteArray data(qsizetype(qMin<qint64>(status.st_size, MaxScriptFileSize) + 1),
                    Qt::Uninitialized);
    qint64 filled = 0;
    while (filled <= MaxScriptFileSize) {
        if (filled == data.size())
            data.resize(qsizetype(qMin(filled + Chunk, MaxScriptFileSize + 1)));
        const qint64 got = file.read(data.data() + filled, data.size() - filled);
        if (got <= 0)
            break;
        filled += got;
    }
    data.truncate(qsizetype(filled));
    if (file.error() != QFileDevice::NoError) {
        problem = file.errorString();
        return std::nullopt;
    }
    if (data.size() > MaxScriptFileSize) {
        problem = QStringLiteral("the file is too large to be a script");
        return std::nullopt;
    }
    return data;
}

} // namespace

std::optional<ModuleList> ScriptFile::Load(const QString &path)
{
    QString problem;
    std::optional<QByteArray> data = readScript(path, problem);
    if (!data) {
        reportLoadFailure(path, problem);
        return std::nullopt;
    }
    ScriptFileReader reader;
    std::optional<ModuleList> list = reader.read(std::move(*data));
    if (!list)
        reportLoadFailure(path, reader.error());
    return list;
}

void ScriptFile::Save(const QString &path, const ModuleList &list, bool &Ok)
{
    Ok = false;
    const QString problem = placeProblem(path);
    if (!problem.isEmpty()) {
        reportSaveFailure(path, problem);
        return;
    }
    const QByteArray data = serialise(list);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        reportSaveFailure(path, file.errorString());
        return;
    }
    // QSaveFile would commit a file cut short by a full disk: each step is
    // checked, and a short one throws the new file away.
    if (file.write(data) != data.size() || !file.flush() || file.error() != QFileDevice::NoError) {
        file.cancelWriting();
        reportSaveFailure(path,
                          QStringLiteral("the file could not be written in full; the disk may "
                                         "be full"));
        return;
    }
    if (!file.commit()) {
        reportSaveFailure(path, file.errorString());
        return;
    }
    Ok = true;
}

} // namespace ivr
