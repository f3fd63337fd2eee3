#pragma once

#include <ZETFeature/ZETFeatRoot.h>

class ZETCompLayup;
class ZETCompMfgConfiguration;
class ZETCompRootPrivate;

/*! The root of a composite model. */
class ZETHOST_EXPORT ZETCompRoot : public ZETFeatRoot
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Part")

public:
    /*! Becomes the root of \a container, which owns it. */
    explicit ZETCompRoot(ZETFeatContainer* container);
    Q_INVOKABLE ZETCompRoot(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompRoot() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! The layups, in order. */
    QList<ZETCompLayup*> GetLayups() const;
    /*! The active manufacturing configuration; may be null. */
    ZETCompMfgConfiguration* GetActiveMfgConfiguration() const;

private:
    friend class ZETCompRootPrivate;
    std::unique_ptr<ZETCompRootPrivate> d;
};
