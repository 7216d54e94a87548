// A bare Qt Widgets program with the designer's kind of main window.
#include "barewindow.h"

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    BareWindow window;
    window.show();
    return app.exec();
}
