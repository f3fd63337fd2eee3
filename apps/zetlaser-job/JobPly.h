#pragma once

#include <ZETFeature/ZETFeatObject.h>

#include <QString>

class ZETMatMaterial;

/*! The nearest feature of that class that \a feature stands below, \a feature included; null if there is none. */
template <typename Feature>
const Feature* FindAbove(const ZETFeatObject* feature)
{
    for (const ZETFeatObject* at = feature; at; at = at->GetParent()) {
        if (const auto* found = qobject_cast<const Feature*>(at))
            return found;
    }
    return nullptr;
}

/*! Where a ply or sub-ply stands in the model. Strings are empty where the model says nothing. */
struct JobPly {
    explicit JobPly(const ZETFeatObject& feature);

    QString layup;
    QString sequence;
    QString parent; //!< of a sub-ply the name of its ply
    QString name;
    double direction = 0.0;             //!< of the ply, in degrees
    ZETMatMaterial* material = nullptr; //!< the first one of the ply; may be null
};
