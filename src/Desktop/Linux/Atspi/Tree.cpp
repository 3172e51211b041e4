// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Tree.h"

#include "Desktop/Linux/Atspi/Press.h"
#include "Desktop/Linux/Atspi/WindowOrder.h"

#include <optional>
#include <utility>

namespace {

std::optional<QString> present(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace

AtspiTree::AtspiTree(std::shared_ptr<AtspiApplication> application, std::shared_ptr<const AtspiCache> cache,
                     Activate activate, Atspi::StrikeKey strikeKey, QStringList titles)
    : m_application(std::move(application)), m_cache(std::move(cache)),
      m_outline(std::make_shared<AtspiOutline>()), m_activate(std::move(activate)),
      m_strikeKey(std::move(strikeKey)), m_titles(std::move(titles))
{
    m_objects.append(Object{m_application->root(), AtspiRole::Invalid});
}

QCoro::Task<QList<AccessibilityAttributes>> AtspiTree::read(QList<AccessibilityElement> elements)
{
    const auto self = shared_from_this();
    QList<AtspiReading> wanted;
    wanted.reserve(elements.size());
    for (const AccessibilityElement element : elements) {
        AtspiReading reading;
        reading.object = m_objects.at(element).reference;
        reading.parentRole = m_objects.at(element).parentRole;
        wanted.append(reading);
    }
    AtspiReader reader(m_application, m_cache, m_outline, std::move(wanted));
    co_await reader.read();
    QList<AccessibilityAttributes> result;
    result.reserve(elements.size());
    for (const AtspiReading &reading : reader.readings()) {
        if (reading.object != m_application->root()) {
            result.append(attributes(reading, reading.children));
            continue;
        }
        const AccessibilityAttributes root = co_await rootAttributes(reading);
        result.append(root);
    }
    co_return result;
}

QCoro::Task<AccessibilityAttributes> AtspiTree::rootAttributes(AtspiReading reading)
{
    const Atspi::OrderedWindows ordered =
        co_await Atspi::frontFirst(m_application, reading.children, m_titles);
    const AccessibilityAttributes result = attributes(reading, ordered.windows);
    m_frontWindow = ordered.isFirstInFront ? std::optional(result.children.constFirst()) : std::nullopt;
    co_return result;
}

AccessibilityAttributes AtspiTree::attributes(const AtspiReading &reading,
                                              const QList<AtspiReference> &children)
{
    AccessibilityAttributes result;
    result.role = reading.axRole;
    result.title = present(reading.name);
    result.description = present(reading.description);
    result.value = present(reading.value);
    result.help = present(reading.help);
    for (const AtspiReference &child : children) {
        result.children.append(static_cast<AccessibilityElement>(m_objects.size()));
        m_objects.append(Object{child, reading.role});
    }
    return result;
}

QCoro::Task<bool> AtspiTree::press(AccessibilityElement element)
{
    const auto self = shared_from_this();
    const AtspiReference object = m_objects.at(element).reference;
    co_await m_activate();
    const std::optional<bool> byKey = co_await Atspi::pressWithKey(m_application, object, m_strikeKey);
    if (byKey)
        co_return *byKey;
    co_return co_await Atspi::press(m_application, object);
}
