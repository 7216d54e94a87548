#include "ivrapplication.h"

#include "ivrerror.h"
#include "unhandledfailure.h"

#include <QFont>

namespace ivr {

IvrApplication::IvrApplication(int &argc, char **argv)
    : QApplication(argc, argv)
{}

bool IvrApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const IvrError &error) {
        UnhandledFailure::report(error.description());
    } catch (const std::exception &error) {
        UnhandledFailure::report(QString::fromLocal8Bit(error.what()));
    }
    return false;
}

void IvrApplication::setUpFonts()
{
    const QString dejaVu = QStringLiteral("DejaVu Sans");
    QFont::insertSubstitution(QStringLiteral("MS Sans Serif"), dejaVu);
    QFont::insertSubstitution(QStringLiteral("Verdana"), dejaVu);
    QFont font(QStringLiteral("MS Sans Serif"));
    font.setPointSizeF(8.25);
    QApplication::setFont(font);
}

} // namespace ivr
