#pragma once

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QObject>

#include <memory>

class ZETGeoContainer;
class ZETGeoGeometryPrivate;
class ZETGeoGeometryRef;
class ZETGeoStream;

/*! Base of every object that a container can hold: geometry as well as model features.
 *
 *  Geometries are reference counted. One that belongs to a container lives as long as the container or until it is
 *  removed; one without a container lives until its last reference is given back. */
class ZETHOST_EXPORT ZETGeoGeometry : public QObject
{
    Q_OBJECT

public:
    ~ZETGeoGeometry() override;

    /*! Writes the fields of this object. A derived class calls its base first. */
    virtual void Save(ZETGeoStream& stream) const;
    /*! Reads what Save wrote, in the same order. Throws what the host throws for a stream that can't be read. */
    virtual void Load(ZETGeoStream& stream);
    /*! Tells the object in which named state the model is. The base does nothing. */
    virtual void SetCurrentState(const QByteArray& state);
    /*! Second step of construction: works out what the constructor was told. The base does nothing. */
    virtual void Initialize();
    /*! Takes the object out of its container. */
    virtual void Remove();
    /*! Called ahead of Load, and behind it, for all objects that are loaded together. */
    virtual void BeginStateLoad();
    virtual void EndStateLoad();
    /*! Releases what the object can make again. The base does nothing. */
    virtual void Cleanup();

    /*! Holds the object alive. Constant, because holding an object doesn't change what it is. */
    void AddReference() const;
    /*! Gives one reference back. The last one deletes an object that belongs to no container. */
    void RemoveReference() const;

    /*! The container that holds this object; null if there is none. */
    ZETGeoContainer* GetContainer() const;

protected:
    /*! A new object. With a container, the container owns it from now on. */
    explicit ZETGeoGeometry(ZETGeoContainer* container = nullptr);
    /*! An object that is about to be loaded and that other objects of the stream know as \a reference. */
    ZETGeoGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);

private:
    Q_DISABLE_COPY_MOVE(ZETGeoGeometry)
    friend class ZETGeoGeometryPrivate;
    std::unique_ptr<ZETGeoGeometryPrivate> d;
};
