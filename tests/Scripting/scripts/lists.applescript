-- case: item
-- result: 20
return item 2 of {10, 20, 30}

-- case: the last item
-- result: 3
return last item of {1, 2, 3}

-- case: an item from the end
-- result: 3
return item -1 of {1, 2, 3}

-- case: first item
-- result: 7
return first item of {7, 8}

-- case: third item
-- result: 9
return third item of {7, 8, 9}

-- case: items in a range
-- result: {2, 3}
return items 2 thru 3 of {1, 2, 3, 4}

-- case: items through
-- result: {1, 2}
return items 1 through 2 of {1, 2, 3}

-- case: every item
-- result: {1, 2}
return every item of {1, 2}

-- case: items of a class
-- result: {1, 3}
return every integer of {1, "a", 2.5, 3}

-- case: texts of a list
-- result: {"a", "b"}
return every text of {1, "a", "b"}

-- case: numbers of a list
-- result: {1, 2.5}
return numbers of {1, "a", 2.5}

-- case: the first text of a list
-- result: "a"
return first text of {1, "a"}

-- case: length
-- result: 3
return length of {1, 2, 3}

-- case: count
-- result: 3
return count {1, 2, 3}

-- case: count of items
-- result: 2
return count of items of {1, 2}

-- case: count integers
-- result: 2
return count integers of {1, "a", 2}

-- case: rest
-- result: {2, 3}
return rest of {1, 2, 3}

-- case: reverse
-- result: {3, 2, 1}
return reverse of {1, 2, 3}

-- case: the middle item
-- result: 2
return middle item of {1, 2, 3}

-- case: some item
-- result: true
return {4, 5} contains some item of {4, 5}

-- case: concatenation
-- result: {1, 2, 3}
return {1, 2} & {3}

-- case: a value after a list
-- result: {1, 2}
return {1} & 2

-- case: a value before a list
-- result: {1, 2}
return 1 & {2}

-- case: two numbers make a list
-- result: {1, 2}
return 1 & 2

-- case: a number before a text
-- result: {1, "a"}
return 1 & "a"

-- case: nesting a list
-- result: {1, {2, 3}}
return {1} & {{2, 3}}

-- case: set an item
-- result: {1, "b", 3}
set l to {1, 2, 3}
set item 2 of l to "b"
return l

-- case: set the end
-- result: {1, 2}
set l to {1}
set end of l to 2
return l

-- case: set the end with the
-- result: {"x"}
set l to {}
set the end of l to "x"
return l

-- case: set the beginning
-- result: {0, 1}
set l to {1}
set beginning of l to 0
return l

-- case: copy to the end
-- result: {1, 5}
set l to {1}
copy 5 to end of l
return l

-- case: lists are shared by set
-- result: {1, 2}
set a to {1}
set b to a
set end of b to 2
return a

-- case: lists are duplicated by copy
-- result: {1}
set a to {1}
copy a to b
set end of b to 2
return a

-- case: several variables
-- result: {2, 1}
set {a, b} to {1, 2}
return b & a

-- case: swapping
-- result: {2, 1}
set {a, b} to {1, 2}
set {a, b} to {b, a}
return {a, b}

-- case: nested targets
-- result: 3
set {a, {b, c}} to {1, {2, 3}}
return c

-- case: too few values
-- error: Can’t get item 2 of {1}.
set {a, b} to {1}

-- case: an item that is missing
-- error: Can’t get item 5 of {1, 2}.
return item 5 of {1, 2}

-- case: item 0
-- error: Can’t get item 0 of {1}.
return item 0 of {1}

-- case: the index is a variable
-- result: "b"
set i to 2
return item i of {"a", "b"}

-- case: the index is an expression
-- result: "b"
set i to 1
return item (i + 1) of {"a", "b"}

-- case: an item of an item
-- result: 2
return item 1 of item 2 of {{1}, {2}}

-- case: in instead of of
-- result: 9
return item 1 in {9}

-- case: a list in itself
-- error: A list can’t contain itself.
set l to {}
set end of l to l

-- case: a character of an item
-- result: "c"
return character 1 of item 2 of {"ab", "cd"}

