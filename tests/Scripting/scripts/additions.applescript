-- case: round
-- result: 3
return round 2.6

-- case: round to the even neighbour
-- result: {2, 4}
return {round 2.5, round 3.5}

-- case: round up
-- result: 3
return round 2.1 rounding up

-- case: round down
-- result: -3
return round -2.1 rounding down

-- case: round toward zero
-- result: -2
return round -2.9 rounding toward zero

-- case: round as taught in school
-- result: 3
return round 2.5 rounding as taught in school

-- case: random number
-- result: true
set n to random number from 1 to 3
return n ≥ 1 and n ≤ 3 and class of n is integer

-- case: a random number without limits
-- result: true
set n to random number
return n ≥ 0 and n ≤ 1

-- case: delay
-- result: "done"
delay 0
return "done"

-- case: scripting additions are known
-- result: 1
use scripting additions
return 1

-- case: the version is known
-- result: 1
use AppleScript version "2.4"
return 1

