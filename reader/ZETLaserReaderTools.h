#pragma once

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

/*! The nearest ancestor of class \a T; null if there is none. */
template <typename T>
T* FindAncestor(const ZETFeatObject& feature)
{
    for (ZETFeatObject* ancestor = feature.GetParent(); ancestor; ancestor = ancestor->GetParent()) {
        if (T* const cast = qobject_cast<T*>(ancestor))
            return cast;
    }
    return nullptr;
}

/*! \a feature itself if it is of class \a T, otherwise its nearest ancestor that is; null if there is none. */
template <typename T>
T* FindSelfOrAncestor(ZETFeatObject& feature)
{
    T* const self = qobject_cast<T*>(&feature);
    return self ? self : FindAncestor<T>(feature);
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
