// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Reader.h"

#include <QHash>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool isTextField(const AtspiReading &reading)
{
    return reading.axRole == "AXTextField"_L1;
}

bool hasLabel(const AtspiReading &reading)
{
    return !reading.name.isEmpty() || !reading.description.isEmpty();
}

bool wantsHelp(const AtspiReading &reading)
{
    const bool isControl = !reading.axRole.isEmpty() && reading.axRole != "AXStaticText"_L1;
    return isControl && !hasLabel(reading) && reading.value.isEmpty();
}

} // namespace

AtspiReader::AtspiReader(std::shared_ptr<AtspiApplication> application,
                         std::shared_ptr<const AtspiCache> cache, std::shared_ptr<AtspiOutline> outline,
                         QList<AtspiReading> readings)
    : m_application(std::move(application)), m_cache(std::move(cache)), m_outline(std::move(outline)),
      m_readings(std::move(readings))
{
}

QCoro::Task<void> AtspiReader::read()
{
    co_await readStructure();
    const Answer label = [toolkit = m_application->toolkit()](const QDBusMessage &reply) {
        return Atspi::label(Atspi::text(reply).value_or(QString()), toolkit);
    };
    const Question name = [](const AtspiReading &reading) -> std::optional<QDBusMessage> {
        if (reading.axRole.isEmpty() || reading.cached)
            return std::nullopt;
        return Atspi::getName(reading.object);
    };
    const Question description = [this](const AtspiReading &reading) -> std::optional<QDBusMessage> {
        const bool isNamed = !reading.name.isEmpty() || isPlainText(reading);
        if (reading.axRole.isEmpty() || isNamed || reading.cached)
            return std::nullopt;
        return Atspi::getDescription(reading.object);
    };
    const Question help = [](const AtspiReading &reading) -> std::optional<QDBusMessage> {
        return wantsHelp(reading) ? std::optional(Atspi::getHelpText(reading.object)) : std::nullopt;
    };
    co_await readTexts(&AtspiReading::name, name, label);
    co_await readTexts(&AtspiReading::description, description, label);
    co_await readContents();
    co_await readNumbers();
    co_await readTexts(&AtspiReading::help, help, label);
}

// If the toolkit lists stacks differently in bulk, trust the cache only for elements that can't be a stack:
// those without children, and controls.
bool AtspiReader::knowsChildren(const AtspiCacheItem &item) const
{
    if (!m_cache->hasAllChildren(item))
        return false;
    if (!Atspi::listsStacksDifferentlyInBulk(m_application->toolkit()) || item.childCount == 0)
        return true;
    return !Atspi::axRole(item.role, AtspiRole::Invalid).isEmpty();
}

// Fills in what the cache holds; returns the indices of elements whose children it lacks.
QList<qsizetype> AtspiReader::useCache()
{
    QList<qsizetype> incomplete;
    for (qsizetype i = 0; i < m_readings.size(); ++i) {
        AtspiReading &reading = m_readings[i];
        const AtspiCacheItem *const item = m_cache->find(reading.object);
        reading.cached = item;
        if (item) {
            reading.role = item->role;
            reading.axRole = Atspi::axRole(item->role, reading.parentRole);
        }
        if (item && !reading.axRole.isEmpty()) {
            reading.name = Atspi::label(item->name, m_application->toolkit());
            if (reading.name.isEmpty())
                reading.description = Atspi::label(item->description, m_application->toolkit());
        }
        if (item && knowsChildren(*item))
            reading.children = m_cache->children(*item);
        else
            incomplete.append(i);
    }
    return incomplete;
}

// Outlines the descendants of elements that are in neither the cache nor the outline.
QCoro::Task<void> AtspiReader::outline(QList<qsizetype> incomplete)
{
    if (!Atspi::canOutlinePages(m_application->toolkit()))
        co_return;
    for (const qsizetype i : incomplete) {
        const AtspiReference object = m_readings.at(i).object;
        if (m_readings.at(i).cached || m_outline->knows(object) || !m_outline->mayAsk())
            continue;
        // GetRole is answered at once, which distinguishes a slow page from a hung browser.
        QList<QDBusMessage> calls{Atspi::getRole(object)};
        calls += AtspiOutline::questions(object);
        const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(m_application, calls);
        QList<QList<AtspiReference>> answers;
        for (const QDBusMessage &reply : replies.sliced(1))
            answers.append(Atspi::references(reply));
        m_outline->add(object, answers);
    }
}

QCoro::Task<void> AtspiReader::readStructure()
{
    const QList<qsizetype> incomplete = useCache();
    co_await outline(incomplete);
    QList<QDBusMessage> calls;
    for (const qsizetype i : incomplete) {
        AtspiReading &reading = m_readings[i];
        if (!reading.cached)
            reading.role = m_outline->role(reading.object);
        if (!m_outline->isLeaf(reading.object))
            calls.append(Atspi::getChildren(reading.object));
        if (reading.role == AtspiRole::Invalid)
            calls.append(Atspi::getRole(reading.object));
    }
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(m_application, calls);
    auto reply = replies.cbegin();
    for (const qsizetype i : incomplete) {
        AtspiReading &reading = m_readings[i];
        if (!m_outline->isLeaf(reading.object))
            reading.children = Atspi::references(*reply++);
        if (reading.role == AtspiRole::Invalid)
            reading.role = Atspi::role(*reply++);
        reading.axRole = Atspi::axRole(reading.role, reading.parentRole);
    }
    for (const qsizetype i : incomplete)
        m_outline->setChildren(m_readings.at(i).object, m_readings.at(i).children);
}

// Whether the element is a text whose name is its only content.
bool AtspiReader::isPlainText(const AtspiReading &reading) const
{
    return Atspi::keepsTextInName(m_application->toolkit()) && reading.role == AtspiRole::Static;
}

// Whether a static text's content has to be read from its Text interface. Labels are short and read whole.
bool AtspiReader::needsTextContent(const AtspiReading &reading) const
{
    if (reading.axRole != "AXStaticText"_L1 || hasLabel(reading) || isPlainText(reading))
        return false;
    return !Atspi::repeatsTextsOfChildren(m_application->toolkit()) || reading.children.isEmpty();
}

// Reads the contents of text fields and of static texts without a label. For text fields, queries the length
// first: it may be a whole book, and some applications reject an end beyond the text.
QCoro::Task<void> AtspiReader::readContents()
{
    QHash<AtspiReference, int> ends;
    QList<AtspiReference> fields;
    QList<QDBusMessage> lengths;
    for (const AtspiReading &reading : m_readings) {
        if (needsTextContent(reading))
            ends.insert(reading.object, -1);
        if (!isTextField(reading) || reading.role == AtspiRole::PasswordText)
            continue;
        fields.append(reading.object);
        lengths.append(Atspi::getCharacterCount(reading.object));
    }
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(m_application, lengths);
    for (qsizetype k = 0; k < fields.size(); ++k) {
        const double length = Atspi::number(replies.at(k)).value_or(0);
        ends.insert(fields.at(k), static_cast<int>(std::clamp<double>(length, 0, longestText)));
    }
    const Question contents = [ends](const AtspiReading &reading) -> std::optional<QDBusMessage> {
        const int end = ends.value(reading.object, 0);
        if (end == 0)
            return std::nullopt;
        return Atspi::getText(reading.object, end);
    };
    const Answer text = [](const QDBusMessage &reply) {
        return Atspi::label(Atspi::text(reply).value_or(QString()), AtspiToolkit::Other);
    };
    co_await readTexts(&AtspiReading::value, contents, text);
}

// Reads the number of spin buttons without text.
QCoro::Task<void> AtspiReader::readNumbers()
{
    const Question number = [](const AtspiReading &reading) -> std::optional<QDBusMessage> {
        if (reading.role != AtspiRole::SpinButton || !reading.value.isEmpty())
            return std::nullopt;
        return Atspi::getCurrentValue(reading.object);
    };
    const Answer digits = [](const QDBusMessage &reply) {
        const std::optional<double> value = Atspi::number(reply);
        return value ? QString::number(*value) : QString();
    };
    co_await readTexts(&AtspiReading::value, number, digits);
}

QCoro::Task<void> AtspiReader::readTexts(QString AtspiReading::*text, Question question, Answer answer)
{
    QList<QDBusMessage> calls;
    QList<qsizetype> asked;
    for (qsizetype i = 0; i < m_readings.size(); ++i) {
        if (const std::optional<QDBusMessage> call = question(m_readings.at(i))) {
            asked.append(i);
            calls.append(*call);
        }
    }
    const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(m_application, calls);
    for (qsizetype k = 0; k < asked.size(); ++k)
        m_readings[asked.at(k)].*text = answer(replies.at(k));
}
