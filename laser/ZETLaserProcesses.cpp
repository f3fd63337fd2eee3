#include "laser/ZETLaserProcesses.h"

#include "display/ZETLaserRenderer.h"
#include "laser/ZETLaserFileTypes.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserMessages.h"
#include "laser/ZETLaserProcesses_p.h"
#include "reader/ZETLaserReaderComposites.h"
#include "writers/ZETLaserWriter.h"

#include <ZETFeature/ZETFeatObject.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <QLocale>

namespace
{
/*! Length of a chord, in mm, that thinning may reach while no limit is set. Meant: it isn't the default of the option
 *  for that limit. */
constexpr double unlimitedLength = 10000000.0;

void AddNote(const QString& text)
{
    ZETLaserMessages::Add(text, ZETSysMessageQueue::TypeNote);
}

/*! The LAP format has one level of layers: exactly one of the two nest flags must be on. */
void CorrectNestFlags(ZETLaserOptions& options)
{
    if (options.GetFileType() != ZETLaserOptions::FileLAP)
        return;
    const bool nestSequences = options.GetNestSequencesWithinLayup();
    if (nestSequences != options.GetNestPliesWithinSequence())
        return;
    const QString make = ZETLaserOptions::GetFileTypeString(ZETLaserOptions::FileLAP);
    if (nestSequences) {
        options.SetNestSequencesWithinLayup(false);
        AddNote(ZETLaserProcesses::tr("Disabled Nest Sequences Within Layup for %1").arg(make));
    } else {
        options.SetNestPliesWithinSequence(true);
        AddNote(ZETLaserProcesses::tr("Enabled Nest Plies Within Sequence for %1").arg(make));
    }
}
} // namespace

ZETLaserProcesses::ZETLaserProcesses(ZETLaserOptions* options)
    : d(std::make_unique<ZETLaserProcessesPrivate>())
{
    d->options = options;
    CorrectNestFlags(*options);
    d->root = QSharedPointer<ZETLaserGroup>::create(QSharedPointer<QObject>());
    d->reader = QSharedPointer<ZETLaserReaderComposites>::create(options, d->root, &d->materials);
}

ZETLaserProcesses::~ZETLaserProcesses() = default;

bool ZETLaserProcesses::ReadLaserData()
{
    d->root->Clear();
    return d->reader->Read();
}

bool ZETLaserProcesses::ProcessLaserData()
{
    const ZETLaserOptions& options = *d->options;
    if (!options.GetUseMinimizePointsTolerance())
        return true;
    const double maxLength = options.GetUseMaxLength() ? options.GetMaxLength() : unlimitedLength;
    d->root->MinimizePoints(options.GetMinimizePointsTolerance(), maxLength);
    return true;
}

bool ZETLaserProcesses::WriteLaserData()
{
    const auto makeWriter = ZETLaserFileType::Of(d->options->GetFileType()).makeWriter;
    if (!makeWriter)
        return false;
    const QSharedPointer<ZETLaserWriter> writer = makeWriter(d->options, d->root, &d->materials);
    // Meant: no guard puts the locale back, so that an exception leaves the C locale in force, and what the application
    // had set as its default doesn't come back either.
    QLocale::setDefault(QLocale(QLocale::C));
    d->unwrittenFiles.clear();
    const bool result = writer->Write();
    d->unwrittenFiles = writer->GetFaults();
    QLocale::setDefault(QLocale::system());
    return result;
}

bool ZETLaserProcesses::DisplayLaserData()
{
    if (!d->renderer)
        d->renderer = QSharedPointer<ZETLaserRenderer>::create(d->options, d->root);
    return d->renderer->Render();
}

void ZETLaserProcesses::EraseLaserData()
{
    if (d->renderer)
        d->renderer->Erase();
}

ZETLaserProcesses::VisObjects ZETLaserProcesses::GetRenderVisObjects()
{
    return d->renderer ? d->renderer->GetVisObjects() : VisObjects();
}

QMap<QString, QString> ZETLaserProcesses::GetUnwrittenFiles() const
{
    return d->unwrittenFiles;
}
