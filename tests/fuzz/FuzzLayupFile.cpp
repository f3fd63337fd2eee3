// Any bytes as a layup file: it is refused with one line, or a job reads its plies and writes them.

#include "FuzzTarget.h"

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"
#include "openhost/layup/ZETOpenLayupFile.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETMathematics/ZETMathZeroMagnitudeVectorException.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int typeCount = ZETLaserOptions::FileQuilmonPartData + 1;

/*! Writes into a folder of its own, which goes again. */
void RunJob(const ZETOpenLayupModel& model, ZETLaserOptions::EOutputFileType type)
{
    const QString folder = u"written"_s;
    QDir().mkdir(folder);
    ZETLaserOptions options;
    options.SetFileType(type);
    const bool isNesting = type == ZETLaserOptions::FileQuilmonPartData;
    options.SetOutputType(isNesting ? ZETLaserOptions::OutputFlatNesting : ZETLaserOptions::Output3D);
    options.SetCompRoot(model.root);
    options.SetActiveConfiguration(model.root->GetActiveMfgConfiguration());
    options.SetPartName(model.root->GetLabel());
    options.SetFileName(folder + u"/part."_s + ZETLaserOptions::GetFileTypeExtensionString(type));
    options.SelectAllPlies(options.GetOutputType());
    options.SelectAllProjectors();
    const auto processes = options.GetLaserProcesses();
    if (processes->ReadLaserData() && processes->ProcessLaserData())
        processes->WriteLaserData();
    QDir(folder).removeRecursively();
}
} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    ZETOpenMessageQueue::Install();
    try {
        const ZETOpenLayupModel model = ZETOpenLayupFile::Load(u"fuzz.layup.json"_s, bytes);
        for (const ZETOpenJsonError& warning : model.warnings)
            FuzzTarget::RequireOneLine(warning.GetMessage());
        RunJob(model, static_cast<ZETLaserOptions::EOutputFileType>(size % typeCount));
    } catch (const ZETOpenJsonError& error) {
        FuzzTarget::RequireOneLine(error.GetMessage());
    }
    return 0;
}
