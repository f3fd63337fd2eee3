#pragma once

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QSharedDataPointer>

class ZETFeatObject;
class ZETMatDefinitionPrivate;

/*! A record of a material that stands without the model: a key, and the values of the allowed properties. A value,
 *  implicitly shared. */
class ZETHOST_EXPORT ZETMatDefinition
{
public:
    ZETMatDefinition();
    ZETMatDefinition(const ZETMatDefinition& other);
    ZETMatDefinition& operator=(const ZETMatDefinition& other);
    virtual ~ZETMatDefinition();

    /*! Equal when key, properties and values are. */
    bool operator==(const ZETMatDefinition& other) const;

    /*! What the material is known by, as UTF-8. */
    void SetKey(const QByteArray& key);
    /*! Allows the property \a name of the group \a group; the empty group is the material's own. */
    void AddAllowedProperty(const QByteArray& group, const QByteArray& name);
    /*! Takes the values of the allowed properties from \a feature; null is passed over. */
    void LoadFromFeature(const ZETFeatObject* feature);
    /*! Ends the changes: what was set since the last Commit counts from here on. */
    void Commit();

private:
    friend class ZETMatDefinitionPrivate;
    QSharedDataPointer<ZETMatDefinitionPrivate> d;
};
