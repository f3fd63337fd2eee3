#pragma once

#include <ZETFeature/ZETFeatObjectProperty.h>
#include <ZETFeature/ZETFeatPropertyBase.h>
#include <ZETFeature/ZETFeatPropertySignal.h>
#include <ZETHostGlobal.h>
#include <ZETSystem/ZETSysException.h>

#include <QByteArray>
#include <QList>
#include <QMetaMethod>
#include <QMetaObject>
#include <QString>

#include <memory>
#include <vector>

/*! Base of the properties that hold a list of references. */
class ZETHOST_EXPORT ZETFeatObjectListPropertyBase : public ZETFeatPropertyBase
{
public:
    ZETFeatObjectListPropertyBase(ZETFeatObject* feature, int propertyIndex);
    ~ZETFeatObjectListPropertyBase() override;
};

/*! One element of a list property. */
template <typename T>
class ZETFeatObjectListPropertyItem : public ZETFeatObjectProperty<T>
{
public:
    ZETFeatObjectListPropertyItem(ZETFeatObject* owner, bool isInput)
        : ZETFeatObjectProperty<T>(owner, isInput)
    {
    }
};

/*! An ordered list of references to features of class \a T. An element may be null.
 *
 *  Each change that isn't silent emits the change signal, and behind it that of the element that came or went, if there
 *  is one; the latter also where the change is silent. Both throw ZETSysException if they can't be emitted; the change
 *  stays. */
template <typename T>
class ZETFeatObjectListProperty : public ZETFeatObjectListPropertyBase
{
public:
    using Item = ZETFeatObjectListPropertyItem<T>;

    static constexpr int noSignal = -2;

    /*! \a signalOfAdded and \a signalOfRemoved are method indices of the feature's meta-object; negative means that
     *  there is no such signal. */
    ZETFeatObjectListProperty(ZETFeatObject* owner, int index, int signalOfAdded = noSignal,
                              int signalOfRemoved = noSignal)
        : ZETFeatObjectListPropertyBase(owner, index)
        , addedSignal(signalOfAdded)
        , removedSignal(signalOfRemoved)
    {
    }

    int GetCount() const { return static_cast<int>(items.size()); }
    bool IsEmpty() const { return items.empty(); }
    const Item& GetItem(int index) const { return *items[static_cast<size_t>(index)]; }

    /*! The pointed objects, in list order. */
    QList<T*> GetObjects() const
    {
        QList<T*> objects;
        objects.reserve(GetCount());
        for (const std::unique_ptr<Item>& item : items)
            objects.append(item->GetObject());
        return objects;
    }

    /*! Emits the change signal, with the whole list as its value, unless \a silent. */
    void EndModify(bool silent) override
    {
        ZETFeatPropertyBase::EndModify(silent);
        if (!silent)
            ZETFeatPropertySignal::EmitChanged<QList<T*>>(GetFeature(), GetPropertyIndex());
    }

    /*! Appends an item for \a object, which may be null, in a bracket of its own. */
    void AppendObject(T* object, bool silent)
    {
        BeginModify();
        auto item = std::make_unique<Item>(GetFeature(), IsInputProperty());
        item->SetObject(object, true);
        items.push_back(std::move(item));
        EndModify(silent);
        EmitElement(addedSignal, object, added);
    }

    /*! Removes the first item, of which there must be one, in a bracket of its own; it is deleted behind the bracket.
     */
    void RemoveFirst(bool silent) { RemoveAt(0, silent); }

    /*! Removes all items from the front, in one bracket. Nothing happens for an empty list. */
    void RemoveAll(bool silent)
    {
        if (items.empty())
            return;
        BeginModify();
        const std::vector<std::unique_ptr<Item>> old = std::move(items);
        items.clear();
        EndModify(silent);
        for (const std::unique_ptr<Item>& item : old)
            EmitElement(removedSignal, item->GetObject(), removed);
    }

    /*! Removes the first item that points to \a object. Throws ZETSysException if there is none. */
    virtual void RemoveObject(T* object, bool silent)
    {
        for (size_t i = 0; i < items.size(); ++i) {
            if (items[i]->GetPointedObject() == object) {
                RemoveAt(i, silent);
                return;
            }
        }
        throw ZETSysException(QStringLiteral("Cannot remove an item that is not contained in the list."));
    }

private:
    struct ElementTexts {
        const char* invalid;
        const char* failed;
    };
    static constexpr ElementTexts added{"The added signal is invalid.",
                                        "Could not emit the added signal because the signature could not be deduced."};
    static constexpr ElementTexts removed{
        "The removed signal is invalid.",
        "Could not emit the removed signal because the signature could not be deduced."};

    void RemoveAt(size_t index, bool silent)
    {
        BeginModify();
        const std::unique_ptr<Item> item = std::move(items[index]);
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(index));
        EndModify(silent);
        EmitElement(removedSignal, item->GetObject(), removed);
    }

    /*! Tells of one element that came or went. */
    void EmitElement(int signalIndex, T* element, const ElementTexts& texts)
    {
        if (signalIndex < 0)
            return;
        const QMetaMethod signal = GetFeature()->metaObject()->method(signalIndex);
        if (!signal.isValid())
            throw ZETSysException(QString::fromLatin1(texts.invalid));
        const QByteArray name = QByteArray(T::staticMetaObject.className()) + '*';
        if (InvokeNamed(signal, name, element) || InvokeNamed(signal, "const " + name, element) ||
            signal.invoke(GetFeature(), Qt::AutoConnection))
            return;
        throw ZETSysException(QString::fromLatin1(texts.failed));
    }

    /*! Emits \a signal with \a element, unless its first parameter has another type than \a name. */
    bool InvokeNamed(const QMetaMethod& signal, const QByteArray& name, T* element)
    {
        // An emission within the thread looks at the number of arguments only, so the type is compared here.
        if (signal.parameterCount() > 0 && signal.parameterTypes().first() != name)
            return false;
        return signal.invoke(GetFeature(), Qt::AutoConnection, QGenericArgument(name.constData(), &element));
    }

    std::vector<std::unique_ptr<Item>> items;
    int addedSignal;
    int removedSignal;
};
