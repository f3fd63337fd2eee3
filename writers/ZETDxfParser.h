#pragma once

#include "laser/ZETLaserGlobal.h"

class QString;
class QTextStream;
class ZETMathSetOfPoints;

/*! Emits ASCII DXF, in spite of its name: it parses nothing. It knows group codes, the fixed head of a file, polylines,
 *  texts and the end of a file, and nothing of laser data.
 *
 *  A file is WriteStartSection(), any number of WritePolyline() and WriteText(), and WriteEndSection(). What an
 *  operation writes has gone to the device of the stream when it returns; WriteEndSection() flushes a file as well.
 *  Nothing is reported: once the stream isn't in the state QTextStream::Ok, whatever follows is skipped.
 *
 *  Numbers are written as they are given; the unit is what WriteStartSection() was told. Texts are UTF-8 where that is
 *  the platform's 8-bit encoding, without a code page in the file. The layer table declares layer 0 alone: entities go
 *  on other layers by number, and the receiving program makes those itself. The extents in the head are constants,
 *  whatever the geometry is. */
class ZETLASER_EXPORT ZETDxfParser
{
public:
    /*! \a out isn't owned and must outlive the parser. */
    explicit ZETDxfParser(QTextStream& out);
    virtual ~ZETDxfParser();

    /*! The head of the file, up to the begin of the entities. \a units is the value of $INSUNITS: 1 for inches, 4 for
     *  millimetres. */
    void WriteStartSection(int units);
    /*! One polyline; nothing for an empty set. The offsets are added to each vertex. A closed one is closed by its flag
     *  and doesn't repeat its first point. */
    void WritePolyline(const ZETMathSetOfPoints& points, bool is3D, bool closed, int layer, int color, int lineStyle,
                       int thickness, double offsetX, double offsetY, double offsetZ);
    /*! One text, at its lower left corner. */
    void WriteText(const QString& text, double x, double y, double z, double height, int layer, int color);
    /*! The end of the entities and of the file. */
    void WriteEndSection();

private:
    QTextStream* stream;
};
