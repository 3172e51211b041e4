// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

// The numbers of the accessibility protocol's roles that mean something here.
enum class AtspiRole : std::uint32_t {
    Invalid = 0,
    CheckBox = 7,
    CheckMenuItem = 8,
    ComboBox = 11,
    Label = 29,
    Menu = 33,
    MenuBar = 34,
    MenuItem = 35,
    PageTab = 37,
    PasswordText = 40,
    PushButton = 43,
    RadioButton = 44,
    RadioMenuItem = 45,
    SpinButton = 52,
    Text = 61,
    ToggleButton = 62,
    Paragraph = 73,
    Entry = 79,
    Heading = 83,
    Link = 88,
    DocumentWeb = 95,
    Static = 116,
    Switch = 130,
};

// What the protocol's roles and actions mean here. Pure functions, callable from any thread.
namespace Atspi {

// The AX name of the role of an element whose parent has the role `parent`; empty where it has none.
QString axRole(AtspiRole role, AtspiRole parent);

// The position in `names` (an element's actions, in any letter case) of the one that presses it; -1 if none
// does. It is not always the first: a control may offer to take the focus or to show its menu before.
int pressAction(const QStringList &names);

} // namespace Atspi
