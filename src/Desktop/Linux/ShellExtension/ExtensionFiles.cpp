// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ExtensionFiles.h"

#include "Desktop/PlatformError.h"

#include <ExtensionTexts.h>

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringList>

#include <memory>

#include <gio/gio.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto shellSchema = "org.gnome.shell";
constexpr auto enabledKey = "enabled-extensions";

const QString extension = u"windows@orvane.org"_s;

struct Release
{
    void operator()(GSettings *settings) const { g_object_unref(settings); }
    void operator()(GSettingsSchema *schema) const { g_settings_schema_unref(schema); }
    void operator()(gchar **strings) const { g_strfreev(strings); }
};

using Settings = std::unique_ptr<GSettings, Release>;

QStringList enabledExtensions(GSettings *settings)
{
    const std::unique_ptr<gchar *, Release> names(g_settings_get_strv(settings, enabledKey));
    QStringList result;
    for (gchar **name = names.get(); *name; ++name)
        result.append(QString::fromUtf8(*name));
    return result;
}

void setEnabledExtensions(GSettings *settings, const QStringList &names)
{
    QList<QByteArray> texts;
    for (const QString &name : names)
        texts.append(name.toUtf8());
    QList<const gchar *> pointers;
    for (const QByteArray &text : texts)
        pointers.append(text.constData());
    pointers.append(nullptr);
    if (!g_settings_set_strv(settings, enabledKey, pointers.constData()))
        throw PlatformError(u"GNOME's settings can't be changed."_s);
    g_settings_sync();
}

QByteArray contentOf(const QString &name)
{
    QFile file(ExtensionFiles::folder() + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &name, const QByteArray &content)
{
    QSaveFile file(ExtensionFiles::folder() + u'/' + name);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
    if (!isWritten)
        throw PlatformError(u"The extension can't be written: %1"_s.arg(file.fileName()));
}

} // namespace

bool ExtensionFiles::areUseful()
{
    GSettingsSchemaSource *source = g_settings_schema_source_get_default();
    const std::unique_ptr<GSettingsSchema, Release> schema(
        source ? g_settings_schema_source_lookup(source, shellSchema, TRUE) : nullptr);
    return schema != nullptr;
}

QString ExtensionFiles::folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/gnome-shell/extensions/"_s + extension;
}

void ExtensionFiles::write(const QString &executable)
{
    if (!QDir().mkpath(folder()))
        throw PlatformError(u"The extension can't be written: %1"_s.arg(folder()));
    writeFile(u"metadata.json"_s, extensionMetadata);
    writeFile(u"extension.js"_s, extensionScript);
    writeFile(u"programs"_s, executable.toUtf8() + '\n');
    const Settings settings(g_settings_new(shellSchema));
    QStringList enabled = enabledExtensions(settings.get());
    if (enabled.contains(extension))
        return;
    enabled.append(extension);
    setEnabledExtensions(settings.get(), enabled);
}

bool ExtensionFiles::areCurrent()
{
    return contentOf(u"metadata.json"_s) == extensionMetadata &&
           contentOf(u"extension.js"_s) == extensionScript;
}

QString ExtensionFiles::version()
{
    return QString::fromLatin1(extensionVersion);
}

bool ExtensionFiles::remove()
{
    if (!QDir(folder()).exists())
        return false;
    const Settings settings(g_settings_new(shellSchema));
    QStringList enabled = enabledExtensions(settings.get());
    if (enabled.removeAll(extension) > 0)
        setEnabledExtensions(settings.get(), enabled);
    if (!QDir(folder()).removeRecursively())
        throw PlatformError(u"The extension can't be removed: %1"_s.arg(folder()));
    return true;
}
