#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETMathematics/ZETMathAxis.h>

class ZETWFAxisSystemPrivate;

/*! An axis system of the model. A feature without a body. */
class ZETHOST_EXPORT ZETWFAxisSystem : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Axis System")

public:
    explicit ZETWFAxisSystem(ZETFeatObject* parent);
    Q_INVOKABLE ZETWFAxisSystem(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETWFAxisSystem() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! The axis in model coordinates. */
    ZETMathAxis GetAxis() const;

private:
    friend class ZETWFAxisSystemPrivate;
    std::unique_ptr<ZETWFAxisSystemPrivate> d;
};
