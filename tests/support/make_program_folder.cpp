// Makes a program folder for a whole-program check and copies the designer
// into it: make_program_folder <folder> [--enquiry|--empty-flags|--no-database] [--real-regsvr]
#include "programfolder.h"

#include <QCoreApplication>
#include <QFile>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.isEmpty())
        return 2;
    ProgramFolder::Options options;
    if (args.contains(QStringLiteral("--enquiry")))
        options.flags = ProgramFolder::Options::Flags::Shown;
    if (args.contains(QStringLiteral("--empty-flags")))
        options.flags = ProgramFolder::Options::Flags::EmptyTable;
    if (args.contains(QStringLiteral("--no-database")))
        options.flags = ProgramFolder::Options::Flags::NoDatabase;
    options.realRegSvr = args.contains(QStringLiteral("--real-regsvr"));
    const QString folder = args.constFirst();
    if (!ProgramFolder::make(folder, options))
        return 1;
    const QString designer = ProgramFolder::buildProgramDir() + QStringLiteral("/ivr-designer");
    QFile::remove(folder + QStringLiteral("/ivr-designer"));
    if (QFile::exists(designer) && !QFile::copy(designer, folder + QStringLiteral("/ivr-designer")))
        return 1;
    return 0;
}
