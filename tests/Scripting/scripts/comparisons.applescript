-- case: is
-- result: true
return 1 is 1

-- case: equals
-- result: false
return 1 equals 2

-- case: is equal to
-- result: true
return "a" is equal to "a"

-- case: is not
-- result: true
return 1 is not 2

-- case: isn't
-- result: false
return 1 isn't 1

-- case: is not equal to
-- result: true
return 1 is not equal to 2

-- case: does not equal
-- result: true
return 1 does not equal 2

-- case: unequal sign
-- result: false
return 1 ≠ 1

-- case: slash and equals
-- result: true
return 1 /= 2

-- case: less
-- result: true
return 1 < 2

-- case: is less than
-- result: false
return 2 is less than 1

-- case: greater
-- result: true
return 2 > 1

-- case: is greater than
-- result: false
return 2 is greater than 3

-- case: at most
-- result: true
return 2 ≤ 2

-- case: at most in ASCII
-- result: false
return 3 <= 2

-- case: at least
-- result: false
return 2 ≥ 3

-- case: at least in ASCII
-- result: true
return 3 >= 3

-- case: is less than or equal to
-- result: true
return 2 is less than or equal to 2

-- case: is greater than or equal to
-- result: false
return 1 is greater than or equal to 2

-- case: is not less than
-- result: true
return 2 is not less than 2

-- case: is not greater than
-- result: false
return 3 is not greater than 2

-- case: comes before
-- result: true
return "apple" comes before "banana"

-- case: comes after
-- result: false
return "apple" comes after "banana"

-- case: does not come before
-- result: true
return "b" does not come before "a"

-- case: doesn't come after
-- result: false
return "b" doesn't come after "a"

-- case: starts with
-- result: true
return "hello" starts with "he"

-- case: begins with
-- result: false
return "hello" begins with "lo"

-- case: ends with
-- result: true
return "hello" ends with "LO"

-- case: contains
-- result: true
return "hello" contains "ell"

-- case: does not contain
-- result: true
return "hello" does not contain "x"

-- case: doesn't contain
-- result: false
return "hello" doesn't contain "h"

-- case: is in
-- result: true
return "a" is in "cat"

-- case: is not in
-- result: true
return 4 is not in {1, 2}

-- case: is contained by
-- result: true
return 2 is contained by {1, 2}

-- case: a list contains a list
-- result: true
return {1, 2, 3} contains {2, 3}

-- case: a list contains no gaps
-- result: false
return {1, 2, 3} contains {1, 3}

-- case: a list contains an item
-- result: true
return {1, 2} contains 2

-- case: a list starts with
-- result: true
return {1, 2} starts with 1

-- case: a list ends with
-- result: true
return {1, 2, 3} ends with {2, 3}

-- case: an integer equals a real
-- result: true
return 1 = 1.0

-- case: a text equals no number
-- result: false
return "1" = 1

-- case: lists are equal
-- result: true
return {1, {2}} = {1, {2}}

-- case: lists are unequal
-- result: false
return {1, 2} = {2, 1}

-- case: case is ignored
-- result: true
return "ABC" = "abc"

-- case: accents are not ignored
-- result: false
return "resume" = "résumé"

-- case: a text and a number
-- result: true
return "2" < 3

-- case: a number and a text
-- result: true
return 2 < "3"

-- case: and
-- result: false
return true and false

-- case: or
-- result: true
return true or false

-- case: not
-- result: false
return not true

-- case: not binds before and
-- result: true
return not false and true

-- case: and binds before or
-- result: true
return true or false and false

-- case: and stops early
-- result: false
return false and (1 / 0 = 1)

-- case: or stops early
-- result: true
return true or (1 / 0 = 1)

-- case: missing values
-- result: true
return missing value is missing value

-- case: classes
-- result: true
return class of 1 is integer

-- case: & binds before =
-- result: true
return "a" & "b" = "ab"

-- case: a sum is compared
-- result: true
return 1 + 1 = 2

-- case: considering case
-- result: false
considering case
return "A" = "a"
end considering

-- case: ignoring diacriticals
-- result: true
ignoring diacriticals
return "résumé" = "resume"
end ignoring

-- case: ignoring white space
-- result: true
ignoring white space
return "a b" = "ab"
end ignoring

-- case: ignoring hyphens
-- result: true
ignoring hyphens
return "anti-war" = "antiwar"
end ignoring

-- case: ignoring punctuation
-- result: true
ignoring punctuation
return "a.b!" = "ab"
end ignoring

-- case: considering but ignoring
-- result: {true, false}
considering case but ignoring white space
return {"A b" = "Ab", "A" = "a"}
end considering

-- case: considering numeric strings
-- result: true
considering numeric strings
return "1.10" > "1.9"
end considering

-- case: without numeric strings
-- result: false
return "1.10" > "1.9"

-- case: considering ends
-- result: true
considering case
set x to 1
end considering
return "A" = "a"

-- case: no order
-- error: Can’t compare {1} with {2}.
return {1} < {2}

-- case: no truth
-- error: Can’t make "maybe" into type boolean.
if "maybe" then return 1

