#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETHostGlobal.h>

#include <QtGlobal>

#include <memory>

class QDataStream;
class ZETGeoCurveOnSurface;
class ZETGeoLocationOnSurface;
class ZETOpenShapeTables;
class ZETOpenSurface;
class ZETTopBody;

/*! Writes kernel geometry and bodies into a data stream and reads them back.
 *
 *  Null is written and read as null. Every Load throws ZETSysException that says what is wrong if the stream doesn't
 *  hold what Save wrote: it checks lengths against what is there, and the kernel's bytes against their digest before it
 *  hands them to the kernel.
 *
 *  While a Session is alive, an object that was saved before is written as its number only, and is read back as the
 *  same object. So a model that is saved and loaded within one session each keeps sharing its surfaces; everything must
 *  then be loaded in the order in which it was saved. Without a session each call stands for itself. */
class ZETHOST_EXPORT ZETOpenShapeStore
{
public:
    /*! Lives on the stack of whoever saves or loads a whole model; one each. Of nested sessions of one thread the
     *  innermost counts. */
    class ZETHOST_EXPORT Session
    {
    public:
        Session();
        ~Session();

    private:
        Q_DISABLE_COPY_MOVE(Session)
        std::unique_ptr<ZETOpenShapeTables> d;
    };

    static void SaveSurface(QDataStream& stream, const ZETOpenSurface* surface);
    static ZETOpenRef<ZETOpenSurface> LoadSurface(QDataStream& stream);

    /*! Curves of the kernel and assembled ones (which are read back initialized). Throws for curves that the kernel
     *  didn't make. */
    static void SaveCurve(QDataStream& stream, const ZETGeoCurveOnSurface* curve);
    static ZETOpenRef<ZETGeoCurveOnSurface> LoadCurve(QDataStream& stream);

    /*! A location of a surface of the kernel, with its surface. The surface is held by \a surface. */
    static void SaveLocation(QDataStream& stream, const ZETGeoLocationOnSurface& location);
    static ZETGeoLocationOnSurface LoadLocation(QDataStream& stream, ZETOpenRef<ZETOpenSurface>& surface);

    /*! Throws for bodies that ZETOpenBodyBuilder didn't make. */
    static void SaveBody(QDataStream& stream, const ZETTopBody* body);
    static std::unique_ptr<ZETTopBody> LoadBody(QDataStream& stream);
};
