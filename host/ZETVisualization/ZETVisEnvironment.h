#pragma once

#include <ZETHostGlobal.h>

#include <QObject>

#include <memory>

class ZETVisEnvironmentPrivate;
class ZETVisVirtualObject;

/*! The scene. */
class ZETHOST_EXPORT ZETVisEnvironment : public QObject
{
    Q_OBJECT

public:
    ZETVisEnvironment();
    ~ZETVisEnvironment() override;

    /*! Puts \a object in the scene, which owns it from now on. An object that is in it already stays as it is. */
    void AddVirtualObject(ZETVisVirtualObject* object);
    /*! Takes \a object out of the scene and deletes it. Null, or an object that isn't in it, is passed over. */
    void RemoveVirtualObject(ZETVisVirtualObject* object);

private:
    friend class ZETVisEnvironmentPrivate;
    std::unique_ptr<ZETVisEnvironmentPrivate> d;
};
