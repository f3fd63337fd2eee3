#pragma once

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QHash>

#include <memory>

class ZETFeatContainer;
class ZETGeoGeometry;

/*! Saves and loads whole models.
 *
 *  A model is a sequence of bytes; numbers are big-endian, and all is in the form of QDataStream::Qt_6_4:
 *
 *  | part    | content                                                                                              |
 *  |---------|------------------------------------------------------------------------------------------------------|
 *  | head    | the eight letters "ZETMODEL"; format version, 32 bits; count of the bytes between head and digest, 64 |
 *  | classes | count, 32 bits; for each class its name (QByteArray) and its version, 32 bits. Base classes included   |
 *  | objects | count, 32 bits; for each object the index of its class, 32 bits; its number, 64; the number of its     |
 *  |         | parent, 64, 0 for none; the count of its bytes, 32. A parent stands ahead of its children              |
 *  | fields  | for each object, in the same order, what its Save wrote                                                |
 *  | digest  | the first eight bytes of the SHA-256 of everything ahead                                               |
 *
 *  All objects are made before the first is loaded, so references lead forwards as well as backwards. They are numbered
 *  anew on the way. Kernel geometry that several objects share is in the fields of the first of them. Where the model
 *  came from, its provider and its messages are not saved. */
namespace ZETOpenModelStream
{

/*! Throws ZETSysException if a feature can't be saved, because its class isn't registered or because one of its
 *  properties points to a feature of another container, which CanExternalReference refuses. Geometry that isn't a
 *  feature is saved if its class is registered; what else a container holds, features make anew. */
ZETHOST_EXPORT QByteArray Save(const ZETFeatContainer& container);

/*! The model that Save wrote. Throws ZETSysException, which tells what is wrong and where, for bytes that are none, are
 *  cut off or damaged, or hold a class that isn't registered or was newer than the one that is. */
ZETHOST_EXPORT std::unique_ptr<ZETFeatContainer> Load(const QByteArray& bytes);

/*! What the Save of one object writes. */
ZETHOST_EXPORT QByteArray SaveFields(const ZETGeoGeometry& object);
/*! Lets \a object load the fields that SaveFields wrote, or that were put together by hand. References lead to the
 *  objects of its container under their own numbers. \a versions are the versions that classes had, by name; a class
 *  that isn't in it has its present version. What Load of the object throws passes. Throws ZETSysException if it reads
 *  more bytes than there are, or fewer. */
ZETHOST_EXPORT void LoadFields(ZETGeoGeometry& object, const QByteArray& fields,
                               const QHash<QByteArray, unsigned int>& versions = {});

} // namespace ZETOpenModelStream
