// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

#include <QCoroTask>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

// A handle to one element of an AccessibilityTree, valid for the tree's lifetime.
using AccessibilityElement = int;

// The attributes of one element, under their AX names. `role` is "AXButton" and so on, or empty if the
// platform's role has no AX name. Texts are cleaned; an attribute that is absent, unreadable or not a text
// has no value.
struct AccessibilityAttributes
{
    QString role;
    std::optional<QString> title;         // "AXTitle"
    std::optional<QString> description;   // "AXDescription"
    std::optional<QString> value;         // "AXValue"; never set for a password field
    std::optional<QString> help;          // "AXHelp"
    QList<AccessibilityElement> children; // "AXChildren"
};

// The accessibility tree of one application. A backend may cache what it fetches for the tree's lifetime, so
// use a tree for one traversal only. Thread: main.
class AccessibilityTree
{
public:
    virtual ~AccessibilityTree() = default;

    // The application's root element.
    virtual AccessibilityElement root() const = 0;

    // The frontmost window or dialog, a child of the root. Available once the root has been read; nothing if
    // the platform doesn't report it.
    virtual std::optional<AccessibilityElement> frontWindow() const { return std::nullopt; }

    // Reads the attributes of several elements in one batch, in the given order. An element that no longer
    // exists has an empty role, no attributes and no children. Throws PlatformError if the application stops
    // responding within the tree's time budget (a few seconds) or the accessibility bus is lost.
    virtual QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) = 0;

    // The address of the web page that the frontmost window shows; nothing if there is none, or the platform
    // doesn't tell it. Throws as `read` does.
    virtual QCoro::Task<std::optional<QString>> pageAddress() { co_return std::nullopt; }

    // Performs the press action ("AXPress"), giving the application the focus first. Returns false if the
    // element refuses, no longer exists or times out.
    virtual QCoro::Task<bool> press(AccessibilityElement element) = 0;
};

// The desktop's accessibility service. Thread: main.
class Accessibility
{
public:
    virtual ~Accessibility() = default;

    // Whether this process may read and control other applications and send keys.
    virtual QCoro::Task<bool> isProcessTrusted() = 0;

    // Whether the user has to grant that permission. If not, `requestTrust` obtains it by itself.
    virtual bool isTrustGivenByUser() const { return true; }

    // Has the platform prompt the user for the permission. Where no prompt is needed, enables accessibility
    // and waits for it, a few seconds at most.
    virtual QCoro::Task<void> requestTrust() = 0;

    // Returns the application's tree, without the windows of other applications in the same process. Throws
    // PlatformError if it has none; the message tells the user what to do.
    virtual QCoro::Task<std::shared_ptr<AccessibilityTree>>
    applicationTree(RunningApplication application) = 0;
};
