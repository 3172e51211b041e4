-- case: concatenation
-- result: "ab"
return "a" & "b"

-- case: a number becomes text
-- result: "n = 5"
return "n = " & 5

-- case: a real becomes text
-- result: "x1.5"
return "x" & 1.5

-- case: a boolean becomes text
-- result: "is true"
return "is " & true

-- case: length counts characters
-- result: 5
return length of "naïve"

-- case: count
-- result: 5
return count "hello"

-- case: count of
-- result: 5
return count of "hello"

-- case: number of characters
-- result: 3
return count characters of "hey"

-- case: a character
-- result: "e"
return character 2 of "hello"

-- case: the last character
-- result: "o"
return last character of "hello"

-- case: a character from the end
-- result: "l"
return character -2 of "hello"

-- case: the first character
-- result: "h"
return first character of "hello"

-- case: 2nd
-- result: "e"
return 2nd character of "hello"

-- case: characters
-- result: {"a", "b", "c"}
return characters of "abc"

-- case: characters in a range
-- result: {"b", "c"}
return characters 2 thru 3 of "abcd"

-- case: text in a range
-- result: "bcd"
return text 2 thru 4 of "abcdef"

-- case: text from the end
-- result: "def"
return text -3 thru -1 of "abcdef"

-- case: text up to the end
-- result: "cdef"
return text 3 thru -1 of "abcdef"

-- case: text from word to word
-- result: "two three"
return text from word 2 to word 3 of "one two three four"

-- case: a word
-- result: "quick"
return word 2 of "the quick fox"

-- case: words
-- result: {"one", "two", "three"}
return words of "one, two; three"

-- case: the number of words
-- result: 4
return count words of "a b c d"

-- case: the last word
-- result: "two"
return last word of "one two"

-- case: a paragraph
-- result: "two"
return paragraph 2 of "one
two
three"

-- case: every paragraph
-- result: {"a", "b", "c"}
return every paragraph of "a\rb\r\nc"

-- case: a word of a paragraph
-- result: "c"
return word 1 of paragraph 2 of "a b\nc d"

-- case: the middle character
-- result: "b"
return middle character of "abc"

-- case: some character
-- result: true
return "abc" contains some character of "abc"

-- case: reverse of a list of characters
-- result: "cba"
return (reverse of characters of "abc") as text

-- case: text items
-- result: {"a", "b", "c"}
set AppleScript's text item delimiters to ","
return text items of "a,b,c"

-- case: joining with delimiters
-- result: "a-b-3"
set AppleScript's text item delimiters to "-"
return {"a", "b", 3} as text

-- case: joining without delimiters
-- result: "ab"
return {"a", "b"} as text

-- case: several delimiters
-- result: {"a", "b", "c"}
set AppleScript's text item delimiters to {",", ";"}
return text items of "a,b;c"

-- case: text item of
-- result: "file"
set AppleScript's text item delimiters to "/"
return last text item of "home/user/file"

-- case: replacing text
-- result: "a dog and a dog"
set AppleScript's text item delimiters to "cat"
set parts to text items of "a cat and a cat"
set AppleScript's text item delimiters to "dog"
return parts as text

-- case: restoring the delimiters
-- result: {{"1", "2"}, "12"}
set old to AppleScript's text item delimiters
set AppleScript's text item delimiters to ","
set x to text items of "1,2"
set AppleScript's text item delimiters to old
return {x, {1, 2} as text}

-- case: delimiters without AppleScript
-- result: "1+2"
set text item delimiters to "+"
return {1, 2} as string

-- case: a text item range
-- result: {"a", "b"}
set AppleScript's text item delimiters to "."
return text items 1 thru 2 of "a.b.c"

-- case: offset of
-- result: 4
return offset of "lo" in "hello"

-- case: offset of what is missing
-- result: 0
return offset of "x" in "hello"

-- case: offset in brackets
-- result: 3
return (offset of "b" in "abc") + 1

-- case: quoted form
-- result: "'it'\\''s'"
return quoted form of "it's"

-- case: id of a character
-- result: 65
return id of "A"

-- case: character id
-- result: "☃"
return character id 9731

-- case: string id
-- result: "Hi"
return string id {72, 105}

-- case: ASCII character
-- result: "A"
return ASCII character 65

-- case: ASCII number
-- result: 97
return ASCII number "a"

-- case: a character that is missing
-- error: Can’t get character 9 of "abc".
return character 9 of "abc"

-- case: possessive
-- result: 3
set s to "abc"
return s's length

-- case: chained possessives
-- result: 3
set s to "one two"
return s's word 2's length

