// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

// Owns one reference to a Core Foundation object, or to none; copies own one each. Any thread.
template <typename Type>
class CoreFoundationReference
{
public:
    CoreFoundationReference() = default;

    // Takes over a reference that the caller owns: what functions with Create or Copy in their names give.
    static CoreFoundationReference adopted(Type object)
    {
        CoreFoundationReference reference;
        reference.m_object = object;
        return reference;
    }

    // Adds a reference to an object that belongs to somebody else: what functions with Get in their names
    // give.
    static CoreFoundationReference retained(Type object)
    {
        if (object)
            CFRetain(object);
        return adopted(object);
    }

    CoreFoundationReference(const CoreFoundationReference &other) : m_object(other.m_object)
    {
        if (m_object)
            CFRetain(m_object);
    }

    CoreFoundationReference(CoreFoundationReference &&other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {
    }

    CoreFoundationReference &operator=(CoreFoundationReference other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    ~CoreFoundationReference()
    {
        if (m_object)
            CFRelease(m_object);
    }

    Type get() const { return m_object; }
    explicit operator bool() const { return m_object; }

private:
    Type m_object = nullptr;
};
