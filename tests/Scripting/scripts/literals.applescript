-- case: an integer
-- result: 42
return 42

-- case: a negative integer
-- result: -7
return -7

-- case: a real
-- result: 2.5
return 2.5

-- case: a whole real keeps its fraction
-- result: 3.0
return 3.0

-- case: a real with an exponent
-- result: 250.0
return 2.5E+2

-- case: a large real has an exponent
-- result: 1.0E+4
return 10000.0

-- case: a small real has an exponent
-- result: 1.0E-4
return 0.0001

-- case: a real below ten thousand has none
-- result: 9999.5
return 9999.5

-- case: an integer too large is a real
-- result: 5.36870912E+8
return 536870912

-- case: the largest integer
-- result: 536870911
return 536870911

-- case: a text
-- result: "hello"
return "hello"

-- case: an escaped quotation mark
-- result: "say \"hi\""
return "say \"hi\""

-- case: an escaped backslash
-- result: 3
return length of "a\\b"

-- case: an escaped tab
-- result: true
return "a\tb" is equal to "a" & tab & "b"

-- case: an escaped line feed
-- result: true
return "a\nb" is equal to "a" & linefeed & "b"

-- case: an escaped return
-- result: true
return "a\rb" is equal to "a" & return & "b"

-- case: a text over two lines
-- result: 2
return count paragraphs of "one
two"

-- case: an empty text
-- result: ""
return ""

-- case: booleans
-- result: {true, false}
return {true, false}

-- case: a missing value
-- result: missing value
return missing value

-- case: an empty list
-- result: {}
return {}

-- case: a nested list
-- result: {1, {2, {3}}}
return {1, {2, {3}}}

-- case: a record
-- result: {name:"Ann", age:41}
return {name:"Ann", age:41}

-- case: constants
-- result: {true, " ", "\""}
return {pi is greater than 3.14, space, quote}

-- case: units of time
-- result: {60, 3600, 86400, 604800}
return {minutes, hours, days, weeks}

-- case: a comment after two hyphens
-- result: 1
return 1 -- one

-- case: a comment after a number sign
-- result: 2
# two
return 2

-- case: a comment in brackets
-- result: 3
return (* three *) 3

-- case: comments nest
-- result: 4
return (* a (* b *) c *) 4

-- case: a comment over lines
-- result: 5
(* a
b *)
return 5

-- case: a continued line
-- result: 3
return 1 + ¬
2

-- case: an identifier in bars
-- result: 8
set |my value| to 8
return |my value|

-- case: a keyword in bars is a name
-- result: 9
set |repeat| to 9
return |repeat|

-- case: names disregard case
-- result: 3
set Total to 3
return TOTAL

-- case: keywords disregard case
-- result: 1
RETURN 1

-- case: “the” is optional
-- result: 4
return the length of the "four"

-- case: the result of the last statement
-- result: 4
2 + 2

-- case: an empty script
-- result: missing value

-- case: only comments
-- result: missing value
-- nothing

