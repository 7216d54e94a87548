#include "keptnamepicker.h"

#include "commondialog.h"
#include "ivrerror.h"

namespace ivr {

std::optional<QString>
pickKeepingLastName(CommonDialog &picker, const QString &filter, QWidget *parent)
{
    try {
        picker.Flags = CommonDialog::Explorer | CommonDialog::FileMustExist;
        picker.Filter = filter;
        picker.FilterIndex = 1;
        picker.ShowOpen(parent);
        return picker.FileName;
    } catch (const IvrError &) {
        return std::nullopt;
    }
}

} // namespace ivr
