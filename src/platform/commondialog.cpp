#include "commondialog.h"

#include "ivrerror.h"

#include <QApplication>
#include <QFileDialog>
#include <QRegularExpression>

namespace ivr {

namespace {
CommonDialog::Answer &testAnswer()
{
    static CommonDialog::Answer answer;
    return answer;
}

QString qtPatterns(const QString &windowsPatterns)
{
    QStringList patterns = windowsPatterns.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (QString &p : patterns) {
        p = p.trimmed();
        // Files without a dot count too.
        if (p == QLatin1String("*.*"))
            p = QStringLiteral("*");
    }
    return patterns.join(QLatin1Char(' '));
}
} // namespace

void CommonDialog::setTestAnswer(Answer answer)
{
    testAnswer() = std::move(answer);
}

void CommonDialog::clearTestAnswer()
{
    testAnswer() = nullptr;
}

QStringList CommonDialog::nameFilters() const
{
    QStringList filters;
    const QStringList parts = Filter.split(QLatin1Char('|'));
    bool hasAll = false;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts.at(i).trimmed();
        const QString patterns = qtPatterns(parts.at(i + 1));
        if (patterns == QLatin1String("*"))
            hasAll = true;
        // "Wav Files (*.wav)" already names its patterns; QFileDialog reads
        // the last bracket, so the patterns are given once, in Qt's form.
        static const QRegularExpression trailingBracket(QStringLiteral("\\(([^()]*)\\)$"));
        const auto match = trailingBracket.match(description);
        const QString name = match.hasMatch() ? description.left(match.capturedStart()).trimmed()
                                              : description;
        filters << QStringLiteral("%1 (%2)").arg(name, patterns);
    }
    if (!filters.isEmpty() && !hasAll)
        filters << QStringLiteral("All Files (*)");
    return filters;
}

void CommonDialog::ShowOpen(QWidget *parent)
{
    show(Mode::Open, parent);
}

void CommonDialog::ShowSave(QWidget *parent)
{
    show(Mode::Save, parent);
}

void CommonDialog::show(Mode mode, QWidget *parent)
{
    std::optional<QString> chosen;
    if (testAnswer()) {
        chosen = testAnswer()(*this, mode);
    } else {
        QFileDialog dialog(parent ? parent : QApplication::activeWindow(), DialogTitle);
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setAcceptMode(mode == Mode::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        dialog.setFileMode(mode == Mode::Open && (Flags & FileMustExist) ? QFileDialog::ExistingFile
                                                                          : QFileDialog::AnyFile);
        if (mode == Mode::Save && !(Flags & OverwritePrompt))
            dialog.setOption(QFileDialog::DontConfirmOverwrite);
        const QStringList filters = nameFilters();
        if (!filters.isEmpty()) {
            dialog.setNameFilters(filters);
            dialog.selectNameFilter(filters.value(qMax(0, FilterIndex - 1)));
        }
        if (!FileName.isEmpty())
            dialog.selectFile(FileName);
        if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
            chosen = dialog.selectedFiles().constFirst();
    }

    if (chosen) {
        FileName = *chosen;
        return;
    }
    if (mode == Mode::Save)
        FileName.clear();
    if (CancelError)
        throw IvrError(QStringLiteral("Cancel was selected."));
}

} // namespace ivr
