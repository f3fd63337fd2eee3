#pragma once

#include <ZETHostGlobal.h>

#include <QObject>

#include <memory>

class ZETGeoContainerPrivate;
class ZETGeoGeometry;
class ZETGeoGeometryRef;

/*! Owner of the geometries of one document. */
class ZETHOST_EXPORT ZETGeoContainer : public QObject
{
    Q_OBJECT

public:
    ~ZETGeoContainer() override;

    /*! Makes a class known, so that loading can make objects of it from its name. The class needs an invokable
     *  constructor `(ZETGeoContainer*, const ZETGeoGeometryRef&)`. Registering a class twice does no harm. */
    static void RegisterType(const QMetaObject* type);
    /*! Takes the registration back. */
    static void UnregisterType(const QMetaObject* type);

    /*! The object that \a reference names; null if the reference is invalid or leads nowhere. */
    ZETGeoGeometry* GetGeometryByRef(const ZETGeoGeometryRef& reference) const;

protected:
    ZETGeoContainer();

private:
    Q_DISABLE_COPY_MOVE(ZETGeoContainer)
    friend class ZETGeoContainerPrivate;
    std::unique_ptr<ZETGeoContainerPrivate> d;
};
