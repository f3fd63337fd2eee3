#pragma once

#include <ZETHostGlobal.h>

#include <QList>

#include <memory>

class ZETGeoCurveOnSurface;
class ZETGeoLocationOnSurface;
class ZETOpenRegionPrivate;

/*! The part of a surface that closed boundaries enclose; a boundary within another one makes a hole. Open boundaries
 *  and those that run round a closed surface enclose nothing. The boundaries may go when the region is made; their
 *  surface must stay. */
class ZETHOST_EXPORT ZETOpenRegion
{
public:
    /*! \a boundaries without null; all on one surface. */
    explicit ZETOpenRegion(const QList<const ZETGeoCurveOnSurface*>& boundaries);
    ~ZETOpenRegion();

    /*! Whether \a location lies within; on a boundary counts as within. A location of another surface is projected
     *  first. */
    bool Contains(const ZETGeoLocationOnSurface& location) const;
    /*! Whether nothing is enclosed. */
    bool IsEmpty() const;
    /*! Whether a closed boundary runs round a closed surface. */
    bool HasWinding() const;

private:
    Q_DISABLE_COPY_MOVE(ZETOpenRegion)
    std::unique_ptr<ZETOpenRegionPrivate> d;
};
