#pragma once

#include "laser/ZETLaserEntity.h"
#include "laser/ZETLaserGroup.h"

#include <QList>
#include <QSharedPointer>

#include <iterator>

/*! The children of one class of a group, in list order: the only place that casts and skips. A child of another class
 *  is passed over. Holds the list alive, copies no entity and detaches nothing. */
template <typename T>
class ZETLaserChildren
{
public:
    class Iterator
    {
    public:
        using value_type = T*;
        using difference_type = std::ptrdiff_t;

        Iterator(const QSharedPointer<ZETLaserEntity>* first, const QSharedPointer<ZETLaserEntity>* last)
            : at(first)
            , end(last)
        {
            Skip();
        }
        T* operator*() const { return child; }
        Iterator& operator++()
        {
            ++at;
            Skip();
            return *this;
        }
        bool operator==(const Iterator& other) const { return at == other.at; }
        bool operator!=(const Iterator& other) const { return at != other.at; }

    private:
        void Skip()
        {
            for (child = nullptr; at != end; ++at) {
                child = qobject_cast<T*>(at->data());
                if (child != nullptr)
                    return;
            }
        }

        const QSharedPointer<ZETLaserEntity>* at;
        const QSharedPointer<ZETLaserEntity>* end;
        T* child = nullptr;
    };

    explicit ZETLaserChildren(const ZETLaserGroup& group)
        : children(group.GetChildren())
    {
    }

    Iterator begin() const { return {children.constData(), children.constData() + children.size()}; }
    Iterator end() const
    {
        const QSharedPointer<ZETLaserEntity>* last = children.constData() + children.size();
        return {last, last};
    }

private:
    const QList<QSharedPointer<ZETLaserEntity>> children;
};

/*! `for (ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(group))` */
template <typename T>
ZETLaserChildren<T> ChildrenOf(const ZETLaserGroup& group)
{
    return ZETLaserChildren<T>(group);
}
