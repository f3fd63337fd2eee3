#pragma once

#include <ZETComposites/ZETCompPly.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatObject.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopVertex.h>

#include <QList>

// Steps through the model that features, reader and writers share.

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

/*! The features of class \a T at any depth below \a top, which may be null, in model order. */
template <typename T>
QList<T*> FindDescendants(const ZETFeatObject* top)
{
    QList<T*> found;
    const QList<ZETFeatObject*> features = top ? top->GetAllChildren() : QList<ZETFeatObject*>();
    for (ZETFeatObject* feature : features) {
        if (T* const cast = qobject_cast<T*>(feature))
            found.append(cast);
    }
    return found;
}

/*! The container that holds \a feature, which may be null; null if there is none. */
inline ZETFeatContainer* FindContainer(const ZETFeatObject* feature)
{
    return feature ? qobject_cast<ZETFeatContainer*>(feature->GetContainer()) : nullptr;
}

/*! The material of \a ply: the first of its materials, which may be null; null without any. */
inline ZETMatMaterial* GetMaterial(const ZETCompPly& ply)
{
    return ply.GetMaterials().value(0);
}

/*! The first vertex of \a body, which may be null; null if there is none. */
inline const ZETTopVertex* GetFirstVertex(const ZETTopBody* body)
{
    return body ? qobject_cast<const ZETTopVertex*>(body->GetEntities(0).value(0)) : nullptr;
}
