// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// The columns of the matrix: the actions tested with each application.
enum class MatrixAction {
    OpenByName,
    OpenByPart,
    OpenByAlias,
    OpenByRole,
    Focus,
    Quit,
    QuitUnsaved,
    NewTab,
    TypeText,
    PressKey,
    Click,
    ClickPart,
    ClickClosedMenu,
    ClickOpenMenu,
    ClickSecondWindow,
    ReadControls,
    ListWindows,
    Screenshot,
    OpenAddress,
    OpenAddressNamed,
    SearchWeb,
    SearchWebNamed,
};

// The observable effect of pressing a control.
enum class MatrixEffect {
    TitleShows,    // a window's title contains the text
    AnotherWindow, // the application has one more window
    WindowGone,    // the application has one window fewer
    DocumentSaved, // the document's file contains the typed text
    PageReports,   // the page posts the text
};

// Controls to press in sequence, and the effect of the last one.
struct MatrixClick
{
    QStringList labels;
    MatrixEffect effect = MatrixEffect::TitleShows;
    QString text;
    QString key; // pressed first, in xdotool's notation; may be empty
};

// A row of the matrix: a real application and its test data.
struct MatrixApplication
{
    enum class Kind { Editor, FileManager, Browser, Terminal };

    QString heading;
    Kind kind = Kind::Editor;
    QString name;          // in the application menu
    QString part;          // a part of the name
    QString alias;         // another name that users have for it
    QString role;          // the application of another platform that it can stand for
    QStringList roleTypes; // the role requires being the default for these
    QString entry;         // the file name of its desktop entry
    QString program;
    QStringList arguments;
    QString windowClass;
    QString startTitle;  // in the title once its document, page or folder is shown
    QString keyInNewTab; // changes the title of a new tab; in xdotool's notation
    MatrixClick click;
    MatrixClick clickPart;
    MatrixClick clickClosedMenu;
    MatrixClick clickOpenMenu;
    MatrixClick secondWindow; // opens it
    MatrixClick clickSecondWindow;
    QString readable;                    // an item of read_ui's result
    QStringList keysTaken;               // combinations that it handles itself, as in MatrixKeys::pageName()
    QHash<MatrixAction, QString> cannot; // unsupported actions, with the reasons
    QHash<MatrixAction, QString> limits; // what supported actions refuse
};

namespace MatrixApplications {

QList<MatrixApplication> all();

} // namespace MatrixApplications
