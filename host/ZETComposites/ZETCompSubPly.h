#pragma once

#include <ZETComposites/ZETCompPlyBase.h>

/*! One of the pieces that a subdivision cuts a ply into. */
class ZETHOST_EXPORT ZETCompSubPly : public ZETCompPlyBase
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Sub-ply")
    Q_CLASSINFO("allowedParents", "ZETCompSubdivision")

public:
    explicit ZETCompSubPly(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompSubPly(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompSubPly() override;
};
