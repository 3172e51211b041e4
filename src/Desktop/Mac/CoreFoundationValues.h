// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <QString>

#include <optional>

// What Core Foundation objects of unknown type hold. Each is empty where the object is null or of another
// type. Pure functions, any thread.
namespace CoreFoundationValues {

// Cleaned: it comes from other applications.
std::optional<QString> text(CFTypeRef object);

std::optional<qint64> integer(CFTypeRef object);

// The object itself.
CFArrayRef array(CFTypeRef object);

} // namespace CoreFoundationValues
