-- case: an unknown word after a value
-- error: Line 1: Expected the end of the line but found “banana”.
return 1 banana

-- case: the line is named
-- error: Line 2: Expected “to” but found “2”.
set x to 1
set y 2

-- case: no end
-- error: Line 2: Expected “end” but found the end of the script.
repeat 2 times
set x to 1

-- case: a wrong end
-- error: Line 2: Expected “end repeat” but found “tell”.
repeat 2 times
end tell

-- case: no closing bracket
-- error: Line 1: Expected “)” but found the end of the line.
return (1 + 2

-- case: no closing brace
-- error: Line 1: Expected “,” but found the end of the line.
return {1, 2

-- case: no closing quotation mark
-- error: Line 1: The text that begins here has no closing quotation mark.
return "abc

-- case: no end of a comment
-- error: Line 1: The comment that begins here has no end.
(* abc

-- case: an unknown sign
-- error: Line 1: “;” is not understood.
return 1 ; 2

-- case: a keyword as a value
-- error: Line 1: “of” is not understood here.
return of

-- case: exit outside a loop
-- error: Line 1: “exit repeat” is not inside a “repeat”.
exit repeat

-- case: else without if
-- error: Line 1: “else” is not understood here.
else

-- case: a literal cannot be set
-- error: Line 1: Expected a name but found “5”.
set 5 to 6

-- case: a number with letters
-- error: Line 1: “12a” is no number.
return 12abc

-- case: an unknown escape
-- error: Line 1: “\q” is no character in a text.
return "\q"

-- case: a framework
-- error: Line 1: “framework” is not understood here.
use framework "Foundation"

-- case: a script object
-- error: Line 1: Script objects are not supported.
script x
end script

-- case: nothing after an operator
-- error: Line 1: the end of the line is not understood here.
return 1 +

-- case: a continuation inside a line
-- error: Line 1: Expected the end of the line after “¬”.
return 1 ¬ + 2

