#pragma once

#include "features/ZETLaserModelTree.h"

#include <ZETFeature/ZETFeatObject.h>
#include <ZETSystem/ZETSysMessageQueue.h>
#include <ZETTopology/ZETTopBody.h>

#include <QList>
#include <QString>

/*! Small steps that the files of the reader share. */
namespace ZETLaserReaderTools
{

/*! Tells the user of a fault of the model, if somebody listens. */
inline void AddWarning(const QString& text)
{
    if (ZETSysMessageQueue* const queue = ZETSysMessageQueue::GetMessageQueue())
        queue->AddMessage(text, ZETSysMessageQueue::TypeWarning);
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
