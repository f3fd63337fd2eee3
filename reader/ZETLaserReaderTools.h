#pragma once

#include "features/ZETLaserModelTree.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserMessages.h"

#include <ZETFeature/ZETFeatObject.h>
#include <ZETTopology/ZETTopBody.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

/*! Small steps that the files of the reader share. */
namespace ZETLaserReaderTools
{

/*! Tells the user of a fault of the model, if somebody listens. */
inline void AddWarning(const QString& text)
{
    ZETLaserMessages::Add(text, ZETSysMessageQueue::TypeWarning);
}

/*! A new curve of that name, at the end of \a contour. */
inline QSharedPointer<ZETLaserCurve> AddCurve(const QSharedPointer<ZETLaserContour>& contour, const QString& name)
{
    auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    curve->SetName(name);
    contour->AddCurve(curve);
    return curve;
}

/*! The parent of the parent of \a feature, cast to class \a T. */
template <typename T>
T* GetGrandparent(const ZETFeatObject& feature)
{
    const ZETFeatObject* const parent = feature.GetParent();
    return parent ? qobject_cast<T*>(parent->GetParent()) : nullptr;
}

/*! The entities of one dimension of a body, which may be null. */
inline QList<const ZETTopEntity*> GetEntities(const ZETTopBody* body, int dimension)
{
    return body ? body->GetEntities(dimension) : QList<const ZETTopEntity*>();
}

} // namespace ZETLaserReaderTools
