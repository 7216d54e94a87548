#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace ivr {

class CommonDialog;

// The shared picker as the attachment and the program boxes use it: their
// own filter, the title and the name as the last user left them, and the
// picker's name afterwards as the answer, so that a cancel gives back the
// last name picked anywhere. Nothing when the picker fails.
std::optional<QString>
pickKeepingLastName(CommonDialog &picker, const QString &filter, QWidget *parent);

} // namespace ivr
