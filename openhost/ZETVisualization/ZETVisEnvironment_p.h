#pragma once

#include <ZETVisualization/ZETVisEnvironment.h>

#include <QHash>

#include <list>

/*! Record of ZETVisEnvironment. */
class ZETVisEnvironmentPrivate
{
public:
    static ZETVisEnvironmentPrivate& Of(ZETVisEnvironment& environment) { return *environment.d; }
    static const ZETVisEnvironmentPrivate& Of(const ZETVisEnvironment& environment) { return *environment.d; }

    /*! Forgets \a object; false if it isn't in the scene. */
    bool Forget(ZETVisVirtualObject* object);

    std::list<ZETVisVirtualObject*> objects; //!< in the order in which they came
    QHash<ZETVisVirtualObject*, std::list<ZETVisVirtualObject*>::iterator> places;
};
