#pragma once

#include <QSharedPointer>

class ZETLaserGroup;
class ZETLaserOptions;

/*! The frame of a reader: it turns a model into the tree of laser entities below a root group. Made for one job; Read
 *  may run several times, and whoever calls it empties the root first. */
class ZETLaserReader
{
public:
    /*! \a jobOptions isn't owned; \a rootGroup is shared with the caller. */
    ZETLaserReader(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> rootGroup);

    /*! Fills the root group. True if it has a child afterwards; false, and nothing happens, without a model. What it
     *  throws for a fault of the model ends the read; what was read until then stays. */
    virtual bool Read() = 0;

protected:
    // Not virtual: a reader is held by a shared pointer that was made with its own class.
    ~ZETLaserReader() = default;

    ZETLaserOptions* options;
    QSharedPointer<ZETLaserGroup> root;
};
