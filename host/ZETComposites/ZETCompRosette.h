#pragma once

#include <ZETWireframe/ZETWFAxisSystem.h>

/*! The axis system of a layup: its first direction is the zero direction of the plies. */
class ZETHOST_EXPORT ZETCompRosette : public ZETWFAxisSystem
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Rosette")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompRosette(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompRosette(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompRosette() override;
};
