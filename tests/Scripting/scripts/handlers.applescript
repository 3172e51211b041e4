-- case: a call
-- result: 8
on double(x)
return x * 2
end double
return double(4)

-- case: a call before the definition
-- result: 2
return f(1)
on f(x)
return x + 1
end f

-- case: no parameters
-- result: 5
on f()
return 5
end f
return f()

-- case: several parameters
-- result: 6
on sum(a, b, c)
return a + b + c
end sum
return sum(1, 2, 3)

-- case: to instead of on
-- result: 3
to f(x)
return x
end f
return f(3)

-- case: without return
-- result: 6
on f(x)
x * 3
end f
return f(2)

-- case: my
-- result: 3
on f(x)
return x
end f
return my f(3)

-- case: of me
-- result: 3
on f(x)
return x
end f
return f(3) of me

-- case: recursion
-- result: 3628800
on fact(n)
if n ≤ 1 then return 1
return n * (fact(n - 1))
end fact
return fact(10)

-- case: variables are local
-- result: 1
on f()
set x to 2
end f
set x to 1
f()
return x

-- case: script variables are invisible
-- error: The variable x is not defined.
on f()
return x
end f
set x to 1
return f()

-- case: global
-- result: 2
on f()
global x
set x to 2
end f
set x to 1
f()
return x

-- case: property
-- result: 6
property x : 5
on f()
set x to x + 1
end f
f()
return x

-- case: my property
-- result: 9
property x : 5
on f(x)
set my x to x
end f
f(9)
return x

-- case: a parameter hides a property
-- result: 1
property x : 5
on f(x)
return x
end f
return f(1)

-- case: local hides a property
-- result: 5
property x : 5
on f()
local x
set x to 1
end f
f()
return x

-- case: lists are passed by reference
-- result: {1, 2}
on f(l)
set end of l to 2
end f
set a to {1}
f(a)
return a

-- case: a list as parameter
-- result: 2
on f({a, b})
return b
end f
return f({1, 2})

-- case: labelled parameters
-- result: 7
on findMax of a above b
if a > b then return a
return b
end findMax
return findMax of 3 above 7

-- case: labels in another order
-- result: 3
on rate of a by b
return a - b
end rate
return rate of 5 by 2

-- case: given
-- result: 12
on f for x given scale:s
return x * s
end f
return f for 3 given scale:4

-- case: with
-- result: {6, 3}
on f for x given doubled:d
if d then return x * 2
return x
end f
return {f for 3 with doubled, f for 3 without doubled}

-- case: wrong number of parameters
-- error: The parameters don’t match those of “f”.
on f(a)
end f
f(1, 2)

-- case: an unknown handler
-- error: The script doesn’t understand the “g” message.
g(1)

-- case: endless recursion
-- error: Stack overflow.
on f()
return f()
end f
f()

-- case: on run
-- result: "ran"
on run
return "ran"
end run

-- case: return without a value
-- result: missing value
on f()
return
end f
return f()

-- case: two out of
-- result: 4
on f out of x
return x
end f
return f out of 4

-- case: a nested call
-- result: 3
on f(x)
return x + 1
end f
return f(f(f(0)))

-- case: the target of tell is the caller’s
-- result: script
on f()
return class of it
end f
tell "abc"
return my f()
end tell

-- case: a handler named like a command
-- result: 4
on duplicate(x)
return x * 2
end duplicate
return my duplicate(2)

