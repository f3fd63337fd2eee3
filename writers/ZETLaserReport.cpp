// The head and the foot of the report, and the paragraphs between them.

#include "writers/ZETLaserWriter.h"

#include "laser/ZETLaserOptions.h"

#include <ZETFeature/ZETFeatObject.h>

#include <QFileInfo>
#include <QPointer>

void ZETLaserWriter::WriteReportHeader()
{
    const auto type = options->GetOutputType();
    const bool nesting = type == ZETLaserOptions::OutputFlatNesting;
    const bool embedded = type == ZETLaserOptions::OutputFlatNestingEmbedded;
    const QString name = QFileInfo(options->GetFileName()).fileName();

    reportStream << "<HTML>\n";
    reportStream << "<TITLE>";
    if (nesting)
        reportStream << tr("Nesting Interface Report : ") << name;
    else if (embedded)
        reportStream << tr("Nesting Embedded Ply Report");
    else
        reportStream << tr("Laser Projection Report : ") << name;
    reportStream << "</TITLE>\n";
    reportStream << "<BODY>\n";
    reportStream << "<H2>\n";
    if (nesting)
        reportStream << tr("Nesting Interface Report for file : ") << name << '\n';
    else if (embedded)
        reportStream << tr("Ply Extract Report") << '\n';
    else
        reportStream << tr("Laser Projection Report for ") << ZETLaserOptions::GetFileTypeString(options->GetFileType())
                     << tr(" laser data file : ") << name << '\n';
    reportStream << "</H2>\n";
    reportStream << "<HR>\n";
    reportStream << "<PRE>\n";

    WriteReportSettings();
    WriteReportGeometrySettings();
    reportStream << '\n';
}

void ZETLaserWriter::WriteReportSettings()
{
    const auto type = options->GetOutputType();
    const bool is3D = type == ZETLaserOptions::Output3D;
    const bool reduces = is3D || type == ZETLaserOptions::OutputFlat;

    reportStream << tr("Part Name: ") << options->GetPartName() << "\n\n";
    reportStream << tr("Units: ") << (options->GetUnits() == ZETLaserOptions::UnitsInches ? tr("inch") : tr("mm"))
                 << "\n\n";
    if (is3D) {
        reportStream << tr("Core Sampling: ") << ZETLaserOptions::GetOffsetModeString(options->GetOffsetMode())
                     << "\n\n";
        // Meant: lower case, unlike the names that the options have for the thickness.
        reportStream << tr("Material Thickness: ")
                     << (options->GetMaterialThickness() != 0 ? tr("uncured") : tr("cured")) << "\n\n";
    }
    if (const auto axisSystem = options->GetAxisSystem())
        reportStream << tr("Axis System: ") << axisSystem->GetLabel() << "\n\n";
    else
        reportStream << tr("Axis System: Not specified") << "\n\n";
    // Meant: the tolerance has no empty line behind it, and the length has one.
    if (reduces && options->GetUseMinimizePointsTolerance())
        reportStream << tr("Points reduced with a tolerance of: ") << options->GetMinimizePointsTolerance() * unitScale
                     << '\n';
    if (reduces && options->GetUseMaxLength())
        reportStream << tr("Maximum segment length: ") << options->GetMaxLength() * unitScale << "\n\n";
}

void ZETLaserWriter::WriteReportGeometrySettings()
{
    const auto type = options->GetOutputType();
    const bool usesSeeds = type == ZETLaserOptions::Output3D || type == ZETLaserOptions::OutputFlat;

    reportStream << tr("Geometry Settings:") << '\n';
    if (type == ZETLaserOptions::Output3D)
        reportStream << tr("3D Geometry used") << '\n';
    else if (type == ZETLaserOptions::OutputFlat)
        reportStream << tr("Flat Geometry used") << '\n';
    else if (type == ZETLaserOptions::OutputFlatNesting)
        reportStream << tr("Flat Nesting Geometry used") << '\n';
    else if (type == ZETLaserOptions::OutputFlatNestingEmbedded)
        reportStream << tr("Flat Nesting Geometry used for Embedded Nesting") << '\n';
    if (options->GetOutputSubPly())
        reportStream << tr("Sub-plies used") << '\n';
    if (options->GetOutputExtraGeometry())
        reportStream << tr("Extra Geometry used") << '\n';
    if (options->GetOutputRosette())
        reportStream << tr("Rosette used") << '\n';
    if (usesSeeds && options->GetUseSeedPoint())
        reportStream << tr("Seed Point used") << '\n';
    if (usesSeeds && options->GetUseSeedCurve())
        reportStream << tr("Seed Curve used") << '\n';
}

void ZETLaserWriter::WriteReportFooter()
{
    if (plyCount == 0 && subPlyCount == 0 && courseCount == 0)
        reportStream << "\n\n" << tr("NO PLY DATA WRITTEN!") << "\n\n";

    WriteReportMessages();

    reportStream << "\n\n" << tr("Plies Written Report:") << '\n';
    if (plyCount > 0)
        reportStream << tr("   Number of Plies = ") << plyCount << '\n';
    if (subPlyCount > 0)
        reportStream << tr("   Number of Sub-plies = ") << subPlyCount << '\n';
    if (courseCount > 0)
        reportStream << tr("   Number of Courses = ") << courseCount << '\n';
    if (plyCount < 1 && subPlyCount < 1 && courseCount < 1)
        reportStream << tr("   No plies, sub-plies, or courses written ") << '\n';
    reportStream << '\n' << tr("End of report.") << '\n';

    reportStream << "</PRE>\n";
    reportStream << "<HR>\n";
    reportStream << "</BODY>\n";
    reportStream << "</HTML>\n";
}

void ZETLaserWriter::WriteReportMessages()
{
    const auto* queue = ZETSysMessageQueue::GetMessageQueue();
    if (!queue)
        return;

    const QString messages = queue->GetSimpleMessageReport();
    if (messages.isEmpty())
        reportStream << "\n\n" << tr("No Warning or Error messages.") << '\n';
    else
        reportStream << "\n\n" << tr("Warning & Error messages:") << '\n' << messages << '\n';
}

void ZETLaserWriter::WriteReportParagraph(const QString& text)
{
    reportStream << '\n' << text << '\n';
}

void ZETLaserWriter::WriteOpenReportParagraph(const QString& text)
{
    reportStream << '\n' << text;
}
