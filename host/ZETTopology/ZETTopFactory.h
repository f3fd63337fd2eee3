#pragma once

#include <ZETHostGlobal.h>

#include <QtGlobal>

#include <memory>

class ZETGeoContainer;
class ZETTopBody;
class ZETTopFactoryPrivate;

/*! A tool that makes bodies; meant to stand on the stack. It owns the bodies that it makes: they live as long as it
 *  does. */
class ZETHOST_EXPORT ZETTopFactory
{
public:
    /*! \a container may be null. */
    explicit ZETTopFactory(ZETGeoContainer* container);
    ~ZETTopFactory();

    /*! A new body: \a source projected onto \a target, at the places nearest to it. The vertices of the result know the
     *  faces and edges of \a target on which they lie. The open host projects the vertices of \a source alone, onto the
     *  faces of \a target, or its edges if it has none. Null if nothing can be projected. */
    ZETTopBody* Project(const ZETTopBody* target, const ZETTopBody* source);

private:
    Q_DISABLE_COPY_MOVE(ZETTopFactory)
    std::unique_ptr<ZETTopFactoryPrivate> d;
};
