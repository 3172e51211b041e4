// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/AppearanceFacts.h"

#include <QSettings>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t preferDark = 1;
constexpr std::uint32_t preferLight = 2;

bool isDarkTheme(const QString &name)
{
    return name.endsWith("-dark"_L1, Qt::CaseInsensitive) || name.endsWith(":dark"_L1, Qt::CaseInsensitive);
}

// Reads consecutive values in the given byte order; past the end, every value is absent.
class SettingsReader
{
public:
    SettingsReader(const QByteArray &data, bool isBigEndian) : m_data(data), m_isBigEndian(isBigEndian) {}

    template <typename Number>
    std::optional<Number> number()
    {
        const QByteArray bytes = text(sizeof(Number));
        if (bytes.isNull())
            return std::nullopt;
        return m_isBigEndian ? qFromBigEndian<Number>(bytes.constData())
                             : qFromLittleEndian<Number>(bytes.constData());
    }

    // Null past the end.
    QByteArray text(qsizetype length)
    {
        if (length > m_data.size() - m_position)
            return QByteArray();
        const QByteArray result(m_data.constData() + m_position, length);
        m_position += length;
        return result;
    }

    // Reads a text and its padding to a multiple of four bytes.
    QByteArray paddedText(qsizetype length)
    {
        const QByteArray result = text(length);
        m_position += (4 - length % 4) % 4;
        return result;
    }

private:
    QByteArray m_data;
    bool m_isBigEndian;
    qsizetype m_position = 0;
};

struct XSetting
{
    QByteArray name;
    std::optional<QString> text;
};

// Nothing at the end of the data or if it is malformed.
std::optional<XSetting> readSetting(SettingsReader &reader)
{
    enum Type : std::uint8_t { Integer, Text, Colour };
    const auto type = reader.number<std::uint8_t>();
    reader.text(1);
    const auto nameLength = reader.number<std::uint16_t>();
    XSetting setting{reader.paddedText(nameLength.value_or(0)), std::nullopt};
    const auto serial = reader.number<std::uint32_t>();
    if (!type || !serial)
        return std::nullopt;
    if (*type == Text) {
        const auto length = reader.number<std::uint32_t>();
        if (!length)
            return std::nullopt;
        setting.text = QString::fromUtf8(reader.paddedText(qsizetype(*length)));
        return setting;
    }
    reader.text(*type == Integer ? 4 : 8);
    return *type == Integer || *type == Colour ? std::optional(setting) : std::nullopt;
}

} // namespace

bool AppearanceFacts::isDark() const
{
    if (portalScheme == preferDark || portalScheme == preferLight)
        return portalScheme == preferDark;
    return isDarkTheme(themeOverride) || isDarkTheme(themeName) || prefersDarkTheme ||
           windowTextLightness > windowLightness;
}

ThemeSettings ThemeSettings::read(const QString &path)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.beginGroup(u"Settings"_s);
    const QVariant prefersDark = settings.value(u"gtk-application-prefer-dark-theme"_s);
    return {settings.value(u"gtk-theme-name"_s).toString(), prefersDark.toBool()};
}

std::optional<QString> textInXSettings(const QByteArray &data, const QByteArray &name)
{
    constexpr char bigEndian = 1;
    SettingsReader reader(data, data.startsWith(bigEndian));
    reader.text(4);                 // the byte order and padding
    reader.number<std::uint32_t>(); // the serial number
    const auto count = reader.number<std::uint32_t>();
    for (std::uint32_t i = 0; i < count.value_or(0); ++i) {
        const std::optional<XSetting> setting = readSetting(reader);
        if (!setting)
            return std::nullopt;
        if (setting->name == name)
            return setting->text;
    }
    return std::nullopt;
}
