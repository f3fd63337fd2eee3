// What the library tells the host when it is loaded, and takes back when it is unloaded.
//
// All of it stands in this one file, because the order counts and C++ keeps an order between static objects only within
// a file. The destructors are the exit handlers: they run in the reverse order, at unload as at the end of the program.

#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaser3DTextOnSupport.h"
#include "features/ZETLaser3DTextVisObject.h"
#include "features/ZETLaserBuiltInParameters.h"
#include "features/ZETLaserExtraGeometry.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "features/ZETLaserTargetVisObject.h"
#include "laser/ZETLaserGlobal.h"
#include "laser/ZETLaserOptions.h"

#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETSystem/ZETSysRegisterInit.h>

#include <QMetaType>
#include <QVariant>

#include <functional>

namespace
{
/*! Takes a type of this library out of the meta-type system at exit. Qt keeps a pointer into the library for each, and
 *  none may be left behind. */
template <typename T>
class MetaTypeAtExit
{
public:
    MetaTypeAtExit() = default;
    ~MetaTypeAtExit()
    {
        // Another copy of this library in the process may have been first; then the entry is the other's.
        const QMetaType type = QMetaType::fromType<T>();
        if (type.isRegistered() && QMetaType(type.id()).iface() == type.iface())
            QMetaType::unregisterMetaType(type);
    }
    Q_DISABLE_COPY_MOVE(MetaTypeAtExit)
};

/*! Makes the type known under \a name, and under its own if that is another one. With a list comes that it can be
 *  walked where only a QVariant with it is known. */
template <typename T>
void RegisterMetaType(const QByteArray& name)
{
    // Ahead of what Qt sets up to take its part back: that comes first at exit, and would make the type known again.
    static const MetaTypeAtExit<T> atExit;
    qRegisterMetaType<T>(name.constData());
}

/*! A feature class that containers make by its name. */
template <typename Feature>
class FeatureType
{
public:
    FeatureType()
    {
        const QByteArray pointer = QByteArray(Feature::staticMetaObject.className()) + '*';
        RegisterMetaType<Feature*>(pointer);
        RegisterMetaType<const Feature*>("const " + pointer);
        ZETGeoContainer::RegisterType(&Feature::staticMetaObject);
    }
    ~FeatureType() { ZETGeoContainer::UnregisterType(&Feature::staticMetaObject); }
    Q_DISABLE_COPY_MOVE(FeatureType)
};

/*! A display object class for the features of one class and of those derived from it. */
template <typename VisObject>
class VisObjectType
{
public:
    explicit VisObjectType(const QByteArray& featureClass)
    {
        ZETFeatEnvironment::RegisterGlobalVisualizationObject({featureClass}, &VisObject::staticMetaObject);
    }
    ~VisObjectType() { ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&VisObject::staticMetaObject); }
    Q_DISABLE_COPY_MOVE(VisObjectType)
};

/*! Whoever asks for the type of iterable values first makes it known, for the whole process and for good. That must be
 *  Qt itself and not this library, which may go: a question about any conversion to a list gets there. */
void LetQtRegisterIterables()
{
    QMetaType::canConvert(QMetaType::fromType<int>(), QMetaType::fromType<QVariantList>());
}

/*! Known on demand, when somebody sets such a property by its name; so they aren't registered here, and taken back all
 *  the same. */
void TakeBackEnumerations()
{
    static const MetaTypeAtExit<ZETLaserExtraGeometry::ScopeType> scopeType;
    static const MetaTypeAtExit<ZETLaserParameter::ParameterType> parameterType;
}

void RegisterMetaTypes()
{
    TakeBackEnumerations();
    LetQtRegisterIterables();
    RegisterMetaType<ZETLaserExtraGeometry::OutputFilters>("ZETLaserExtraGeometry::OutputFilters");
    RegisterMetaType<QList<ZETLaserTarget*>>("QList<ZETLaserTarget *>");
    RegisterMetaType<ZETLaserOptions::ELaserSourceType>("ZETLaserOptions::ELaserSourceType");
    _ZETLaserLoaded = true;
}
} // namespace

// False if the host doesn't take the function; what is registered below stands all the same.
bool _ZETLaserLoaded = ZETSysRegisterInit(std::function<void()>(RegisterMetaTypes));

namespace
{
const FeatureType<ZETLaser3DTextByAxis> textByAxis;
const FeatureType<ZETLaser3DTextOnSupport> textOnSupport;
const VisObjectType<ZETLaser3DTextVisObject> textVisObject("ZETLaser3DText"); // the base's name serves both texts
const FeatureType<ZETLaserExtraGeometry> extraGeometry;
const FeatureType<ZETLaserParameter> parameter;
[[maybe_unused]] const QStringList& macros = GetBuiltInParameters(); // builds the list
const FeatureType<ZETLaserProjector> projector;
const FeatureType<ZETLaserTarget> target;
const VisObjectType<ZETLaserTargetVisObject> targetVisObject("ZETLaserTarget");
} // namespace
