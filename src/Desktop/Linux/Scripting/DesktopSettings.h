// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Texts among the settings of GNOME and of the desktops that share them. The functions block while the
// settings are read or written. Any thread.
namespace DesktopSettings {

struct Key
{
    QByteArray schema;
    QByteArray name;
};

// Nothing if this machine has no such setting, or doesn't keep settings.
std::optional<QString> text(const Key &key);

// Returns once the value is stored. Throws PlatformError.
void setText(const Key &key, const QString &value);

} // namespace DesktopSettings
