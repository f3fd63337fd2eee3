#include "laser/ZETLaserFileTypes.h"

#include "writers/ZETLaserWriterAG.h"
#include "writers/ZETLaserWriterAPT.h"
#include "writers/ZETLaserWriterDXF.h"
#include "writers/ZETLaserWriterGS.h"
#include "writers/ZETLaserWriterLAP.h"
#include "writers/ZETLaserWriterLPT.h"
#include "writers/ZETLaserWriterSL.h"
#include "writers/ZETLaserWriterVirtek.h"

#include <array>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! The writer of class \a Writer; it is handed the materials if it has a constructor that takes them. */
template <typename Writer>
QSharedPointer<ZETLaserWriter> Make(ZETLaserOptions* options, const QSharedPointer<ZETLaserGroup>& root,
                                    QList<ZETMatMaterial*>* materials)
{
    if constexpr (std::is_constructible_v<Writer, ZETLaserOptions*, QSharedPointer<ZETLaserGroup>,
                                          QList<ZETMatMaterial*>*>)
        return QSharedPointer<Writer>::create(options, root, materials);
    else
        return QSharedPointer<Writer>::create(options, root);
}

/*! By the values of EOutputFileType. */
constexpr std::array<ZETLaserFileType, 13> fileTypes{{
    {"Virtek"_L1, ".ply"_L1, Make<ZETLaserWriterVirtek>},
    {"LPT"_L1, ".XML"_L1, Make<ZETLaserWriterLPT>},
    {"FARO"_L1, ".XML"_L1, Make<ZETLaserWriterLPT>},
    {"LAP Laser"_L1, ".lpd"_L1, Make<ZETLaserWriterLAP>},
    {"SL Laser"_L1, ".sl"_L1, Make<ZETLaserWriterSL>},
    {"Assembly Guidance"_L1, ".PRT"_L1, Make<ZETLaserWriterAG>},
    {"Aligned Vision"_L1, ".PRT"_L1, Make<ZETLaserWriterAG>},
    {"General Scanning"_L1, ".PRT"_L1, Make<ZETLaserWriterGS>},
    {"APT"_L1, ".APT"_L1, Make<ZETLaserWriterAPT>},
    {"APT_2"_L1, ".APT"_L1, Make<ZETLaserWriterAPT_2>},
    {"SL APT"_L1, ".APT"_L1, Make<ZETLaserWriterAPT_SL>},
    {"DXF"_L1, ".DXF"_L1, Make<ZETLaserWriterDXF>},
    {"Quilmon Composites Part Data"_L1, ".CPD"_L1, Make<ZETLaserWriterGS>},
}};
static_assert(fileTypes.size() == ZETLaserOptions::FileQuilmonPartData + 1);

constexpr ZETLaserFileType unknownFileType{"Unknown"_L1, ".txt"_L1, nullptr};
} // namespace

const ZETLaserFileType& ZETLaserFileType::Of(ZETLaserOptions::EOutputFileType type)
{
    const auto row = static_cast<size_t>(type); // a negative value becomes a very large one
    return row < fileTypes.size() ? fileTypes[row] : unknownFileType;
}
