-- case: if
-- result: "yes"
if 1 < 2 then
return "yes"
end if

-- case: if without then
-- result: "yes"
if 1 < 2
return "yes"
end if

-- case: else
-- result: "b"
if 1 > 2 then
return "a"
else
return "b"
end if

-- case: else if
-- result: "b"
set x to 2
if x = 1 then
return "a"
else if x = 2 then
return "b"
else
return "c"
end if

-- case: if on one line
-- result: 3
if true then return 3

-- case: if on one line that is false
-- result: 1
set x to 1
if false then set x to 2
return x

-- case: nested if
-- result: 2
if true then
if false then
return 1
else
return 2
end if
end if

-- case: repeat times
-- result: 3
set n to 0
repeat 3 times
set n to n + 1
end repeat
return n

-- case: repeat zero times
-- result: 0
set n to 0
repeat 0 times
set n to 1
end repeat
return n

-- case: repeat while
-- result: 128
set n to 1
repeat while n < 100
set n to n * 2
end repeat
return n

-- case: repeat until
-- result: 6
set n to 0
repeat until n ≥ 5
set n to n + 2
end repeat
return n

-- case: repeat from
-- result: {1, 2, 3}
set l to {}
repeat with i from 1 to 3
set end of l to i
end repeat
return l

-- case: repeat by
-- result: {10, 6, 2}
set l to {}
repeat with i from 10 to 1 by -4
set end of l to i
end repeat
return l

-- case: repeat from that never runs
-- result: 0
set n to 0
repeat with i from 2 to 1
set n to 1
end repeat
return n

-- case: changing the variable does not change the loop
-- result: 3
set n to 0
repeat with i from 1 to 3
set i to 10
set n to n + 1
end repeat
return n

-- case: repeat in
-- result: 6
set n to 0
repeat with x in {1, 2, 3}
set n to n + x
end repeat
return n

-- case: contents of the variable
-- result: {"a"}
set l to {}
repeat with x in {"a"}
set end of l to contents of x
end repeat
return l

-- case: setting the contents changes the list
-- result: {10, 20}
set l to {1, 2}
repeat with x in l
set contents of x to x * 10
end repeat
return l

-- case: repeat in a text
-- result: {"a", "b"}
set l to {}
repeat with w in words of "a b"
set end of l to w as text
end repeat
return l

-- case: repeat forever
-- result: 4
set n to 0
repeat
set n to n + 1
if n = 4 then exit repeat
end repeat
return n

-- case: exit leaves the inner loop only
-- result: 3
set n to 0
repeat 3 times
repeat
exit repeat
end repeat
set n to n + 1
end repeat
return n

-- case: exit from within try
-- result: "out"
repeat
try
exit repeat
end try
end repeat
return "out"

-- case: an error after an exit from within try
-- error: late
repeat
try
exit repeat
end try
end repeat
error "late"

-- case: exit from within considering
-- result: true
repeat
considering case
exit repeat
end considering
end repeat
return "A" = "a"

-- case: exit from a counted loop
-- result: 3
repeat with i from 1 to 10
if i = 3 then exit repeat
end repeat
return i

-- case: return from within a loop
-- result: 4
repeat with i from 1 to 10
if i = 4 then return i
end repeat

-- case: the step is a real
-- result: {0.0, 0.5, 1.0}
set l to {}
repeat with i from 0.0 to 1 by 0.5
set end of l to i
end repeat
return l

-- case: with timeout
-- result: 1
with timeout of 5 seconds
set x to 1
end timeout
return x

-- case: log does nothing
-- result: 1
log "hello"
return 1

-- case: result
-- result: 10
5 + 5
return result

-- case: the result
-- result: 3
set x to 3
return the result

-- case: get
-- result: 3
get 1 + 2
return result

-- case: end without a name
-- result: 1
repeat 2 times
set x to 1
end
return x

-- case: nothing is looped without a list
-- result: 0
set n to 0
repeat with x in {}
set n to 1
end repeat
return n

-- case: a step of zero
-- error: A “repeat” can’t go on by zero.
repeat with i from 1 to 2 by 0
end repeat

