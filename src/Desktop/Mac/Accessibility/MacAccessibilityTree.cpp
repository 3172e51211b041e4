// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Accessibility/MacAccessibilityTree.h"

#include "Desktop/Mac/CoreFoundationValues.h"
#include "Desktop/PlatformError.h"

#include <array>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Indexes into the requested attributes.
enum Attribute : CFIndex { Role, Subrole, Title, Description, Value, Help, Children, AttributeCount };

CFArrayRef attributeNames()
{
    static const auto list = [] {
        std::array<const void *, AttributeCount> names{
            kAXRoleAttribute,  kAXSubroleAttribute, kAXTitleAttribute,   kAXDescriptionAttribute,
            kAXValueAttribute, kAXHelpAttribute,    kAXChildrenAttribute};
        return CoreFoundationReference<CFArrayRef>::adopted(
            CFArrayCreate(kCFAllocatorDefault, names.data(), AttributeCount, &kCFTypeArrayCallBacks));
    }();
    return list.get();
}

// One element's attributes; its children have no handles yet.
struct Reading
{
    AXError error = kAXErrorFailure;
    AccessibilityAttributes attributes;
    QList<MacAccessibilityTree::Element> children;
};

QList<MacAccessibilityTree::Element> elementsIn(CFArrayRef list)
{
    QList<MacAccessibilityTree::Element> result;
    const CFIndex count = list ? CFArrayGetCount(list) : 0;
    for (CFIndex i = 0; i < count; ++i) {
        const CFTypeRef object = CFArrayGetValueAtIndex(list, i);
        if (object && CFGetTypeID(object) == AXUIElementGetTypeID())
            result.append(MacAccessibilityTree::Element::retained(static_cast<AXUIElementRef>(object)));
    }
    return result;
}

Reading readingOf(const MacAccessibilityTree::Element &element)
{
    Reading reading;
    CFArrayRef copied = nullptr;
    reading.error = AXUIElementCopyMultipleAttributeValues(element.get(), attributeNames(),
                                                           AXCopyMultipleAttributeOptions{0}, &copied);
    const auto values = CoreFoundationReference<CFArrayRef>::adopted(copied);
    if (reading.error != kAXErrorSuccess || !values || CFArrayGetCount(values.get()) != AttributeCount)
        return reading;
    const auto value = [&values](Attribute each) { return CFArrayGetValueAtIndex(values.get(), each); };
    // An absent attribute is represented by an object of another type.
    reading.attributes.role = CoreFoundationValues::text(value(Role)).value_or(QString());
    reading.attributes.title = CoreFoundationValues::text(value(Title));
    reading.attributes.description = CoreFoundationValues::text(value(Description));
    reading.attributes.help = CoreFoundationValues::text(value(Help));
    const CFTypeRef subrole = value(Subrole);
    if (!subrole || !CFEqual(subrole, kAXSecureTextFieldSubrole))
        reading.attributes.value = CoreFoundationValues::text(value(Value));
    reading.children = elementsIn(CoreFoundationValues::array(value(Children)));
    return reading;
}

// The elements of one read, and its deadline.
struct Request
{
    QList<MacAccessibilityTree::Element> elements;
    qsizetype root = -1; // index of the application's own element, or -1
    std::chrono::steady_clock::time_point deadline;
};

PlatformError silence(const QString &name)
{
    return PlatformError(u"“%1” isn't responding."_s.arg(name));
}

// The error if the whole application cannot be read.
PlatformError refusal(AXError error, const QString &name)
{
    switch (error) {
    case kAXErrorCannotComplete:
        return silence(name);
    case kAXErrorAPIDisabled:
        return PlatformError(u"macOS doesn't let Orvane read other applications: allow it in System "
                             "Settings, Privacy & Security, Accessibility."_s);
    case kAXErrorInvalidUIElement:
        return PlatformError(u"“%1” is no longer open."_s.arg(name));
    default:
        return PlatformError(u"“%1” doesn't tell what is in its windows."_s.arg(name));
    }
}

// Throws PlatformError if the whole application cannot be read.
QList<Reading> readingsOf(const Request &request, const QString &name, const MacQueue &queue)
{
    QList<Reading> readings;
    for (const MacAccessibilityTree::Element &element : request.elements) {
        if (queue.isClosing() || std::chrono::steady_clock::now() >= request.deadline)
            throw silence(name);
        const Reading reading = readingOf(element);
        // Otherwise it would look like an application without controls.
        if (readings.size() == request.root && reading.error != kAXErrorSuccess)
            throw refusal(reading.error, name);
        readings.append(reading);
    }
    return readings;
}

} // namespace

MacAccessibilityTree::MacAccessibilityTree(Element root, QString name, std::shared_ptr<MacQueue> queue,
                                           Activate activate)
    : m_name(std::move(name)), m_queue(std::move(queue)),
      m_activate(std::move(activate)), m_elements{std::move(root)}
{
}

QCoro::Task<QList<AccessibilityAttributes>> MacAccessibilityTree::read(QList<AccessibilityElement> elements)
{
    const auto self = shared_from_this();
    const auto start = std::chrono::steady_clock::now();
    Request request;
    for (const AccessibilityElement element : elements)
        request.elements.append(m_elements.at(element));
    request.root = elements.indexOf(root());
    request.deadline = start + walkLimit - m_waited;
    const auto job = [request, name = m_name, queue = m_queue.get()] {
        return readingsOf(request, name, *queue);
    };
    const QList<Reading> readings = co_await m_queue->run(job, walkLimit + 2 * messageLimit);
    m_waited +=
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    QList<AccessibilityAttributes> result;
    for (const Reading &reading : readings) {
        result.append(reading.attributes);
        for (const Element &child : reading.children) {
            result.last().children.append(static_cast<AccessibilityElement>(m_elements.size()));
            m_elements.append(child);
        }
    }
    co_return result;
}

QCoro::Task<bool> MacAccessibilityTree::press(AccessibilityElement element)
{
    const auto self = shared_from_this();
    const Element target = m_elements.at(element);
    co_await m_activate();
    const auto job = [target] {
        return AXUIElementPerformAction(target.get(), kAXPressAction) == kAXErrorSuccess;
    };
    try {
        co_return co_await m_queue->run(job, 2 * messageLimit);
    } catch (const PlatformError &) {
        co_return false;
    }
}
