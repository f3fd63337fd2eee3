#include "laser/ZETLaserOptions.h"

#include "laser/ZETLaserFileTypes.h"
#include "laser/ZETLaserProcesses.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Stands for a value that is none of the enumeration. Meant: it isn't translated, as the words beside it are. */
constexpr auto unset = "unset"_L1;
} // namespace

ZETLaserOptions::ZETLaserOptions() = default;

ZETLaserOptions::~ZETLaserOptions() = default;

QString ZETLaserOptions::GetFileTypeString(EOutputFileType type)
{
    return ZETLaserFileType::Of(type).name;
}

QString ZETLaserOptions::GetFileTypeExtensionString(EOutputFileType type)
{
    return ZETLaserFileType::Of(type).extension;
}

QString ZETLaserOptions::GetFileDialogFilterString(EOutputFileType type)
{
    return GetFileTypeString(type) + " (*"_L1 + GetFileTypeExtensionString(type) + ')'_L1;
}

QString ZETLaserOptions::GetUnitsString(EUnits units)
{
    switch (units) {
    case UnitsMillimeters:
        return u"mm"_s;
    case UnitsInches:
        return u"in"_s;
    }
    return unset;
}

QString ZETLaserOptions::GetMaterialThicknessString(EMaterialThickness thickness)
{
    switch (thickness) {
    case ThicknessCured:
        return tr("Cured");
    case ThicknessUncured:
        return tr("Uncured");
    }
    return unset;
}

QString ZETLaserOptions::GetOffsetModeString(EOffsetMode mode)
{
    switch (mode) {
    case OffsetComplete:
        return tr("Complete");
    case OffsetLayup:
        return tr("Layup");
    case OffsetNone:
        return tr("None");
    case OffsetDebulk:
        return tr("Debulk");
    }
    return unset;
}

QSharedPointer<ZETLaserProcesses> ZETLaserOptions::GetLaserProcesses()
{
    if (!laserProcesses)
        laserProcesses.reset(new ZETLaserProcesses(this));
    return laserProcesses;
}
