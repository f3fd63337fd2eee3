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

    /*! What the object shows, null for nothing; the object takes it over and deletes what it showed before. */
    void SetRep(const ZETVisRep* rep);
    const ZETVisRep* GetRep() const;
    /*! DEFAULT: true */
    void SetVisibility(bool visible);

    virtual bool IsVisible() const;
    /*! Whether a user can pick the object in the scene; false, as here. */
    virtual bool IsSelectable() const;
    /*! The name that a user sees; the object's Qt name, as here. */
    virtual QString GetLabel() const;
    ZETMathBoundingBox GetBoundingBox() const override;

private:
    std::unique_ptr<ZETVisVirtualObjectPrivate> d;
};
