#include "reader/ZETLaserReader.h"

#include "laser/ZETLaserGroup.h"

#include <utility>

ZETLaserReader::ZETLaserReader(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> rootGroup)
    : options(jobOptions)
    , root(std::move(rootGroup))
{
}
