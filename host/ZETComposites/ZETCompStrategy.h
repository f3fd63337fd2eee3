#pragma once

#include <ZETComposites/ZETCompStrategyBase.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>

class ZETCompFlatPattern;
class ZETCompStrategyPrivate;
class ZETFeatGeometry;
class ZETGeoCurveOnSurface;
class ZETMatPackaging;

/*! Making a ply in one piece, draped from a seed. */
class ZETHOST_EXPORT ZETCompStrategy : public ZETCompStrategyBase
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Strategy")
    Q_CLASSINFO("allowedParents", "ZETCompPly ZETCompSubPly")

public:
    explicit ZETCompStrategy(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompStrategy(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompStrategy() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! The point that draping starts from; may be null. */
    ZETFeatGeometry* GetSeedPoint() const;
    /*! The curve along which draping starts; may be null. */
    ZETFeatGeometry* GetSeedCurve() const;
    /*! The seed's location on the final surface. Without a seed point, a location of no surface. */
    ZETGeoLocationOnSurface GetFinalSeedPoint() const;
    /*! The seed curve on the final surface, owned by this feature; may be null. */
    const ZETGeoCurveOnSurface* GetFinalSeedCurve() const;
    /*! The flat pattern of this strategy; may be null. */
    ZETCompFlatPattern* GetFlatPattern() const;
    /*! What the ply is cut from; may be null. */
    ZETMatPackaging* GetPackaging() const;

private:
    friend class ZETCompStrategyPrivate;
    std::unique_ptr<ZETCompStrategyPrivate> d;
};
