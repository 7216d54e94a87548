// make_program_folder <folder> [--enquiry|--empty-flags|--no-database] [--real-regsvr]:
// a program folder for a whole-program check, with the designer copied in.
#include "programfolder.h"

#include <QCoreApplication>
#include <QFile>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.isEmpty())
        return 2;
    using Flags = ProgramFolder::Options::Flags;
    ProgramFolder::Options options;
    options.flags = args.contains("--enquiry")       ? Flags::Shown
                    : args.contains("--empty-flags") ? Flags::EmptyTable
                    : args.contains("--no-database") ? Flags::NoDatabase
                                                     : Flags::Hidden;
    options.realRegSvr = args.contains("--real-regsvr");
    const QString folder = args.constFirst();
    const QString designer = ProgramFolder::buildProgramDir() + "/ivr-designer";
    QFile::remove(folder + "/ivr-designer");
    const bool ok
            = ProgramFolder::make(folder, options)
              && (!QFile::exists(designer) || QFile::copy(designer, folder + "/ivr-designer"));
    return ok ? 0 : 1;
}
