// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptDates.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

QLocale english()
{
    return QLocale(QLocale::English, QLocale::UnitedStates);
}

std::optional<int> numberIn(const QString &name, int count, QString (*nameOf)(int))
{
    for (int number = 1; number <= count; ++number) {
        if (name.compare(nameOf(number), Qt::CaseInsensitive) == 0)
            return number;
    }
    return std::nullopt;
}

QString monthName(int month)
{
    return english().monthName(month);
}

// Qt counts from Monday, the language from Sunday.
QString weekdayName(int day)
{
    return english().dayName(day == 1 ? 7 : day - 1);
}

std::optional<QDate> dateFrom(const QString &text)
{
    static const QStringList formats{u"yyyy-M-d"_s,    u"M/d/yyyy"_s,    u"MMMM d, yyyy"_s, u"MMMM d yyyy"_s,
                                     u"d MMMM yyyy"_s, u"MMM d, yyyy"_s, u"MMM d yyyy"_s,   u"d MMM yyyy"_s};
    for (const QString &format : formats) {
        const QDate date = english().toDate(text, format);
        if (date.isValid())
            return date;
    }
    // Years of two digits are those of this century.
    const QDate abbreviated = english().toDate(text, u"M/d/yy"_s);
    return abbreviated.isValid() ? std::optional(abbreviated.addYears(abbreviated.year() < 2000 ? 100 : 0))
                                 : std::nullopt;
}

std::optional<QTime> timeFrom(const QString &text)
{
    if (text.isEmpty())
        return QTime(0, 0);
    for (const QString &format : {u"h:mm:ss AP"_s, u"h:mm AP"_s, u"h AP"_s, u"H:mm:ss"_s, u"H:mm"_s}) {
        const QTime time = english().toTime(text.toUpper(), format);
        if (time.isValid())
            return time;
    }
    return std::nullopt;
}

qint64 wholeNumber(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"integer"_s, {}).as<qint64>();
}

QDateTime withTimeOfDay(const QDateTime &time, qint64 seconds)
{
    return QDateTime(time.date(), QTime(0, 0)).addSecs(seconds);
}

// A date with a day outside the month continues into the next months.
QDateTime withDate(const QDateTime &time, qint64 year, qint64 month, qint64 day)
{
    if (year < 1 || year > 9999 || month < 1 || month > 12)
        throw ScriptError(u"There is no such date."_s);
    const QDate first(static_cast<int>(year), static_cast<int>(month), 1);
    return QDateTime(first.addDays(day - 1), time.time());
}

} // namespace

QString ScriptDates::text(const QDateTime &time)
{
    return dateText(time) + u" at "_s + timeText(time);
}

QString ScriptDates::dateText(const QDateTime &time)
{
    return english().toString(time.date(), u"dddd, MMMM d, yyyy"_s);
}

QString ScriptDates::shortDateText(const QDateTime &time)
{
    return english().toString(time.date(), u"M/d/yy"_s);
}

QString ScriptDates::timeText(const QDateTime &time)
{
    return english().toString(time.time(), u"h:mm:ss AP"_s);
}

std::optional<QDateTime> ScriptDates::fromText(const QString &text)
{
    static const QRegularExpression weekday(u"^\\p{L}+day,? +"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression clock(
        u"(?:^|,? +at +|,? +|T)(\\d{1,2}(?::\\d{2}){1,2}(?: *[AP]M)?|\\d{1,2} *[AP]M)$"_s,
        QRegularExpression::CaseInsensitiveOption);
    QString rest = text.simplified().left(100);
    rest.remove(weekday);
    const QRegularExpressionMatch match = clock.match(rest);
    const std::optional<QTime> time = timeFrom(match.captured(1));
    rest.truncate(match.hasMatch() ? match.capturedStart(0) : rest.size());
    const std::optional<QDate> date = rest.isEmpty() ? QDate::currentDate() : dateFrom(rest);
    if (!date || !time || text.isEmpty())
        return std::nullopt;
    return QDateTime(*date, *time);
}

std::optional<int> ScriptDates::numberOfMonth(const QString &name)
{
    return numberIn(name, 12, &monthName);
}

std::optional<int> ScriptDates::numberOfWeekday(const QString &name)
{
    return numberIn(name, 7, &weekdayName);
}

std::optional<ScriptValue> ScriptDates::property(const QDateTime &time, const QString &name)
{
    const auto number = [](qint64 value) { return ScriptValue(value); };
    if (name == "year"_L1)
        return number(time.date().year());
    if (name == "month"_L1)
        return ScriptConstant{monthName(time.date().month())};
    if (name == "day"_L1)
        return number(time.date().day());
    if (name == "weekday"_L1)
        return ScriptConstant{weekdayName(time.date().dayOfWeek() % 7 + 1)};
    if (name == "hours"_L1)
        return number(time.time().hour());
    if (name == "minutes"_L1)
        return number(time.time().minute());
    if (name == "seconds"_L1)
        return number(time.time().second());
    if (name == "time"_L1)
        return number(time.time().msecsSinceStartOfDay() / 1000);
    if (name == "date string"_L1)
        return dateText(time);
    if (name == "short date string"_L1)
        return shortDateText(time);
    if (name == "time string"_L1)
        return timeText(time);
    return std::nullopt;
}

std::optional<QDateTime> ScriptDates::withProperty(const QDateTime &time, const QString &name,
                                                   const ScriptValue &value)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    const qint64 seconds = clock.msecsSinceStartOfDay() / 1000;
    if (name == "year"_L1)
        return withDate(time, wholeNumber(value), date.month(), date.day());
    if (name == "month"_L1)
        return withDate(time, date.year(), wholeNumber(value), date.day());
    if (name == "day"_L1)
        return withDate(time, date.year(), date.month(), wholeNumber(value));
    if (name == "time"_L1)
        return withTimeOfDay(time, wholeNumber(value));
    if (name == "hours"_L1)
        return withTimeOfDay(time, seconds + (wholeNumber(value) - clock.hour()) * 3600);
    if (name == "minutes"_L1)
        return withTimeOfDay(time, seconds + (wholeNumber(value) - clock.minute()) * 60);
    if (name == "seconds"_L1)
        return withTimeOfDay(time, seconds + wholeNumber(value) - clock.second());
    return std::nullopt;
}
