#include "writers/ZETLaserWriterAPT.h"

#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserMessages.h"

using namespace Qt::Literals::StringLiterals;

bool ZETLaserWriterAPTBase::WriteStub(const QString& notSupportedText, QLatin1StringView dataLine)
{
    OpenFiles();
    WriteReportHeader();
    ZETLaserMessages::Add(notSupportedText, ZETSysMessageQueue::TypeProblem);
    stream.WriteLine("LAYER START myData"_L1);
    stream.WriteLine(dataLine);
    stream.WriteLine("Baser laser Group Name "_L1, root->GetName()); // meant: "Baser" is how the line reads
    stream.WriteLine("LAYER END myData"_L1);
    WriteReportFooter();
    CloseFiles();
    return true;
}

ZETLaserWriterAPT::ZETLaserWriterAPT(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriterAPTBase(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterAPT::Write()
{
    return WriteStub(tr("%1 not supported").arg(u"APT laser data"_s), "... this will become APT ply data ..."_L1);
}

ZETLaserWriterAPT_2::ZETLaserWriterAPT_2(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriterAPTBase(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterAPT_2::Write()
{
    return WriteStub(tr("%1 not supported").arg(u"APT_2 laser data"_s), "... this will become APT_2 ply data ..."_L1);
}

ZETLaserWriterAPT_SL::ZETLaserWriterAPT_SL(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriterAPTBase(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterAPT_SL::Write()
{
    return WriteStub(tr("%1 not supported").arg(u"APT_SL laser data"_s), "... this will become APT_SL ply data ..."_L1);
}
