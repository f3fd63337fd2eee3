#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/*! A DXF file as the writer lays it out, one line for each entity:
 *      text LAYER/COLOUR at X,Y,Z high HEIGHT: TEXT
 *      polyline LAYER/COLOUR/LINESTYLE flags FLAGS: X,Y,Z ...
 *  Numbers are told without the zeros behind them; in the file they have six decimals, which is checked. Any other
 *  layout ends the test program. */
class TestDxf
{
public:
    explicit TestDxf(const QByteArray& bytes);

    int units = 0; //!< of the head
    QStringList entities;

    /*! Has ezdxf read and audit all files of DXF below \a folder; what it finds is the result, empty if all is well.
     *  A file NAME may have a file NAME.expected.json beside it, with the entities that ezdxf has to find in it
     *  (tests/writers/read_dxf.py). Without ezdxf on this machine \a skipped tells so. */
    static QString ReadWithEzdxf(const QString& folder, QString* skipped);
};
