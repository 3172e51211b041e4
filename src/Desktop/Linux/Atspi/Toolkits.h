// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// How toolkits differ from what the protocol leads one to expect. All of it was seen in the versions of
// Debian 12: GTK 3.24, GTK 4.8, Qt 5.15, Qt Quick 6.4, Firefox ESR and Chromium. Where a difference takes
// more than knowing it, Workarounds.h does that. Pure functions, callable from any thread.

enum class AtspiToolkit {
    Other,
    Gtk3,
    Gtk4,
    Qt,
    Gecko,    // Firefox and its kin
    Chromium, // and the browsers and programs made from it
};

namespace Atspi {

// By what an application calls its toolkit.
AtspiToolkit toolkit(const QString &name);

// The text of a control as a person reads it: cleaned, without the marks that stand for pictures, and with
// - blanks around it removed: GTK 3 pads names with them;
// - the markup of Qt's hints removed;
// - what GTK 4 says twice, a button's own name and that of the label inside it ("7 7"), said once;
// - the class that GTK 4 gives for a name where there is none, removed.
QString label(const QString &text, AtspiToolkit toolkit);

// The position in `names` (an element's actions, in any letter case) of the one that presses it; -1 if none
// does. It is not always the first: a control may offer to take the focus or to show its menu before.
int pressAction(const QStringList &names);

// GTK 3 carries out an action inside the message that asks for it. Where that opens a dialog and waits for
// its answer, the message does not end before the dialog does. `pressWithKey` presses with keys instead.
constexpr bool actsInsideMessages(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gtk3;
}

// Qt and GTK 4 offer no connection beside the bus.
constexpr bool mayOfferPeer(AtspiToolkit toolkit)
{
    return toolkit != AtspiToolkit::Qt && toolkit != AtspiToolkit::Gtk4;
}

// GTK 4 lists the pages of a stack as its children, but in bulk what is on the pages.
constexpr bool listsStacksDifferentlyInBulk(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gtk4;
}

// GTK 4 puts the button that opens a menu into one that has the name but takes no press.
constexpr bool wrapsMenuButtons(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gtk4;
}

// Firefox brings the texts and the actions of a page over from the page's own process, but only once somebody
// has asked for any, and answers that first question as if there were none. `wakePages` asks first.
constexpr bool bringsPagesLate(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gecko;
}

// Firefox and Chromium leave later pages out of their bulk answers. Firefox tells everything below an element
// in one answer (AtspiOutline). Chromium would take longer for that than for one element after the other.
constexpr bool canOutlinePages(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Gecko;
}

// Chromium shows windows with nothing inside, unless it was started with a switch. `hidesControls` looks.
constexpr bool mayHideControls(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Chromium;
}

// Chromium's texts, the blanks between links among them, have what they say for their name and nothing else.
constexpr bool namesItsTexts(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Chromium;
}

// Chromium repeats in a paragraph's text what the paragraph's children say.
constexpr bool repeatsTextsOfChildren(AtspiToolkit toolkit)
{
    return toolkit == AtspiToolkit::Chromium;
}

} // namespace Atspi
