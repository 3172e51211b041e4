-- case: the current date
-- result: "Monday, November 23, 2026 at 2:30:00 PM"
return (current date) as text

-- case: year
-- result: 2026
return year of (current date)

-- case: month
-- result: November
return month of (current date)

-- case: day
-- result: 23
return day of (current date)

-- case: weekday
-- result: Monday
return weekday of (current date)

-- case: month as integer
-- result: 11
return month of (current date) as integer

-- case: time
-- result: 52200
return time of (current date)

-- case: hours, minutes and seconds
-- result: {14, 30, 0}
set d to current date
return {hours of d, minutes of d, seconds of d}

-- case: date string
-- result: "Monday, November 23, 2026"
return date string of (current date)

-- case: time string
-- result: "2:30:00 PM"
return time string of (current date)

-- case: short date string
-- result: "11/23/26"
return short date string of (current date)

-- case: tomorrow
-- result: 24
return day of ((current date) + 1 * days)

-- case: a difference is in seconds
-- result: 7200
set d to current date
return (d + 2 * hours) - d

-- case: a date literal
-- result: 24
return day of date "December 24, 2026"

-- case: a date literal with time
-- result: "6:05:00 PM"
return time string of date "December 24, 2026 6:05 PM"

-- case: a date in the international form
-- result: February
return month of date "2026-02-03"

-- case: dates are compared
-- result: true
return date "2026-01-01" < date "2026-01-02"

-- case: set the day
-- result: "Friday, May 1, 2026 at 12:00:00 AM"
set d to date "2026-05-31"
set day of d to 1
return d as text

-- case: set the time
-- result: "9:00:00 AM"
set d to current date
set time of d to 9 * hours
return time string of d

-- case: set the month
-- result: "Saturday, January 10, 2026"
set d to date "2026-05-10"
set month of d to January
return date string of d

-- case: set the year
-- result: 2030
set d to date "2026-05-10"
set year of d to 2030
return year of d

-- case: dates are shared by set
-- result: 1
set d to date "2026-05-10"
set e to d
set day of e to 1
return day of d

-- case: dates are duplicated by copy
-- result: 10
set d to date "2026-05-10"
copy d to e
set day of e to 1
return day of d

-- case: days in a month
-- result: 28
set d to date "2026-02-01"
set day of d to 32
set day of d to 1
return day of (d - 1 * days)

-- case: no date
-- error: Line 1: “soon” is no date.
return date "soon"

-- case: a text becomes a date
-- result: date
return class of ("2026-05-10" as date)

