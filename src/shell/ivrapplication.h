#pragma once

#include <QApplication>

namespace ivr {

// The application object: it catches what no handler of an event caught and
// hands it to UnhandledFailure, so that one failing action does not end a
// user's session.
class IvrApplication : public QApplication
{
    Q_OBJECT

public:
    IvrApplication(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    // "MS Sans Serif" and "Verdana" are not on this system: DejaVu Sans
    // takes their place at their point sizes.
    static void setUpFonts();
};

} // namespace ivr
