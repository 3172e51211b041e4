-- case: addition
-- result: 5
return 2 + 3

-- case: subtraction
-- result: -1
return 2 - 3

-- case: multiplication
-- result: 24
return 4 * 6

-- case: a quotient is a real
-- result: 3.0
return 6 / 2

-- case: a quotient with the division sign
-- result: 3.5
return 7 ÷ 2

-- case: a product with the times sign
-- result: 9
return 3 × 3

-- case: a whole quotient
-- result: 3
return 17 div 5

-- case: a negative whole quotient
-- result: -3
return -17 div 5

-- case: a remainder
-- result: 2
return 17 mod 5

-- case: a remainder has the sign of the dividend
-- result: -2
return -17 mod 5

-- case: a remainder of reals
-- result: 1.5
return 5.5 mod 2

-- case: a power is a real
-- result: 1024.0
return 2 ^ 10

-- case: powers associate to the right
-- result: 512.0
return 2 ^ 3 ^ 2

-- case: a sign binds before a power
-- result: 4.0
return -2 ^ 2

-- case: a product before a sum
-- result: 14
return 2 + 3 * 4

-- case: parentheses first
-- result: 20
return (2 + 3) * 4

-- case: differences from left to right
-- result: 5
return 10 - 3 - 2

-- case: integer and real
-- result: 3.5
return 1 + 2.5

-- case: a sum of reals stays real
-- result: 3.0
return 1.5 + 1.5

-- case: a text becomes a number
-- result: 12
return "6" * 2

-- case: a text that is no number
-- error: Can’t make "six" into type number.
return "six" * 2

-- case: division by zero
-- error: Can’t divide 1.0 by zero.
return 1 / 0

-- case: whole division by zero
-- error: Can’t divide 1.0 by zero.
return 1 div 0

-- case: double negation
-- result: 3
return - -3

-- case: a sum beyond the integers
-- result: 5.36870912E+8
return 536870911 + 1

-- case: a sign before a property
-- result: -3
return -(length of "abc")

-- case: length of binds before plus
-- result: 4
return length of "abc" + 1

-- case: an infinite power
-- error: The result of a calculation is too large.
return 10 ^ 400

