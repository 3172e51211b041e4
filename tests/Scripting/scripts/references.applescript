-- case: a reference to a variable
-- result: 2
set x to 1
set r to a reference to x
set x to 2
return contents of r

-- case: setting the contents of a reference
-- result: 5
set x to 1
set r to a reference to x
set contents of r to 5
return x

-- case: a reference to an item
-- result: {1, 9}
set l to {1, 2}
set r to a reference to item 2 of l
set contents of r to 9
return l

-- case: tell a value
-- result: 2
tell {1, 2, 3} to return item 2

-- case: it
-- result: 3
tell "abc"
return length of it
end tell

-- case: elements of the target
-- result: "two"
tell "one two"
return word 2
end tell

-- case: properties of the target
-- result: 2
tell {a:1, b:2}
return its b
end tell

-- case: tell me
-- result: 6
on f()
return 6
end f
tell me to return f()

-- case: of after a call
-- result: 2
on f()
return {1, 2}
end f
return item 2 of f()

