// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// How toolkits deviate from the protocol, as observed in Debian 12: GTK 3.24, GTK 4.8, Qt 5.15, Qt Quick 6.4,
// Firefox ESR and Chromium. Workarounds.h has what takes calls to work around. Pure functions.

enum class AtspiToolkit {
    Other,
    Gtk3,
    Gtk4,
    Qt,
    Gecko,    // Firefox and other Mozilla programs
    Chromium, // and programs based on it, such as Electron applications
};

namespace Atspi {

// Parses an application's ToolkitName.
AtspiToolkit toolkit(const QString &name);

// A control's text as the user sees it: cleaned, without object replacement characters, and without
// - surrounding blanks, with which GTK 3 pads names;
// - the markup of Qt's rich text tooltips;
// - GTK 4's repetition of a button's name, which includes its label's ("7 7");
// - the class name that GTK 4 uses in place of a missing name.
QString label(const QString &text, AtspiToolkit toolkit);

// The index of the press action in `names` (an element's actions, case-insensitive), or -1. It need not be
// the first: actions such as focusing or showing a menu may precede it.
int pressAction(const QStringList &names);

// GTK 3 performs an action while handling the call. If the action runs a modal dialog, the reply comes only
// after the dialog closes. `pressWithKey` uses keys instead.
constexpr bool actsInsideMessages(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gtk3;
}

// Qt and GTK 4 don't offer direct connections.
constexpr bool mayOfferPeer(AtspiToolkit toolkit)
{
    return toolkit != AtspiToolkit::Qt && toolkit != AtspiToolkit::Gtk4;
}

// GetChildren of a GTK 4 stack returns its pages; GetItems returns the contents of the pages as its children.
constexpr bool listsStacksDifferentlyInBulk(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gtk4;
}

// GTK 4 wraps the button that opens a menu in another, which has the name but no press action.
constexpr bool wrapsMenuButtons(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gtk4;
}

// Firefox fetches the texts and actions of a page from its content process only after the first query for
// any, which it answers as if there were none. `wakePages` sends that first query.
constexpr bool loadsPagesLazily(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gecko;
}

// Firefox and Chromium omit later pages from GetItems. In Firefox, GetMatches is an efficient substitute
// (AtspiOutline); in Chromium it is slower than reading elements one by one.
constexpr bool canOutlinePages(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gecko;
}

// Chromium exposes empty windows unless started with --force-renderer-accessibility. `hidesControls` detects
// this.
constexpr bool mayHideControls(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Chromium;
}

// Chromium's text elements, including blanks between links, have their content as the name and nothing else.
constexpr bool keepsTextInName(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Chromium;
}

// In Chromium, a paragraph's text repeats that of its children.
constexpr bool repeatsTextsOfChildren(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Chromium;
}

} // namespace Atspi
