-- case: a property
-- result: 41
return age of {name:"Ann", age:41}

-- case: a property called name
-- result: "Ann"
return name of {name:"Ann"}

-- case: a property with possessive
-- result: 3
set r to {size:3}
return r's size

-- case: set a property
-- result: {n:5}
set r to {n:1}
set n of r to 5
return r

-- case: set with possessive
-- result: 6
set r to {n:1}
set r's n to 6
return n of r

-- case: a nested property
-- result: 7
return b of a of {a:{b:7}}

-- case: merging
-- result: {a:1, b:2}
return {a:1} & {b:2}

-- case: the left one has precedence
-- result: {a:1, b:3}
return {a:1} & {a:2, b:3}

-- case: length
-- result: 2
return length of {a:1, b:2}

-- case: count
-- result: 1
return count {a:1}

-- case: as a list
-- result: {1, 2}
return {a:1, b:2} as list

-- case: equal in another order
-- result: true
return {a:1, b:2} = {b:2, a:1}

-- case: contains
-- result: true
return {a:1, b:2} contains {b:2}

-- case: a missing property
-- error: Can’t get c of {a:1}.
return c of {a:1}

-- case: shared by set
-- result: 2
set r to {a:1}
set s to r
set a of s to 2
return a of r

-- case: duplicated by copy
-- result: 1
set r to {a:1}
copy r to s
set a of s to 2
return a of r

-- case: a list in a record
-- result: 2
return item 2 of l of {l:{1, 2}}

-- case: class
-- result: record
return class of {a:1}

