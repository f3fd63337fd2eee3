#pragma once

#include <ZETHostGlobal.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <memory>

class ZETFeatEnvironment;
class ZETFeatObject;
class ZETFeatVisObjectPrivate;
class ZETVisRepGraphics;

/*! Base of the display object of a feature. */
class ZETHOST_EXPORT ZETFeatVisObject : public ZETVisVirtualObject
{
    Q_OBJECT

public:
    /*! For \a feature, which isn't owned; both may be null. */
    ZETFeatVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature);
    ~ZETFeatVisObject() override;

    /*! The feature that is shown; null when it has gone. */
    ZETFeatObject* GetFeature() const;

    /*! Visible itself, while its feature is there and visible. */
    bool IsVisible() const override;
    bool IsSelectable() const override;
    /*! The label of the feature. */
    QString GetLabel() const override;

    /*! A new picture of the feature, owned by the caller; null if there is nothing to show. */
    virtual ZETVisRepGraphics* CreateRepresentation() = 0;

private:
    std::unique_ptr<ZETFeatVisObjectPrivate> d;
};
