// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// The columns of the matrix: what is done with each application.
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

// How one sees from outside that a control was pressed.
enum class MatrixEffect {
    TitleShows,    // a window's title contains the text
    AnotherWindow, // the application has one more window
    WindowGone,    // the application has one window less
    DocumentSaved, // the document's file holds what was typed
    PageReports,   // the page posts the text
};

// Controls to press one after the other, and what comes of the last one.
struct MatrixClick
{
    QStringList labels;
    MatrixEffect effect = MatrixEffect::TitleShows;
    QString text;
    QString key; // pressed before, as xdotool writes it; empty: none
};

// A row of the matrix: a real application, and what there is to do in it.
struct MatrixApplication
{
    enum class Kind { Editor, FileManager, Browser, Terminal };

    QString heading;
    Kind kind = Kind::Editor;
    QString name;          // in the menu of applications
    QString part;          // of that name
    QString alias;         // a word that users have for it
    QString role;          // an application of another system whose place it can take
    QStringList roleTypes; // it has that role when it is the default for these
    QString entry;         // its desktop entry
    QString program;
    QStringList arguments;
    QString windowClass;
    QString startTitle;  // in the title, once its document, page or folder is shown
    QString keyInNewTab; // what makes the title of a new tab another one, as xdotool writes it
    MatrixClick click;
    MatrixClick clickPart;
    MatrixClick clickClosedMenu;
    MatrixClick clickOpenMenu;
    MatrixClick secondWindow; // opens it
    MatrixClick clickSecondWindow;
    QString readable;      // one of the lines that read_ui gives
    QStringList keysTaken; // combinations that it keeps to itself, as MatrixKey::pageName() writes them
    QHash<MatrixAction, QString> cannot; // and why
};

namespace MatrixApplications {

QList<MatrixApplication> all();

} // namespace MatrixApplications
