#pragma once

#include "laser/ZETLaserProcesses.h"

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

class ZETLaserGroup;
class ZETLaserReader;
class ZETLaserRenderer;
class ZETMatMaterial;

/*! What the driver of a job owns. Destruction goes from the last member to the first. */
class ZETLaserProcessesPrivate
{
public:
    /*! For tests, which put a tree of their own in and look at what a step made of it. */
    static ZETLaserProcessesPrivate& Of(ZETLaserProcesses& processes) { return *processes.d_func(); }

    ZETLaserOptions* options = nullptr;        //!< not owned, never null after construction
    QSharedPointer<ZETLaserReader> reader;     //!< never null after construction
    QSharedPointer<ZETLaserRenderer> renderer; //!< null until the first display
    QSharedPointer<ZETLaserGroup> root;        //!< the tree, shared with reader, renderer and the current writer
    QList<ZETMatMaterial*> materials;          //!< of all reads; the reader fills it, the DXF writer reads it
    QMap<QString, QString> unwrittenFiles;     //!< of the last writing
};
