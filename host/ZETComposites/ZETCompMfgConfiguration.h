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
    /*! DEFAULT: true */
    bool GetIncludeNormalVectorsEnabled() const;
    /*! DEFAULT: false */
    bool GetSkipParentPlyWithSubPliesEnabled() const;
    /*! DEFAULT: false */
    bool GetSeedPointEnabled() const;
    /*! DEFAULT: false */
    bool GetSeedCurveEnabled() const;
    /*! DEFAULT: true */
    bool GetLaserDataExtraGeometryEnabled() const;
    /*! DEFAULT: true */
    bool GetNestingDataExtraGeometryEnabled() const;
    /*! DEFAULT: false */
    bool GetNestingDataRosetteEnabled() const;
    /*! Length of the rosette's long arm in laser output, in mm. DEFAULT: 100.0 */
    double GetLaserDataRosetteSize() const;
    /*! Length of the rosette's long arm in nesting output, in mm. DEFAULT: 100.0 */
    double GetNestingDataRosetteSize() const;

private:
    friend class ZETCompMfgConfigurationPrivate;
    std::unique_ptr<ZETCompMfgConfigurationPrivate> d;
};
