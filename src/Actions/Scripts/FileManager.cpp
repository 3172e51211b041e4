// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/FileManager.h"

#include "Actions/Operations/FileSearch.h"
#include "Actions/Operations/Locations.h"
#include "Actions/Scripts/ScriptItems.h"
#include "Base/Text.h"
#include "Scripting/ScriptError.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Kind = ScriptObject::Kind;

bool isFileClass(const QString &className)
{
    static const QStringList classes{u"file"_s, u"folder"_s, u"item"_s, u"document file"_s,
                                     u"application file"_s};
    return classes.contains(className);
}

// The location in the words of FileSearch::locate; empty for other properties.
QString placeOf(const QString &property)
{
    if (property == "desktop"_L1)
        return u"Desktop"_s;
    return property == "home"_L1 ? u"~"_s : QString();
}

QCoro::Task<QString> pathOf(ScriptValue value, Desktop desktop);

// Elements by name; others are looked up in the folder's listing first.
QCoro::Task<QString> pathOfObject(ScriptValue::Object object, Desktop desktop)
{
    const bool isOfApplication = object->container && ScriptItems::isApplication(*object->container);
    const QString place = object->kind == Kind::Property ? placeOf(object->name) : QString();
    if (!place.isEmpty())
        co_return co_await FileSearch::locate(place, desktop);
    const bool isNamed = object->kind == Kind::Element && isFileClass(object->name) &&
                         !object->key.isNumber() && !object->key.isMissing();
    if (!isNamed)
        throw ScriptError(u"Can’t get %1."_s.arg(ScriptCoercion::source(object)), ScriptError::NoSuchObject);
    const QString name = ScriptItems::textOf(object->key);
    const bool isWhole = name.startsWith(u'/') || name.startsWith(u'~');
    if (isWhole)
        co_return co_await FileSearch::locate(name, desktop);
    // Without a container, on the desktop.
    const ScriptValue container =
        isOfApplication ? ScriptValue(u"Desktop"_s) : ScriptValue(object->container);
    const QString folder = co_await pathOf(container, desktop);
    co_return Locations::pathInside(folder, name);
}

// The path of a file object, or of a text.
QCoro::Task<QString> pathOf(ScriptValue value, Desktop desktop)
{
    if (value.is<ScriptValue::Object>()) {
        const ScriptValue::Object object = value.as<ScriptValue::Object>();
        co_return co_await pathOfObject(object, desktop);
    }
    const QString text = ScriptItems::textOf(value);
    co_return co_await FileSearch::locate(text, desktop);
}

ScriptItem itemFor(const FolderEntry &entry, const QString &folder)
{
    const QString path = Locations::pathInside(folder, entry.name);
    const QString ending = entry.name.contains(u'.') ? entry.name.section(u'.', -1) : QString();
    const ScriptValue date =
        entry.modificationDate ? ScriptValue::date(*entry.modificationDate) : ScriptValue();
    return {entry.name,
            {{u"name extension"_s, ending},
             {u"modification date"_s, date},
             {u"posix path"_s, path},
             {u"kind"_s, entry.isFolder ? u"Folder"_s : u"File"_s},
             {u"class"_s, ScriptClass{entry.isFolder ? u"folder"_s : u"file"_s}}}};
}

// The content of a folder, by name.
QCoro::Task<QList<ScriptItem>> contentOf(QString folder, QString className, Desktop desktop)
{
    const std::optional<QList<FolderEntry>> entries = co_await desktop.files.contentsOfDirectory(folder);
    if (!entries)
        throw ScriptError(u"Couldn't read %1."_s.arg(folder), ScriptError::NoSuchObject);
    QList<ScriptItem> items;
    for (const FolderEntry &entry : *entries) {
        const bool isWanted = className == "item"_L1 || entry.isFolder == (className == "folder"_L1);
        if (isWanted)
            items.append(itemFor(entry, folder));
    }
    std::sort(items.begin(), items.end(), [](const ScriptItem &left, const ScriptItem &right) {
        return Text::comparisonKey(left.name) < Text::comparisonKey(right.name);
    });
    co_return items;
}

// One file or folder wherever it is, or the content of the container.
QCoro::Task<std::optional<QList<ScriptItem>>> items(ScriptValue::Object element, Desktop desktop)
{
    std::optional<QList<ScriptItem>> found;
    if (!isFileClass(element->name))
        co_return found;
    const bool isNamed = !element->key.isNumber() && !element->key.isMissing();
    if (!isNamed) {
        const bool isOfApplication = ScriptItems::isApplication(*element->container);
        const ScriptValue container =
            isOfApplication ? ScriptValue(u"Desktop"_s) : ScriptValue(element->container);
        const QString folder = co_await pathOf(container, desktop);
        found = co_await contentOf(folder, element->name, desktop);
        co_return found;
    }
    const QString path = co_await pathOf(element, desktop);
    const QString parent = path.section(u'/', 0, -2);
    const QString name = ScriptItems::textOf(element->key);
    const QString listed = parent.isEmpty() ? u"/"_s : parent;
    const std::optional<QList<FolderEntry>> entries = co_await desktop.files.contentsOfDirectory(listed);
    found.emplace();
    for (const FolderEntry &entry : entries.value_or(QList<FolderEntry>())) {
        if (entry.name != Locations::lastComponent(path))
            continue;
        // It answers to the name by which the script knows it.
        ScriptItem item = itemFor(entry, parent);
        item.properties.insert(u"name"_s, item.name);
        item.name = name;
        found->append(item);
    }
    co_return found;
}

// The paths of the direct parameter: one object, or a list of them.
QCoro::Task<QStringList> pathsOf(ScriptCommand command, Desktop desktop)
{
    QStringList paths;
    const ScriptValue direct = command.direct.value_or(ScriptValue());
    const QList<ScriptValue> objects = ScriptCoercion::to(direct, u"list"_s, {}).items();
    for (const ScriptValue &object : objects) {
        const bool isSeveral = object.is<ScriptValue::Object>() && object.object().kind == Kind::Element &&
                               (object.object().key.isNumber() || object.object().key.isMissing());
        if (!isSeveral) {
            const QString path = co_await pathOf(object, desktop);
            paths.append(path);
            continue;
        }
        const ScriptValue::Object element = object.as<ScriptValue::Object>();
        const std::optional<QList<ScriptItem>> all = co_await items(element, desktop);
        for (const ScriptItem &item : ScriptItems::selected(*element, all.value_or(QList<ScriptItem>())))
            paths.append(item.properties.value(u"posix path"_s).as<QString>());
    }
    co_return paths;
}

bool isTrash(const ScriptValue &place)
{
    return place.is<ScriptValue::Object>() && place.object().kind == Kind::Property &&
           place.object().name == u"trash";
}

ScriptValue fileAt(const QString &path)
{
    return ScriptFile{path};
}

QCoro::Task<ScriptValue> makeFolder(ScriptCommand command, Desktop desktop)
{
    const ScriptValue properties = command.parameter(u"with properties"_s);
    const ScriptValue *name = properties.is<ScriptValue::Record>()
                                  ? properties.as<ScriptValue::Record>()->find(u"name"_s)
                                  : nullptr;
    const QString folderName = name ? ScriptItems::textOf(*name) : u"untitled folder"_s;
    const ScriptValue given = command.parameter(u"at"_s);
    const ScriptValue place = given.isMissing() ? ScriptValue(u"Desktop"_s) : given;
    const QString parent = co_await pathOf(place, desktop);
    const QString path = Locations::pathInside(parent, folderName);
    const bool exists = co_await desktop.files.exists(path);
    if (exists)
        throw ScriptError(u"“%1” exists already."_s.arg(folderName));
    co_await desktop.files.createDirectory(path);
    co_return fileAt(path);
}

// Moves or copies into the folder `to`; a copy without one stays beside the original.
QCoro::Task<ScriptValue> transfer(ScriptCommand command, Desktop desktop)
{
    const QStringList paths = co_await pathsOf(command, desktop);
    const ScriptValue place = command.parameter(u"to"_s);
    const bool isMove = command.name == "move"_L1;
    QString target;
    for (const QString &path : paths) {
        if (isMove && isTrash(place)) {
            co_await desktop.files.trash(path);
            continue;
        }
        QString into = path.section(u'/', 0, -2);
        if (!place.isMissing())
            into = co_await pathOf(place, desktop);
        const QString name = Locations::lastComponent(path);
        target = Locations::pathInside(into, place.isMissing() ? name + u" copy"_s : name);
        if (isMove)
            co_await desktop.files.move(path, target);
        else
            co_await desktop.files.copy(path, target);
    }
    co_return target.isEmpty() ? ScriptValue() : fileAt(target);
}

QCoro::Task<void> openAll(ScriptCommand command, Desktop desktop)
{
    const QStringList paths = co_await pathsOf(command, desktop);
    for (const QString &path : paths) {
        const bool exists = co_await desktop.files.exists(path);
        if (!exists)
            throw ScriptError(u"Nothing exists at %1."_s.arg(path), ScriptError::NoSuchObject);
        const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
        co_await desktop.workspace.open(url);
    }
}

QCoro::Task<void> rename(ScriptValue::Object object, ScriptValue newName, Desktop desktop)
{
    const QString path = co_await pathOf(object->container, desktop);
    const QString name = ScriptItems::textOf(newName);
    if (name.contains(u'/') || name.isEmpty())
        throw ScriptError(u"“%1” is no name for a file."_s.arg(name));
    const QString folder = path.section(u'/', 0, -2);
    const QString target = Locations::pathInside(folder, name);
    co_await desktop.files.move(path, target);
}

// Properties of the application, and of files and folders.
QCoro::Task<std::optional<ScriptValue>> get(ScriptCommand command, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    const bool isPlace = object && object->kind == Kind::Property && !placeOf(object->name).isEmpty();
    const bool isTrashItself = object && isTrash(*command.direct);
    if (isPlace && command.name == "get"_L1) {
        const QString path = co_await pathOfObject(object, desktop);
        answer = fileAt(path);
    } else if (isTrashItself && command.name == "get"_L1) {
        answer = command.direct;
    } else {
        answer = co_await ScriptItems::perform(command, &items, desktop);
    }
    co_return answer;
}

bool isRename(const ScriptCommand &command)
{
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    return command.name == "set"_L1 && object && object->kind == Kind::Property && object->name == u"name" &&
           object->container->kind == Kind::Element;
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> FileManager::perform(ScriptCommand command, Desktop desktop)
{
    std::optional<ScriptValue> done = ScriptValue();
    const bool isFolder = ScriptCoercion::text(command.parameter(u"new"_s), {}) == u"folder"_s;
    if (command.name == "make"_L1 && isFolder) {
        done = co_await makeFolder(command, desktop);
    } else if (command.name == "move"_L1 || command.name == "duplicate"_L1) {
        done = co_await transfer(command, desktop);
    } else if (command.name == "delete"_L1) {
        const QStringList paths = co_await pathsOf(command, desktop);
        for (const QString &path : paths)
            co_await desktop.files.trash(path);
    } else if (command.name == "open"_L1) {
        co_await openAll(command, desktop);
    } else if (command.name == "reveal"_L1 || command.name == "select"_L1) {
        const QStringList paths = co_await pathsOf(command, desktop);
        for (const QString &path : paths)
            co_await desktop.workspace.reveal(path);
    } else if (isRename(command)) {
        const ScriptValue::Object object = ScriptItems::objectOf(command);
        const ScriptValue name = command.parameter(u"to"_s);
        co_await rename(object, name, desktop);
    } else {
        done = co_await get(command, desktop);
    }
    co_return done;
}
