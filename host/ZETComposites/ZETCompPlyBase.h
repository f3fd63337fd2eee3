#pragma once

#include <ZETFeature/ZETFeatObject.h>

class ZETCompFlatPattern;
class ZETCompMfgConfiguration;
class ZETCompPlyBasePrivate;
class ZETCompStrategyBase;
class ZETGeoAssembledCurveOnSurface;
class ZETGeoCurveOnSurface;

/*! What a ply and a sub-ply have in common: boundaries, and what is made of them in each configuration. */
class ZETHOST_EXPORT ZETCompPlyBase : public ZETFeatObject
{
    Q_OBJECT

public:
    ~ZETCompPlyBase() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! The boundaries on the workpiece, owned by this feature; an element may be null. */
    QList<ZETGeoAssembledCurveOnSurface*> GetBoundaryCurves() const;
    /*! The boundaries on the surface as the plies beneath have raised it, owned by this feature; an element may be
     *  null. */
    QList<const ZETGeoCurveOnSurface*> GetUpdatedBoundaryCurves() const;
    /*! What is active in \a configuration: a ZETCompStrategy or a ZETCompSubdivision, or null. With a null
     *  configuration the answer is the first that stands below this feature. */
    ZETCompStrategyBase* GetIncludedStrategyOrSubdivision(const ZETCompMfgConfiguration* configuration) const;
    /*! The flat pattern for \a configuration, which may be null; null if there is none. */
    ZETCompFlatPattern* GetFlatPattern(const ZETCompMfgConfiguration* configuration) const;

protected:
    explicit ZETCompPlyBase(ZETFeatObject* parent);
    ZETCompPlyBase(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);

private:
    friend class ZETCompPlyBasePrivate;
    std::unique_ptr<ZETCompPlyBasePrivate> d;
};
