#pragma once

#include "openhost/ZETFeature/ZETOpenModel.h"

#include <ZETFeature/ZETFeatObject.h>

#include <QList>
#include <QString>

class ZETFeatObjectPropertyBase;

/*! Record of ZETFeatObject. */
class ZETFeatObjectPrivate
{
public:
    static ZETFeatObjectPrivate& Of(ZETFeatObject& feature) { return *feature.d; }
    static const ZETFeatObjectPrivate& Of(const ZETFeatObject& feature) { return *feature.d; }

    /*! Makes \a feature the child of \a parent at \a position; the last one for a negative position. Null for \a parent
     *  takes it out of the tree. */
    static void SetParent(ZETFeatObject& feature, ZETFeatObject* parent, int position = -1);
    /*! Gives the properties that asked for it their first value. */
    static void FinishInitialization(ZETFeatObject& feature);
    /*! Calls UpdateResult. The feature is outdated again if that throws. */
    static bool Update(ZETFeatObject& feature);

    ZETFeatObject* parent = nullptr;
    QList<ZETFeatObject*> children;
    QString label; //!< null: the class's defaultLabel
    bool isEnabled = true;
    bool isVisible = true;
    bool isOutdated = true; //!< a new feature waits for its first UpdateResult
    bool isValid = true;    //!< what the last UpdateResult said
    QList<ZETOpenModel::Message> messages;
    QList<ZETFeatObjectPropertyBase*> referrers; //!< properties of other features that point to this one
};

/*! What a feature class says of itself. */
namespace ZETFeatClassInfo
{
/*! The value of \a key of \a type or of its nearest base that has one; null without. */
const char* Get(const QMetaObject* type, const char* key);
/*! Whether \a name stands in \a list, whose names are separated by blanks. */
bool Contains(const char* list, const char* name);
/*! Whether \a type or one of its bases lists \a property in its inputProps. */
bool IsInputProperty(const QMetaObject* type, const char* property);
/*! Whether \a type is \a base or derived from it, by name. */
bool Inherits(const QMetaObject* type, const QMetaObject* base);
} // namespace ZETFeatClassInfo
