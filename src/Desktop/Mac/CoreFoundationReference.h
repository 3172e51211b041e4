// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

// Owns a reference to a Core Foundation object, or is null; each copy owns its own reference. Any thread.
template <typename Type>
class CoreFoundationReference
{
public:
    CoreFoundationReference() = default;

    // Adopts a reference owned by the caller, from functions with Create or Copy in their names.
    static CoreFoundationReference adopted(Type object)
    {
        CoreFoundationReference reference;
        reference.m_object = object;
        return reference;
    }

    // Retains an object owned by others, from functions with Get in their names.
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
