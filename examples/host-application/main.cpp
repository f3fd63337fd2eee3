// A host application that writes a Virtek part file: host-application MODEL FILE
//
// What stands above the line comes from the host; here it is the open host and a layup file. What stands below is how
// every host calls the library.

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"
#include "openhost/layup/ZETOpenLayupFile.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETSystem/ZETSysMessageQueue.h>

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3)
        return std::puts("usage: host-application MODEL FILE"), 2;

    try {
        const ZETOpenLayupModel model = ZETOpenLayupFile::Load(QString::fromLocal8Bit(argv[1]));
        ZETOpenMessageQueue::Install();
        // ------------------------------------------------------------------------------------------------------------

        ZETLaserOptions options;
        options.SetCompRoot(model.root);
        options.SetActiveConfiguration(model.root->GetActiveMfgConfiguration()); // its defaults, and all plies
        options.SetFileType(ZETLaserOptions::FileVirtek);
        options.SetFileName(QString::fromLocal8Bit(argv[2]));
        options.SetPartName(model.root->GetLabel());
        options.SelectAllProjectors();

        const auto processes = options.GetLaserProcesses();
        const bool isWritten =
            processes->ReadLaserData() && processes->ProcessLaserData() && processes->WriteLaserData();

        std::puts(ZETSysMessageQueue::GetMessageQueue()->GetSimpleMessageReport().toUtf8().constData());
        return isWritten ? 0 : 1;
    } catch (const ZETSysException& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
