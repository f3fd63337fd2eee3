#pragma once

#include <ZETHostGlobal.h>

#include <QtGlobal>

class ZETFeatObject;

/*! Base of the property objects that a feature's private record holds. It knows its feature and the index of the
 *  property in the feature's meta-object, and brackets each change with BeginModify and EndModify. */
class ZETHOST_EXPORT ZETFeatPropertyBase
{
public:
    /*! \a propertyIndex is negative for a property that isn't in the meta-object. */
    ZETFeatPropertyBase(ZETFeatObject* feature, int propertyIndex);
    /*! A property without an index, such as an item of a list; \a input says whether it counts as an input. */
    ZETFeatPropertyBase(ZETFeatObject* feature, bool input);
    virtual ~ZETFeatPropertyBase();

    /*! Opens the bracket around a change. */
    void BeginModify();
    /*! Closes the bracket: a change of an input property makes the feature outdated. \a silent says that nobody is to
     *  be told; the template classes emit the change signal unless it is true. */
    virtual void EndModify(bool silent);

    ZETFeatObject* GetFeature() const { return feature; }
    /*! Negative: the property isn't in the meta-object. */
    int GetPropertyIndex() const { return propertyIndex; }
    /*! Whether the feature's inputProps name this property. */
    bool IsInputProperty() const;

private:
    Q_DISABLE_COPY_MOVE(ZETFeatPropertyBase)

    ZETFeatObject* feature;
    int propertyIndex;
    bool input;
    int modifyDepth = 0;
};
