#pragma once

#include <ZETVisualization/ZETVisObject.h>

#include <QString>

#include <memory>

class ZETVisEnvironment;
class ZETVisRep;
class ZETVisVirtualObjectPrivate;

/*! An object of the scene. The scene owns it once it was added there. */
class ZETHOST_EXPORT ZETVisVirtualObject : public ZETVisObject
{
    Q_OBJECT

public:
    /*! A new object for the scene, not yet in it; \a environment may be null. Visible, and shows nothing. */
    ZETVisVirtualObject(const ZETVisEnvironment* environment, QObject* parent);
    ~ZETVisVirtualObject() override;

    /*! What the object shows; the object takes it over and deletes what it showed before. */
    void SetRep(const ZETVisRep* rep);
    const ZETVisRep* GetRep() const;
    void SetVisibility(bool visible);

    virtual bool IsVisible() const;
    virtual bool IsSelectable() const;
    virtual QString GetLabel() const;
    ZETMathBoundingBox GetBoundingBox() const override;

private:
    std::unique_ptr<ZETVisVirtualObjectPrivate> d;
};
