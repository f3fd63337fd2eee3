#include "openhost/ZETGeometry/ZETOpenComboPoint.h"

#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include <ZETGeometry/ZETGeoPointOnSurface.h>

#include <list>

class ZETOpenComboPointPrivate
{
public:
    struct Image {
        ZETOpenRef<ZETOpenSurface> surface;
        ZETGeoPointOnSurface point;
    };

    ZETMathPoint position;
    std::list<Image> images; //!< a list, because their addresses are given out
};

ZETOpenComboPoint::ZETOpenComboPoint(std::unique_ptr<ZETOpenComboPointPrivate> record)
    : d(std::move(record))
{
}

ZETOpenComboPoint::~ZETOpenComboPoint() = default;

ZETOpenRef<ZETOpenComboPoint> ZETOpenComboPoint::Make(const ZETMathPoint& position,
                                                      const QList<ZETOpenRef<ZETOpenSurface>>& surfaces)
{
    if (!IsFinite(position))
        throw ZETSysException(tr("a point has a coordinate that isn't a number"));
    auto record = std::make_unique<ZETOpenComboPointPrivate>();
    record->position = position;
    ZETOpenRef<ZETOpenComboPoint> point(new ZETOpenComboPoint(std::move(record)));
    for (const auto& surface : surfaces)
        point->AddImage(surface, surface->Project(position));
    return point;
}

void ZETOpenComboPoint::AddImage(const ZETOpenRef<ZETOpenSurface>& surface, const ZETGeoLocationOnSurface& location)
{
    if (!surface || location.GetSurface() != surface.Get())
        throw ZETSysException(tr("the image of a point must lie on its surface"));
    d->images.push_back({surface, ZETGeoPointOnSurface(location)});
}

QList<ZETOpenRef<ZETOpenSurface>> ZETOpenComboPoint::GetSurfaces() const
{
    QList<ZETOpenRef<ZETOpenSurface>> surfaces;
    for (const auto& image : d->images)
        surfaces.append(image.surface);
    return surfaces;
}

const ZETGeoPointOnSurface* ZETOpenComboPoint::GetPoint(const ZETGeoSurface* surface) const
{
    for (const auto& image : d->images) {
        if (image.surface.Get() == surface)
            return &image.point;
    }
    return nullptr;
}

ZETMathPoint ZETOpenComboPoint::GetPosition() const
{
    return d->position;
}
