-- case: text to integer
-- result: 42
return "42" as integer

-- case: text to real
-- result: 2.5
return "2.5" as real

-- case: text to number
-- result: 7
return "7" as number

-- case: integer to real
-- result: 3.0
return 3 as real

-- case: real to integer rounds
-- result: 3
return 2.7 as integer

-- case: integer to text
-- result: "5"
return 5 as text

-- case: integer to string
-- result: "5"
return 5 as string

-- case: Unicode text
-- result: "5"
return 5 as Unicode text

-- case: boolean to text
-- result: "true"
return true as text

-- case: text to boolean
-- result: false
return "false" as boolean

-- case: integer to boolean
-- result: true
return 1 as boolean

-- case: boolean to integer
-- result: 1
return true as integer

-- case: value to list
-- result: {5}
return 5 as list

-- case: list of one to number
-- result: 5
return {5} as integer

-- case: real to text
-- result: "1.5"
return 1.5 as text

-- case: a month to its number
-- result: 3
return March as integer

-- case: a weekday to its number
-- result: 1
return Sunday as integer

-- case: large real to text
-- result: "2.0E+4"
return 20000.0 as text

-- case: as binds after &
-- result: "12"
return 1 & 2 as text

-- case: as text is text
-- result: text
return class of ("a" as text)

-- case: list to text
-- result: "1b2"
return {1, "b", {2}} as text

-- case: impossible
-- error: Can’t make "x" into type integer.
return "x" as integer

-- case: a record has no text
-- error: Can’t make {a:1} into type text.
return {a:1} as text

-- case: the class of 1
-- result: integer
return class of (1)

-- case: the class of 1.5
-- result: real
return class of (1.5)

-- case: the class of "a"
-- result: text
return class of ("a")

-- case: the class of {}
-- result: list
return class of ({})

-- case: the class of {a:1}
-- result: record
return class of ({a:1})

-- case: the class of true
-- result: boolean
return class of (true)

-- case: the class of missing value
-- result: constant
return class of (missing value)

-- case: the class of integer
-- result: class
return class of (integer)

-- case: the class of Monday
-- result: weekday
return class of (Monday)

-- case: the class of current date
-- result: date
return class of (current date)

-- case: the class of yes
-- result: constant
return class of (yes)

