#pragma once

#include <ZETFeature/ZETFeatObject.h>

class ZETCompPly;

/*! A step of a layup: plies that are laid one after the other. */
class ZETHOST_EXPORT ZETCompSequence : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Sequence")
    Q_CLASSINFO("allowedParents", "ZETCompLayup")

public:
    explicit ZETCompSequence(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompSequence(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompSequence() override;

    /*! The plies, in order. */
    QList<ZETCompPly*> GetPlies() const;
};
