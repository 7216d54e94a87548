#pragma once

#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace ivr {

// The common file dialog the forms share: a title, a filter in the
// "Text|*.ext|Text|*.ext" form, flags, a proposed name, open and save.
// One instance lives in the main window and keeps its title and FileName
// from one use to the next, as its callers rely on.
class CommonDialog
{
public:
    enum Flags : long {
        OverwritePrompt = 0x2,
        HideReadOnly = 0x4,
        ShowHelp = 0x10,
        FileMustExist = 0x1000,
        Explorer = 0x80000,
    };
    enum class Mode { Open, Save };

    // Tests script the user's answer: a file name, or nullopt for Cancel.
    using Answer = std::function<std::optional<QString>(const CommonDialog &, Mode)>;
    static void setTestAnswer(Answer answer);
    static void clearTestAnswer();

    QString DialogTitle;
    QString Filter;
    int FilterIndex = 1;
    QString FileName;
    long Flags = 0;
    bool CancelError = false;

    // Cancel keeps FileName as it was (an IvrError instead when CancelError is set).
    void ShowOpen(QWidget *parent = nullptr);
    // Cancel gives an empty FileName, so that a cancelled save writes nothing.
    void ShowSave(QWidget *parent = nullptr);

    // The filter as QFileDialog takes it; public so that tests can check it.
    QStringList nameFilters() const;

private:
    void show(Mode mode, QWidget *parent);
};

} // namespace ivr
