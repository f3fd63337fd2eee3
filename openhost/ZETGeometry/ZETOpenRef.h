#pragma once

#include <cstddef>
#include <utility>

/*! Holds one reference of a geometry that belongs to no container: AddReference when it is taken, RemoveReference when
 *  it is given back. A fresh geometry is put into one at once, so that nothing leaks on the way out by an exception. */
template <typename T>
class ZETOpenRef
{
public:
    ZETOpenRef() = default;
    ZETOpenRef(std::nullptr_t) {}
    explicit ZETOpenRef(T* object)
        : geometry(object)
    {
        if (geometry)
            geometry->AddReference();
    }
    ZETOpenRef(const ZETOpenRef& other)
        : ZETOpenRef(other.geometry)
    {
    }
    ZETOpenRef(ZETOpenRef&& other) noexcept
        : geometry(std::exchange(other.geometry, nullptr))
    {
    }
    /*! A reference to the same object as an object of a base class, or as a constant one. */
    template <typename U>
    ZETOpenRef(const ZETOpenRef<U>& other)
        : ZETOpenRef(static_cast<T*>(other.Get()))
    {
    }
    ~ZETOpenRef()
    {
        if (geometry)
            geometry->RemoveReference();
    }
    ZETOpenRef& operator=(ZETOpenRef other) noexcept
    {
        std::swap(geometry, other.geometry);
        return *this;
    }

    T* Get() const { return geometry; }
    T* operator->() const { return geometry; }
    T& operator*() const { return *geometry; }
    explicit operator bool() const { return geometry != nullptr; }

    friend bool operator==(const ZETOpenRef& a, const ZETOpenRef& b) { return a.geometry == b.geometry; }

private:
    T* geometry = nullptr;
};
