// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <QString>

#include <optional>

// Converts Core Foundation objects of unknown type. Returns nothing if the object is null or of another type.
// Pure functions. Any thread.
namespace CoreFoundationValues {

// The text is cleaned: it comes from other applications.
std::optional<QString> text(CFTypeRef object);

std::optional<qint64> integer(CFTypeRef object);

// Returns the object itself.
CFArrayRef array(CFTypeRef object);

} // namespace CoreFoundationValues
