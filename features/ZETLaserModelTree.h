#pragma once

#include <ZETFeature/ZETFeatObject.h>

// Steps through the model's tree that features, reader and writers share.

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
