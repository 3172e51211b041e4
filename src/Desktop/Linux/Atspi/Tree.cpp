// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Tree.h"

#include "Base/Text.h"
#include "Desktop/Linux/Atspi/Press.h"
#include "Desktop/Linux/Atspi/Workarounds.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

std::optional<QString> present(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

// More than a user has open; sorting more isn't worth the calls.
constexpr qsizetype mostWindows = 128;

// The position of the window's title, or the number of titles if it has none of them.
qsizetype rankOf(const Atspi::WindowState &window, const QStringList &titles)
{
    const auto isNamed = [&window](const QString &title) {
        return !title.isEmpty() && Text::trimmed(title) == Text::trimmed(window.name);
    };
    return std::find_if(titles.cbegin(), titles.cend(), isNamed) - titles.cbegin();
}

bool hasTitleIn(const Atspi::WindowState &window, const QStringList &titles)
{
    return rankOf(window, titles) < titles.size();
}

// An application's windows, front windows first.
struct OrderedWindows
{
    QList<AtspiReference> windows;
    bool isFirstInFront = false; // false if it is unknown which window is
};

QCoro::Task<OrderedWindows> orderedWindows(std::shared_ptr<AtspiApplication> application,
                                           QList<AtspiReference> windows, AtspiTitles titles)
{
    const bool isAlone = windows.size() < 2 && titles.foreign.isEmpty();
    if (isAlone || windows.isEmpty() || windows.size() > mostWindows)
        co_return OrderedWindows{windows, false};
    QList<QDBusMessage> calls;
    for (const AtspiReference &window : windows) {
        calls.append(Atspi::getName(window));
        calls.append(Atspi::getState(window));
    }
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, calls);
    QList<Atspi::WindowState> standings;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const QString name =
            Atspi::label(Atspi::text(replies.at(2 * i)).value_or(QString()), AtspiToolkit::Other);
        standings.append({name, Atspi::hasState(replies.at(2 * i + 1), AtspiState::Active)});
    }
    const QList<qsizetype> positions = Atspi::frontFirst(standings, titles);
    OrderedWindows result;
    for (const qsizetype position : positions)
        result.windows.append(windows.at(position));
    result.isFirstInFront =
        !positions.isEmpty() && Atspi::isInFront(standings.at(positions.constFirst()), titles);
    co_return result;
}

} // namespace

AtspiTree::AtspiTree(std::shared_ptr<AtspiApplication> application, std::shared_ptr<const AtspiCache> cache,
                     AtspiEnvironment &environment, RunningApplication owner, AtspiTitles titles)
    : m_application(std::move(application)), m_cache(std::move(cache)),
      m_outline(std::make_shared<AtspiOutline>()), m_environment(environment), m_owner(std::move(owner)),
      m_titles(std::move(titles))
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
    const OrderedWindows ordered = co_await orderedWindows(m_application, reading.children, m_titles);
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

QCoro::Task<std::optional<QString>> AtspiTree::pageAddress()
{
    const auto self = shared_from_this();
    const QList<AccessibilityElement> top{root()};
    const QList<AccessibilityAttributes> attributes = co_await read(top);
    const QList<AccessibilityElement> windows = attributes.constFirst().children;
    if (windows.isEmpty())
        co_return std::nullopt;
    const AtspiReference window = m_objects.at(m_frontWindow.value_or(windows.constFirst())).reference;
    const AtspiRule shownPage{{AtspiRole::DocumentWeb}, {AtspiState::Showing}};
    const QList<QDBusMessage> search{Atspi::getMatches(window, shownPage, 1)};
    const QList<QDBusMessage> found = co_await AtspiApplication::exchange(m_application, search);
    const QList<AtspiReference> pages = Atspi::references(found.constFirst());
    if (pages.isEmpty())
        co_return std::nullopt;
    const QList<QDBusMessage> question{Atspi::getDocumentAttributes(pages.constFirst())};
    const QList<QDBusMessage> answer = co_await AtspiApplication::exchange(m_application, question);
    co_return Atspi::documentAddress(answer.constFirst());
}

QCoro::Task<bool> AtspiTree::press(AccessibilityElement element)
{
    const auto self = shared_from_this();
    const AtspiReference object = m_objects.at(element).reference;
    co_await m_environment.activate(m_owner);
    const std::optional<bool> byKey =
        co_await Atspi::pressWithKey(m_application, object, m_environment, m_owner);
    if (byKey)
        co_return *byKey;
    co_return co_await Atspi::press(m_application, object);
}

QList<qsizetype> Atspi::frontFirst(const QList<WindowState> &windows, const AtspiTitles &titles)
{
    QList<qsizetype> positions;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        if (!hasTitleIn(windows.at(i), titles.foreign))
            positions.append(i);
    }
    const auto isBefore = [&](qsizetype left, qsizetype right) {
        const qsizetype leftRank = rankOf(windows.at(left), titles.inFront);
        const qsizetype rightRank = rankOf(windows.at(right), titles.inFront);
        if (leftRank != rightRank)
            return leftRank < rightRank;
        return windows.at(left).isActive && !windows.at(right).isActive;
    };
    std::stable_sort(positions.begin(), positions.end(), isBefore);
    return positions;
}

bool Atspi::isInFront(const WindowState &window, const AtspiTitles &titles)
{
    return window.isActive || hasTitleIn(window, titles.inFront);
}
