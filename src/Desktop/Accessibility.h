// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

// A handle of one element inside an AccessibilityTree; valid as long as that tree.
using AccessibilityElement = int;

// What one element says of itself, under the AX names: `role` "AXButton", …; empty where the platform's role
// has no AX name. Text attributes are cleaned; one that is absent, unreadable or no text has no value.
struct AccessibilityAttributes
{
    QString role;
    std::optional<QString> title;         // "AXTitle"
    std::optional<QString> description;   // "AXDescription"
    std::optional<QString> value;         // "AXValue"; never of a password field
    std::optional<QString> help;          // "AXHelp"
    QList<AccessibilityElement> children; // "AXChildren"
};

// The accessibility tree of one application, for one walk. Main thread. What a backend can fetch in bulk it
// keeps for as long as the tree lives, so a tree is never kept from one action to the next.
class AccessibilityTree
{
public:
    virtual ~AccessibilityTree() = default;

    // The application's own element.
    virtual AccessibilityElement root() const = 0;

    // The window or dialog in front, a child of the root; known once the root has been read. None where the
    // platform does not tell which one it is.
    virtual std::optional<AccessibilityElement> frontWindow() const { return std::nullopt; }

    // The attributes of many elements in one go, in the order asked for. An element that has vanished has an
    // empty role, no attributes and no children. Throws PlatformError with a sentence when the whole
    // application stops answering within the walk's time budget (a few seconds), or the accessibility bus is
    // gone.
    virtual QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) = 0;

    // The press action ("AXPress"); false when the element refuses, is gone or does not answer in time. The
    // application has the focus when its control is pressed.
    virtual QCoro::Task<bool> press(AccessibilityElement element) = 0;
};

// The accessibility service of the desktop. Main thread.
class Accessibility
{
public:
    virtual ~Accessibility() = default;

    // Whether this process may read and operate other applications, and send keys.
    virtual QCoro::Task<bool> isProcessTrusted() = 0;

    // Whether that permission is the user's to give. Where it is not, `requestTrust` alone brings it about.
    virtual bool isTrustGivenByUser() const { return true; }

    // Asks the platform to ask the user for that permission. Where nobody is asked, switches accessibility on
    // and waits until it is, a few seconds at most.
    virtual QCoro::Task<void> requestTrust() = 0;

    // The tree of the application with this process. Throws PlatformError when the application has none, with
    // a sentence that says what the user can do about it.
    virtual QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(qint64 processIdentifier) = 0;
};
