#pragma once

#include <ZETFeature/ZETFeatObject.h>

/*! A feature that holds other features and has no result of its own. */
class ZETHOST_EXPORT ZETFeatFolder : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Folder")

public:
    explicit ZETFeatFolder(ZETFeatObject* parent);
    Q_INVOKABLE ZETFeatFolder(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETFeatFolder() override;

    /*! As for every feature; a folder below a folder also takes what the upper one takes. */
    bool IsChildAllowed(const QMetaObject* type) const override;
};
