// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The toolkits whose ways with texts need care.
enum class AtspiToolkit {
    Other,
    Gtk3,  // carries out an action before it can answer anything else
    Gtk4,  // says a button's own name and that of the label inside it ("7 7"), or its class where it has none
    Qt,    // lets hints have markup
    Gecko, // Firefox and its kin: keeps texts and actions in the page's process until asked
    Chromium, // repeats in a paragraph's text what the paragraph's children say
};

namespace Atspi {

AtspiToolkit toolkit(const QString &name);

// The text of a control as a person reads it: cleaned, without the blanks that toolkits pad names with, the
// marks they set for pictures, their markup and the names they make up, and said once only. Pure, callable
// from any thread.
QString label(const QString &text, AtspiToolkit toolkit);

} // namespace Atspi
