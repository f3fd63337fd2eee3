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

#include <functional>

namespace
{
/*! A type of this library that the meta-type system knows under a name, as long as the library is there. Qt keeps a
 *  pointer into the library for each, so none may be left behind. */
template <typename T>
class NamedMetaType
{
public:
    explicit NamedMetaType(const QByteArray& name) { qRegisterMetaType<T>(name.constData()); }
    ~NamedMetaType()
    {
        // Another copy of this library in the process may have been first; then the entry is the other's.
        const QMetaType type = QMetaType::fromType<T>();
        if (QMetaType(type.id()).iface() == type.iface())
            QMetaType::unregisterMetaType(type);
    }
    Q_DISABLE_COPY_MOVE(NamedMetaType)
};

/*! A feature class that containers make by its name. */
template <typename Feature>
class FeatureType
{
public:
    FeatureType() { ZETGeoContainer::RegisterType(&Feature::staticMetaObject); }
    ~FeatureType() { ZETGeoContainer::UnregisterType(&Feature::staticMetaObject); }
    Q_DISABLE_COPY_MOVE(FeatureType)

private:
    static QByteArray GetPointerName() { return QByteArray(Feature::staticMetaObject.className()) + '*'; }

    NamedMetaType<Feature*> pointer{GetPointerName()};
    NamedMetaType<const Feature*> constPointer{"const " + GetPointerName()};
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

/*! With the list comes that it can be walked where only a QVariant with it is known; Qt takes that back at exit. */
void RegisterMetaTypes()
{
    static const NamedMetaType<ZETLaserExtraGeometry::OutputFilters> filters("ZETLaserExtraGeometry::OutputFilters");
    static const NamedMetaType<QList<ZETLaserTarget*>> targets("QList<ZETLaserTarget *>");
    static const NamedMetaType<ZETLaserOptions::ELaserSourceType> sourceType("ZETLaserOptions::ELaserSourceType");
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
