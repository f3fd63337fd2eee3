#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETFeature/ZETFeatPropertyBase.h>
#include <ZETFeature/ZETFeatPropertySignal.h>
#include <ZETHostGlobal.h>

#include <memory>

class ZETFeatObjectPropertyBasePrivate;

/*! Base of the properties that refer to another feature. A reference holds nothing alive; it reads null when the other
 *  feature has gone. */
class ZETHOST_EXPORT ZETFeatObjectPropertyBase : public ZETFeatPropertyBase
{
public:
    ZETFeatObjectPropertyBase(ZETFeatObject* feature, int propertyIndex);
    /*! For the items of a list. */
    ZETFeatObjectPropertyBase(ZETFeatObject* feature, bool input);
    ~ZETFeatObjectPropertyBase() override;

    /*! Takes back the last saved reference; without one nothing happens. No signal. */
    virtual void ResetToLastSaved();
    /*! Stores the reference, without bracket and signal. Null is allowed. */
    virtual void SetPointedObject(ZETFeatObject* object);
    /*! Whether \a object may stand in another container. */
    virtual bool CanExternalReference(ZETFeatObject* object);

    /*! The feature that is referred to; null if there is none. */
    ZETFeatObject* GetPointedObject() const;

private:
    friend class ZETFeatObjectPropertyBasePrivate;
    std::unique_ptr<ZETFeatObjectPropertyBasePrivate> d;
};

/*! A reference to a feature of class \a T. */
template <typename T>
class ZETFeatObjectProperty : public ZETFeatObjectPropertyBase
{
public:
    using ZETFeatObjectPropertyBase::ZETFeatObjectPropertyBase;

    /*! The feature as its class; null if there is none. */
    T* GetObject() const { return qobject_cast<T*>(GetPointedObject()); }

    /*! Emits the change signal, with the pointer as its value, unless \a silent. Throws ZETSysException if that can't
     *  be done; the new reference stays. */
    void EndModify(bool silent) override
    {
        ZETFeatPropertyBase::EndModify(silent);
        if (!silent)
            ZETFeatPropertySignal::EmitChanged<T*>(GetFeature(), GetPropertyIndex());
    }

    /*! Refers to \a object, which may be null, from now on; throws what EndModify throws. False, and nothing happens,
     *  if it does so already. */
    virtual bool SetObject(T* object, bool silent)
    {
        if (GetPointedObject() == object)
            return false;
        BeginModify();
        SetPointedObject(object);
        EndModify(silent);
        return true;
    }
};
