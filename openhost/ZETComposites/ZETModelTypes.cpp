#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatCurve.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>

namespace
{

template <typename... Types>
struct Registrations : ZETOpenTypes::Registration<Types>... {
};

// What a saved composite model can hold.
const Registrations<ZETCompRoot, ZETCompLayup, ZETCompSequence, ZETCompPly, ZETCompSubPly, ZETCompStrategy,
                    ZETCompSubdivision, ZETCompFlatPattern, ZETCompFlatContour, ZETCompFlatCurve, ZETCompFlatPoint,
                    ZETCompRosette, ZETCompSurfaceUpdate, ZETCompMfgConfiguration, ZETOpenGeometryFeature>
    registrations;

} // namespace
