// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/CoreFoundationValues.h"

#include "Base/Text.h"

std::optional<QString> CoreFoundationValues::text(CFTypeRef object)
{
    if (!object || CFGetTypeID(object) != CFStringGetTypeID())
        return std::nullopt;
    return Text::cleaned(QString::fromCFString(static_cast<CFStringRef>(object)));
}

std::optional<qint64> CoreFoundationValues::integer(CFTypeRef object)
{
    qint64 value = 0;
    if (!object || CFGetTypeID(object) != CFNumberGetTypeID() ||
        !CFNumberGetValue(static_cast<CFNumberRef>(object), kCFNumberSInt64Type, &value))
        return std::nullopt;
    return value;
}

CFArrayRef CoreFoundationValues::array(CFTypeRef object)
{
    if (!object || CFGetTypeID(object) != CFArrayGetTypeID())
        return nullptr;
    return static_cast<CFArrayRef>(object);
}
