// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

struct ScriptDate;
struct ScriptList;
struct ScriptRecord;
struct ScriptObject;
struct ScriptReference;

// A name with a fixed meaning: "yes", "command down", "Monday".
struct ScriptConstant
{
    QString name;
    friend bool operator==(const ScriptConstant &, const ScriptConstant &) = default;
};

// A class as a value: "integer", "folder".
struct ScriptClass
{
    QString name;
    friend bool operator==(const ScriptClass &, const ScriptClass &) = default;
};

// A file or folder that a script names; `path` is absolute, or relative to the home folder.
struct ScriptFile
{
    QString path;
    friend bool operator==(const ScriptFile &, const ScriptFile &) = default;
};

// A value of a script. Dates, lists and records are shared by `set` and duplicated by `copy`. Thread: one.
class ScriptValue
{
public:
    using Date = std::shared_ptr<ScriptDate>;
    using List = std::shared_ptr<ScriptList>;
    using Record = std::shared_ptr<ScriptRecord>;
    using Object = std::shared_ptr<const ScriptObject>;
    using Reference = std::shared_ptr<const ScriptReference>;
    // std::monostate is `missing value`.
    using Content = std::variant<std::monostate, bool, qint64, double, QString, ScriptConstant, ScriptClass,
                                 ScriptFile, Date, List, Record, Object, Reference>;

    ScriptValue() = default;
    template <typename T>
    requires(!std::is_same_v<std::decay_t<T>, ScriptValue>) ScriptValue(T &&content)
        : m_content(std::forward<T>(content))
    {
    }

    static ScriptValue list(QList<ScriptValue> items);
    static ScriptValue record(std::vector<std::pair<QString, ScriptValue>> entries);
    static ScriptValue date(const QDateTime &time);

    template <typename T>
    bool is() const
    {
        return std::holds_alternative<T>(m_content);
    }
    template <typename T>
    const T &as() const
    {
        return std::get<T>(m_content);
    }
    std::size_t index() const { return m_content.index(); }
    bool isMissing() const { return is<std::monostate>(); }
    bool isNumber() const { return is<qint64>() || is<double>(); }

    // Only for lists, records, dates and objects.
    QList<ScriptValue> &items() const;
    std::vector<std::pair<QString, ScriptValue>> &entries() const;
    QDateTime &time() const;
    const ScriptObject &object() const { return *as<Object>(); }

    // Only for numbers.
    double real() const { return is<qint64>() ? static_cast<double>(as<qint64>()) : as<double>(); }

private:
    Content m_content;
};

struct ScriptDate
{
    QDateTime time;
};

// Destroys deeply nested content without recursion.
struct ScriptList
{
    QList<ScriptValue> items;
    ~ScriptList();
};

// In the order of definition; keys are compared without regard to case.
struct ScriptRecord
{
    std::vector<std::pair<QString, ScriptValue>> entries;
    ~ScriptRecord();

    // Returns null if there is no such entry.
    ScriptValue *find(const QString &key);
};

// A phrase that names something outside the script, such as `name of window 1 of application "Finder"`. It is
// only a description until the host is asked for its value.
struct ScriptObject
{
    enum class Kind {
        Script,      // `me`
        Language,    // `AppleScript`
        Application, // `name`
        Property,    // `name` of the container
        Element,     // of the class `name` in the container, selected by `form` and the keys
    };
    enum class Form { Index, Name, Identifier, Range, Every, Middle, Some };

    Kind kind = Kind::Script;
    QString name;
    Form form = Form::Every;
    ScriptValue key;     // index, name or identifier; first index of a range
    ScriptValue lastKey; // last index of a range
    ScriptValue::Object container;
    // Whether the host has returned it as a value, so that it need not be asked for it again.
    bool isValue = false;

    static ScriptValue application(const QString &name);

    // The application at the end of the chain; nothing for objects of the script itself.
    std::optional<QString> applicationName() const;
    // The number of phrases in the chain.
    int length() const;
};

// `a reference to` a variable or to an item of a list.
struct ScriptReference
{
    std::shared_ptr<ScriptValue> variable; // null: an item of a list
    ScriptValue::List list;
    qsizetype index = 0; // from 0
};

// Limits on the values of one script. They keep every operation short.
namespace ScriptLimits {

inline constexpr qsizetype characters = 128 * 1024; // of a text
inline constexpr qsizetype items = 64 * 1024;       // of a list
inline constexpr int depth = 100;                   // of lists in lists, and of objects in objects
inline constexpr qsizetype visits = 256 * 1024;     // of values by one operation
inline constexpr qsizetype units = 1024 * 1024;     // characters and values alive

} // namespace ScriptLimits

// Bounds one traversal of nested values. Throws ScriptError.
class ScriptTraversal
{
public:
    // Counts a visit; construct a `Level` for each level of nesting.
    void visit(qsizetype count = 1);

    class Level
    {
    public:
        explicit Level(ScriptTraversal &traversal);
        ~Level() { --m_traversal.m_depth; }
        Q_DISABLE_COPY_MOVE(Level)

    private:
        ScriptTraversal &m_traversal;
    };

private:
    qsizetype m_visits = 0;
    int m_depth = 0;
};

namespace ScriptValues {

// A copy that shares nothing with the original.
ScriptValue duplicate(const ScriptValue &value);

// Throws ScriptError if `value` contains the container, directly or nested.
void requireNoCycle(const void *container, const ScriptValue &value);

// The characters and values that these values keep alive; shared lists count once.
qsizetype units(const std::vector<const ScriptValue *> &values);

// The value a reference stands for; other values are returned unchanged.
ScriptValue dereferenced(const ScriptValue &value);

} // namespace ScriptValues
