#pragma once

#include <ZETComposites/ZETCompStrategyBase.h>

class ZETCompSubPly;

/*! Making a ply in several pieces. */
class ZETHOST_EXPORT ZETCompSubdivision : public ZETCompStrategyBase
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Subdivision")
    Q_CLASSINFO("allowedParents", "ZETCompPly")

public:
    explicit ZETCompSubdivision(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompSubdivision(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompSubdivision() override;

    /*! The sub-plies, in order. */
    QList<ZETCompSubPly*> GetSubPlies() const;
};
