#pragma once

#include "laser/ZETLaserOptions.h"

#include <QLatin1StringView>
#include <QList>
#include <QSharedPointer>

class ZETLaserGroup;
class ZETLaserWriter;
class ZETMatMaterial;

/*! What the library knows of one output file type. */
struct ZETLaserFileType {
    /*! Makes the writer of a job. The writer shares the tree; options and materials are not owned. */
    using MakeWriter = QSharedPointer<ZETLaserWriter> (*)(ZETLaserOptions* options,
                                                          const QSharedPointer<ZETLaserGroup>& root,
                                                          QList<ZETMatMaterial*>* materials);

    QLatin1StringView name;      //!< the make, for people
    QLatin1StringView extension; //!< of the part file, with the dot
    MakeWriter makeWriter;       //!< null if nothing writes this type

    /*! The row of \a type in the one table of file types; for a value that is none of the enumeration, the row
     *  "Unknown", which has no writer. */
    static const ZETLaserFileType& Of(ZETLaserOptions::EOutputFileType type);
};
