#pragma once

#include <ZETFeature/ZETFeatPropertyBase.h>
#include <ZETFeature/ZETFeatPropertySignal.h>
#include <ZETHostGlobal.h>

#include <QMetaType>
#include <QVariant>

#include <memory>

class ZETFeatValuePropertyBasePrivate;

/*! Base of the properties that hold a value: the last saved value and the limits, of which there are none here. */
class ZETHOST_EXPORT ZETFeatValuePropertyBase : public ZETFeatPropertyBase
{
public:
    ZETFeatValuePropertyBase(ZETFeatObject* feature, int propertyIndex);
    ~ZETFeatValuePropertyBase() override;

    virtual void ResetToLastSaved() = 0;
    virtual bool HasLimits() const;
    virtual bool TestLimits();
    virtual QVariant GetMinLimit();
    virtual bool GetMinLimitInclusion();
    virtual QVariant GetMaxLimit();
    virtual bool GetMaxLimitInclusion();

    /*! Asks the framework to give the property its first value when the feature's construction is done. */
    void RequestInitialization();
    /*! The value as it was last saved or loaded; invalid if there is none. */
    QVariant GetLastSavedValue() const;
    void SetLastSavedValue(const QVariant& value);

private:
    std::unique_ptr<ZETFeatValuePropertyBasePrivate> d;
};

/*! A property with a value of type \a T. */
template <typename T>
class ZETFeatValueProperty : public ZETFeatValuePropertyBase
{
public:
    /*! Built without a default: the value is T's own, the property isn't initialised, and it asks the framework for
     *  its first value if the meta-type system knows T. */
    ZETFeatValueProperty(ZETFeatObject* owner, int index)
        : ZETFeatValuePropertyBase(owner, index)
    {
        if (QMetaType::fromType<T>().isValid())
            RequestInitialization();
    }
    /*! Built with a default: the property counts as initialised. */
    ZETFeatValueProperty(ZETFeatObject* owner, int index, const T& defaultValue)
        : ZETFeatValuePropertyBase(owner, index)
        , value(defaultValue)
        , initialised(true)
    {
    }

    const T& GetValue() const { return value; }
    bool IsInitialised() const { return initialised; }

    /*! Emits the change signal unless \a silent. Throws ZETSysException if that can't be done; the new value stays. */
    void EndModify(bool silent) override
    {
        ZETFeatPropertyBase::EndModify(silent);
        if (!silent)
            ZETFeatPropertySignal::EmitChanged<T>(GetFeature(), GetPropertyIndex());
    }

    /*! Takes the last saved value back, without a signal. Without one nothing happens. */
    void ResetToLastSaved() override
    {
        const QVariant saved = GetLastSavedValue();
        if (saved.isValid())
            value = saved.value<T>();
    }

    /*! Stores \a newValue between BeginModify and EndModify(silent), and throws what that throws. False, and nothing
     *  happens, if it is the value already. */
    virtual bool SetValue(const T& newValue, bool silent)
    {
        if (newValue == value)
            return false;
        BeginModify();
        value = newValue;
        EndModify(silent);
        return true;
    }

private:
    T value{};
    bool initialised = false;
};
