// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/DesktopSettings.h"

#include "Desktop/PlatformError.h"

#define G_SETTINGS_ENABLE_BACKEND
#include <gio/gio.h>
#include <gio/gsettingsbackend.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Release
{
    void operator()(GSettings *settings) const { g_object_unref(settings); }
    void operator()(GSettingsSchema *schema) const { g_settings_schema_unref(schema); }
    void operator()(gchar *text) const { g_free(text); }
};
using Settings = std::unique_ptr<GSettings, Release>;

// What is written to the memory only would be lost with this process.
bool areKept()
{
    static const QByteArray name = G_OBJECT_TYPE_NAME(g_settings_backend_get_default());
    return name != "GMemorySettingsBackend" && name != "GNullSettingsBackend";
}

// Null if there is no such setting. An unknown name would end the process.
Settings opened(const DesktopSettings::Key &key)
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    if (!source || !areKept())
        return nullptr;
    const std::unique_ptr<GSettingsSchema, Release> schema(
        g_settings_schema_source_lookup(source, key.schema.constData(), TRUE));
    if (!schema || !g_settings_schema_has_key(schema.get(), key.name.constData()))
        return nullptr;
    return Settings(g_settings_new_full(schema.get(), nullptr, nullptr));
}

} // namespace

std::optional<QString> DesktopSettings::text(const Key &key)
{
    const Settings settings = opened(key);
    if (!settings)
        return std::nullopt;
    const std::unique_ptr<gchar, Release> value(g_settings_get_string(settings.get(), key.name.constData()));
    return QString::fromUtf8(value.get());
}

void DesktopSettings::setText(const Key &key, const QString &value)
{
    const Settings settings = opened(key);
    const bool isSet =
        settings && g_settings_set_string(settings.get(), key.name.constData(), value.toUtf8().constData());
    if (!isSet)
        throw PlatformError(u"The desktop's settings can't be changed here."_s);
    g_settings_sync();
}
