-- case: error
-- error: Oops
error "Oops"

-- case: error without text
-- error: An error occurred.
error

-- case: try
-- result: "after"
try
error "a"
end try
return "after"

-- case: on error
-- result: "caught"
try
error "a"
on error
return "caught"
end try

-- case: the message
-- result: "boom"
try
error "boom"
on error msg
return msg
end try

-- case: the number
-- result: {"boom", 77}
try
error "boom" number 77
on error msg number n
return {msg, n}
end try

-- case: only the number
-- result: 5
try
error number 5
on error number n
return n
end try

-- case: cancellation has a number
-- result: -128
try
error number -128
on error m number n
return n
end try

-- case: division by zero can be caught
-- result: -2701
try
return 1 / 0
on error number n
return n
end try

-- case: an undefined variable
-- error: The variable nothing is not defined.
return nothing

-- case: an undefined variable can be caught
-- result: -2753
try
return nothing
on error number n
return n
end try

-- case: a coercion can be caught
-- result: -1700
try
return "a" as integer
on error number n
return n
end try

-- case: a missing item can be caught
-- result: -1728
try
return item 3 of {}
on error number n
return n
end try

-- case: nested try
-- result: "outer inner"
try
try
error "inner"
on error m
error "outer " & m
end try
on error m
return m
end try

-- case: an error in the handler leaves
-- error: b
try
error "a"
on error
error "b"
end try

-- case: an error leaves the loop
-- result: 3
try
repeat with i from 1 to 5
if i = 3 then error "stop"
end repeat
on error
return i
end try

-- case: an error in a handler is caught by the caller
-- result: "inside"
on f()
error "inside"
end f
try
f()
on error m
return m
end try

-- case: try goes on after success
-- result: 1
try
set x to 1
on error
set x to 2
end try
return x

-- case: considering ends with an error
-- result: true
try
considering case
error "x"
end considering
end try
return "A" = "a"

-- case: error with an expression
-- error: ab
error "a" & "b"

