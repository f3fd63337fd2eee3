#pragma once

#include <ZETFeature/ZETFeatObject.h>

class ZETCompMfgConfigurationPrivate;

/*! One way to manufacture the model: which strategy or subdivision of each ply is used, and the defaults of the
 *  output. */
class ZETHOST_EXPORT ZETCompMfgConfiguration : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Manufacturing Configuration")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompMfgConfiguration(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompMfgConfiguration(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompMfgConfiguration() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! Laser output takes the 3D boundaries (true) or the flat patterns. DEFAULT: true */
    bool GetUse3D() const;
    /*! Points are written with the normal of the surface, by the makes that have a place for it. DEFAULT: true */
    bool GetIncludeNormalVectorsEnabled() const;
    /*! A ply that is made in pieces is left out, and its sub-plies stand for it. DEFAULT: false */
    bool GetSkipParentPlyWithSubPliesEnabled() const;
    /*! The rosette of a ply stands at its seed point, and not at the origin of the layup's axis system. DEFAULT: false
     */
    bool GetSeedPointEnabled() const;
    /*! The seed curve of a ply is shown. DEFAULT: false */
    bool GetSeedCurveEnabled() const;
    /*! Laser output has the extra geometry of its plies, and their rosettes. DEFAULT: true */
    bool GetLaserDataExtraGeometryEnabled() const;
    /*! Nesting output has the extra geometry of its plies. DEFAULT: true */
    bool GetNestingDataExtraGeometryEnabled() const;
    /*! Nesting output has the rosettes of its plies. DEFAULT: false */
    bool GetNestingDataRosetteEnabled() const;
    /*! Length of the rosette's long arm in laser output, in mm. DEFAULT: 100.0 */
    double GetLaserDataRosetteSize() const;
    /*! Length of the rosette's long arm in nesting output, in mm. DEFAULT: 100.0 */
    double GetNestingDataRosetteSize() const;

private:
    friend class ZETCompMfgConfigurationPrivate;
    std::unique_ptr<ZETCompMfgConfigurationPrivate> d;
};
