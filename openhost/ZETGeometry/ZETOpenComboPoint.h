#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETHostGlobal.h>

#include <QList>

#include <memory>

class ZETOpenComboPointPrivate;
class ZETOpenSurface;

/*! The point of a vertex. It holds references on the surfaces of its images, and lives as long as somebody holds one on
 *  it. */
class ZETHOST_EXPORT ZETOpenComboPoint final : public ZETGeoComboPoint
{
    Q_OBJECT

public:
    ~ZETOpenComboPoint() override;

    /*! The point at \a position, with images at the nearest places of \a surfaces. */
    static ZETOpenRef<ZETOpenComboPoint> Make(const ZETMathPoint& position,
                                              const QList<ZETOpenRef<ZETOpenSurface>>& surfaces);

    /*! Adds an image; the location's surface is held. */
    void AddImage(const ZETOpenRef<ZETOpenSurface>& surface, const ZETGeoLocationOnSurface& location);
    QList<ZETOpenRef<ZETOpenSurface>> GetSurfaces() const;

    const ZETGeoPointOnSurface* GetPoint(const ZETGeoSurface* surface) const override;
    ZETMathPoint GetPosition() const override;

private:
    friend class ZETOpenComboPointPrivate;
    explicit ZETOpenComboPoint(std::unique_ptr<ZETOpenComboPointPrivate> record);
    std::unique_ptr<ZETOpenComboPointPrivate> d;
};
