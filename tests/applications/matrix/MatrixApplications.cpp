// SPDX-License-Identifier: Apache-2.0
// The rows of the matrix.
#include "applications/matrix/MatrixApplication.h"
#include "applications/matrix/MatrixDesktop.h"
#include "applications/support/Screen.h"

using namespace Qt::StringLiterals;
using enum MatrixAction;
using enum MatrixEffect;

namespace {

using Kind = MatrixApplication::Kind;
using Reasons = QHash<MatrixAction, QString>;

const QString noAlias = u"No alias stands for it."_s;
const QString noBrowser = u"It is no browser."_s;
const QString noTabs = u"It has no tabs."_s;
const QString otherTabKey =
    u"It opens tabs with another key: Ctrl+T, which every new_tab presses, means something else there."_s;
const QString filledMenus =
    u"It fills a menu when the menu opens. Opening it first works: click the menu, then the item."_s;

// Starts Unicode input: the input method consumes the keys after it.
const QString unicodeEntry = u"Ctrl+Shift+KeyU"_s;

Reasons notOnTheWeb(const Reasons &others)
{
    Reasons all{{OpenAddress, noBrowser},
                {OpenAddressNamed, noBrowser},
                {SearchWeb, noBrowser},
                {SearchWebNamed, noBrowser}};
    all.insert(others);
    return all;
}

MatrixApplication editor(const QString &heading, const QString &program, const QString &windowClass)
{
    MatrixApplication application;
    application.heading = heading;
    application.kind = Kind::Editor;
    application.program = program;
    application.windowClass = windowClass;
    application.role = u"TextEdit"_s;
    application.roleTypes = QStringList{u"text/plain"_s};
    application.startTitle = u"letter.txt"_s;
    return application;
}

MatrixApplication mousepad()
{
    MatrixApplication application = editor(u"GTK 3: Mousepad"_s, u"mousepad"_s, u"Mousepad"_s);
    application.name = u"Mousepad"_s;
    application.part = u"mouse"_s;
    application.entry = u"org.xfce.mousepad.desktop"_s;
    application.click = {{u"New"_s}, TitleShows, u"Untitled"_s, {}};
    application.clickPart = {{u"ew windo"_s}, AnotherWindow, {}, {}};
    application.clickClosedMenu = {{u"Save"_s}, DocumentSaved, {}, {}};
    application.clickOpenMenu = {{u"File"_s, u"Save"_s}, DocumentSaved, {}, {}};
    application.secondWindow = {{}, AnotherWindow, {}, u"ctrl+o"_s};
    application.clickSecondWindow = {{u"Cancel"_s}, WindowGone, {}, {}};
    application.readable = u"MenuItem: Save"_s;
    application.cannot = notOnTheWeb({{OpenByAlias, noAlias}, {NewTab, otherTabKey}});
    return application;
}

MatrixApplication textEditor()
{
    MatrixApplication application =
        editor(u"GTK 4: Text Editor"_s, u"gnome-text-editor"_s, u"gnome-text-editor"_s);
    application.name = u"Text Editor"_s;
    application.part = u"text ed"_s;
    application.entry = u"org.gnome.TextEditor.desktop"_s;
    application.click = {{u"New tab (Ctrl+T)"_s}, TitleShows, u"New Document"_s, {}};
    application.clickPart = {{u"new tab"_s}, TitleShows, u"New Document"_s, {}};
    application.secondWindow = {{}, AnotherWindow, {}, u"ctrl+shift+s"_s};
    application.clickSecondWindow = {{u"Cancel"_s}, WindowGone, {}, {}};
    application.readable = u"Button: Open"_s;
    const QString menus = u"GTK 4 makes the items of a menu when it opens, at a depth of 19; a click looks "
                          u"at twelve levels. The "
                          "items' own keys work."_s;
    application.cannot =
        notOnTheWeb({{OpenByAlias, noAlias}, {ClickClosedMenu, menus}, {ClickOpenMenu, menus}});
    return application;
}

MatrixApplication featherPad()
{
    MatrixApplication application = editor(u"Qt 5: FeatherPad"_s, u"featherpad"_s, u"FeatherPad"_s);
    application.name = u"FeatherPad"_s;
    application.part = u"feather"_s;
    application.entry = u"featherpad.desktop"_s;
    application.click = {{u"New"_s}, TitleShows, u"Untitled"_s, {}};
    application.clickPart = {{u"referen"_s}, AnotherWindow, {}, {}};
    application.clickClosedMenu = {{u"Save"_s}, DocumentSaved, {}, {}};
    application.clickOpenMenu = {{u"File"_s, u"Save"_s}, DocumentSaved, {}, {}};
    application.secondWindow = {{u"Preferences"_s}, AnotherWindow, {}, {}};
    application.clickSecondWindow = {{u"Close"_s}, WindowGone, {}, {}};
    application.readable = u"MenuItem: Options"_s;
    application.cannot = notOnTheWeb({{OpenByAlias, noAlias}, {NewTab, otherTabKey}});
    return application;
}

MatrixApplication sample()
{
    MatrixApplication application =
        editor(u"Qt 6 Quick: our sample"_s, MatrixDesktop::sample(), u"orvane_desktop_sample"_s);
    application.name = u"Orvane Sample"_s;
    application.part = u"sample"_s;
    application.entry = u"orvane-desktop-sample.desktop"_s;
    application.click = {{u"Stamp"_s}, TitleShows, u"(pressed: Stamp)"_s, {}};
    application.clickPart = {{u"amp tw"_s}, TitleShows, u"(pressed: Stamp twice)"_s, {}};
    application.clickOpenMenu = {
        {u"Stamp from the menu"_s}, TitleShows, u"(pressed: Stamp from the menu)"_s, u"alt+f"_s};
    application.secondWindow = {{u"Open another window"_s}, AnotherWindow, {}, {}};
    application.clickSecondWindow = {{u"Ring the bell"_s}, TitleShows, u"The bell rang"_s, {}};
    application.readable = u"Button: Stamp twice"_s;
    const QString menu =
        u"Qt Quick 6.4 shows the items of a menu only while it is open, and calls each menu of a menu bar a "
        "menu bar, which is nothing to click. Opening it with its key works: press_key F with Option, then "
        "click the item."_s;
    application.cannot = notOnTheWeb({{OpenByAlias, noAlias}, {NewTab, noTabs}, {ClickClosedMenu, menu}});
    return application;
}

MatrixApplication thunar()
{
    MatrixApplication application;
    application.heading = u"GTK 3: Thunar"_s;
    application.kind = Kind::FileManager;
    application.name = u"Thunar File Manager"_s;
    application.part = u"thunar"_s;
    application.role = u"Finder"_s;
    application.roleTypes = QStringList{u"inode/directory"_s};
    application.entry = u"thunar.desktop"_s;
    application.program = u"thunar"_s;
    application.windowClass = u"Thunar"_s;
    application.startTitle = u"Downloads"_s;
    application.keyInNewTab = u"alt+Up"_s;
    application.click = {{u"Home"_s}, TitleShows, u"home"_s, {}};
    application.clickPart = {{u"pen paren"_s}, TitleShows, u"home"_s, {}};
    application.clickOpenMenu = {{u"File"_s, u"New Window"_s}, AnotherWindow, {}, {}};
    application.secondWindow = {{u"Edit"_s, u"Preferences..."_s}, AnotherWindow, {}, {}};
    application.clickSecondWindow = {{u"Close"_s}, WindowGone, {}, {}};
    application.readable = u"Button: Open Parent"_s;
    application.cannot = notOnTheWeb({{OpenByAlias, noAlias},
                                      {QuitUnsaved, u"It has nothing to save."_s},
                                      {ClickClosedMenu, filledMenus}});
    return application;
}

MatrixApplication terminal()
{
    MatrixApplication application;
    application.heading = u"Terminal: Xfce Terminal"_s;
    application.kind = Kind::Terminal;
    application.name = u"Xfce Terminal"_s;
    application.part = u"xfce term"_s;
    application.alias = u"terminal"_s;
    application.role = u"Terminal"_s;
    application.entry = u"xfce4-terminal.desktop"_s;
    application.program = u"xfce4-terminal"_s;
    application.windowClass = u"Xfce4-terminal"_s;
    application.startTitle = u"Terminal"_s;
    application.click = {{u"Open Terminal"_s}, AnotherWindow, {}, {}};
    application.clickPart = {{u"n termi"_s}, AnotherWindow, {}, {}};
    application.clickOpenMenu = {{u"File"_s, u"Open Terminal"_s}, AnotherWindow, {}, {}};
    application.secondWindow = {{u"Preferences..."_s}, AnotherWindow, {}, {}};
    application.clickSecondWindow = {{u"Close"_s}, WindowGone, {}, {}};
    application.readable = u"MenuItem: Next Tab"_s;
    application.cannot = notOnTheWeb({{NewTab, otherTabKey}, {ClickClosedMenu, filledMenus}});
    return application;
}

MatrixApplication browser(const QString &heading, const QString &program, const QString &windowClass)
{
    MatrixApplication application;
    application.heading = heading;
    application.kind = Kind::Browser;
    application.role = u"Safari"_s;
    application.roleTypes =
        QStringList{u"x-scheme-handler/https"_s, u"x-scheme-handler/http"_s, u"text/html"_s};
    application.program = program;
    application.windowClass = windowClass;
    application.startTitle = u"Matrix page"_s;
    application.click = {{u"zebra"_s}, PageReports, u"Zebra"_s, {}};
    application.clickPart = {{u"bra cross"_s}, PageReports, u"Zebra crossing"_s, {}};
    application.clickClosedMenu = {{u"Pear"_s}, PageReports, u"Pear"_s, {}};
    application.clickOpenMenu = {{u"Fruit"_s, u"Pear"_s}, PageReports, u"Pear"_s, {}};
    application.secondWindow = {{u"Open another window"_s}, AnotherWindow, {}, {}};
    application.clickSecondWindow = {{u"Ring the bell"_s}, PageReports, u"The bell rang"_s, {}};
    application.readable = u"Button: Zebra"_s;
    return application;
}

MatrixApplication chromium()
{
    MatrixApplication application = browser(u"Chromium"_s, u"chromium"_s, u"Chromium"_s);
    application.name = u"Chromium Web Browser"_s;
    application.part = u"chromium"_s;
    application.entry = u"chromium.desktop"_s;
    application.arguments =
        MatrixDesktop::chromiumSwitches() + QStringList{u"--force-renderer-accessibility"_s};
    application.keysTaken = QStringList{u"Ctrl+KeyN"_s,       u"Ctrl+KeyT"_s,       u"Ctrl+KeyW"_s,
                                        u"Ctrl+Shift+KeyN"_s, u"Ctrl+Shift+KeyT"_s, u"Ctrl+Shift+KeyW"_s,
                                        u"Ctrl+Tab"_s,        u"Ctrl+Shift+Tab"_s,  unicodeEntry};
    application.cannot = {{OpenByAlias, u"“chrome” is an alias of Google Chrome, which Chromium is not."_s}};
    if (Screen::session() == Screen::Session::Sway || Screen::session() == Screen::Session::Labwc) {
        application.limits = {
            {TypeText, u"Characters beyond U+FFFF, such as emoji, are refused, since Chromium cuts them."_s}};
    }
    return application;
}

MatrixApplication firefox()
{
    MatrixApplication application = browser(u"Firefox"_s, u"firefox-esr"_s, u"firefox-esr"_s);
    application.name = u"Firefox ESR Web Browser"_s;
    application.part = u"Firefox"_s;
    application.entry = u"firefox-esr.desktop"_s;
    application.keysTaken =
        QStringList{u"Ctrl+KeyN"_s,       u"Ctrl+KeyT"_s,       u"Ctrl+KeyW"_s,       u"Ctrl+KeyQ"_s,
                    u"Ctrl+Shift+KeyN"_s, u"Ctrl+Shift+KeyT"_s, u"Ctrl+Shift+KeyW"_s, u"Ctrl+Shift+KeyP"_s,
                    u"Ctrl+Tab"_s,        u"Ctrl+Shift+Tab"_s,  u"Ctrl+Alt+Tab"_s,    u"Ctrl+Semicolon"_s,
                    u"Ctrl+Period"_s,     unicodeEntry};
    application.cannot = {
        {OpenByAlias, noAlias},
        {ClickClosedMenu,
         u"Firefox says that it has chosen the option of a closed list in a page, and does not. Opening the "
         "list first works: click the list, then the option."_s}};
    return application;
}

} // namespace

QList<MatrixApplication> MatrixApplications::all()
{
    return {mousepad(), thunar(), textEditor(), featherPad(), sample(), terminal(), chromium(), firefox()};
}
