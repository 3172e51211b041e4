# SPDX-License-Identifier: Apache-2.0
"""Words of any script, so that the planner learns to copy names and texts in all of them.

Letters of common alphabets are tokens; every other character is spelt as UTF-8 bytes.
"""

import random
from typing import Callable, Dict, List, Sequence, Tuple

_ACCENTS: Dict[str, str] = {
    "a": "ààáâãäääåāăąæ",
    "c": "çćč",
    "d": "ďđð",
    "e": "èéééêëēėęě",
    "g": "ğ",
    "i": "ìíîïīį",
    "l": "łľ",
    "n": "ññńň",
    "o": "òóôõöööøőœ",
    "r": "ŕř",
    "s": "śšşșßß",
    "t": "ťţțþ",
    "u": "ùúûüüüūůűų",
    "y": "ýÿ",
    "z": "źżž",
}
GREEK = "αβγδεζηθικλμνξοπρστυφχψωάέήίόύώϊς"
CYRILLIC = "абвгдежзийклмнопрстуфхцчшщъыьэюяёіїєґўђћј"
HEBREW = "אבגדהוזחטיכלמנסעפצקרשתךםןףץ"
ARABIC = "ابتثجحخدذرزسشصضطظعغفقكلمنهويءآأإؤئةى"
HIRAGANA = "".join(map(chr, range(0x3042, 0x3094)))
KATAKANA = "".join(map(chr, range(0x30A2, 0x30F5))) + "ー"
SYMBOLS = "«»„‘‚¿¡€£¥°·•№™©®½×÷§、。・"


def _both_cases(letters: str) -> str:
    return letters + "".join(letter.upper() for letter in letters if len(letter.upper()) == 1)


LATIN = _both_cases("".join(_ACCENTS.values()))
# In a fixed order, without duplicates.
CHARACTERS = "".join(
    dict.fromkeys(LATIN + _both_cases(GREEK) + _both_cases(CYRILLIC) + HEBREW + ARABIC + HIRAGANA + KATAKANA + SYMBOLS)
)
_OWN = frozenset(CHARACTERS)

# Characters without a token, by block: first and last code point, minimum and maximum word length.
_Block = Tuple[int, int, int, int]
_HAN: _Block = (0x4E00, 0x9FFF, 1, 5)
_HANGUL: _Block = (0xAC00, 0xD7A3, 1, 4)
_VIETNAMESE: _Block = (0x1EA0, 0x1EF9, 1, 2)
_OTHERS: Sequence[_Block] = (
    (0x0905, 0x0939, 2, 5),  # Devanagari
    (0x0E01, 0x0E2E, 2, 6),  # Thai
    (0x10D0, 0x10F0, 2, 6),  # Georgian
    (0x0561, 0x0586, 2, 8),  # Armenian
    (0x0995, 0x09A8, 2, 4),  # Bengali
    (0x0B95, 0x0BB9, 2, 4),  # Tamil
)
_PICTURES: Sequence[Tuple[int, int]] = (
    (0x1F300, 0x1F5FF),
    (0x1F600, 0x1F64F),
    (0x1F600, 0x1F64F),
    (0x1F680, 0x1F6FF),
    (0x1F900, 0x1F9FF),
    (0x2600, 0x26FF),
)
_HANDS = "👍👋👏🙌🙏💪👌✋👩👨"
_SKIN_TONES = "🏻🏼🏽🏾🏿"

# A value up to the first limit is copied reliably; above the second one the planner declines.
COPIED = 28
TOO_MUCH = 36


def effort(text: str) -> int:
    """How many tokens the characters beyond ASCII take."""
    return sum(
        (1 if character in _OWN else len(character.encode())) for character in text if not character.isascii()
    )


def accented(rng: random.Random, word: str) -> str:
    """The Latin word with one to three letters accented; the first letter only if its accented form has a capital."""
    places = [i for i, letter in enumerate(word) if letter.lower() in _ACCENTS]
    letters = list(word)
    for place in rng.sample(places, min(len(places), rng.choice((1, 1, 1, 2, 2, 3)))):
        other = rng.choice(_ACCENTS[letters[place].lower()])
        if place == 0 and len(other.upper()) > 1:
            continue
        letters[place] = other.upper() if letters[place].isupper() else other
    return "".join(letters)


def _spelt(rng: random.Random, letters: str, most: int = 9, capitals: bool = False) -> str:
    word = "".join(rng.choice(letters) for _ in range(rng.randint(2, most)))
    return word[0].upper() + word[1:] if capitals and rng.random() < 0.4 else word


def _of_block(rng: random.Random, block: _Block) -> str:
    first, last, fewest, most = block
    return "".join(chr(rng.randint(first, last)) for _ in range(rng.randint(fewest, most)))


def picture(rng: random.Random) -> str:
    chance = rng.random()
    if chance < 0.2:
        return rng.choice(_HANDS) + rng.choice(_SKIN_TONES)
    if chance < 0.27:  # a flag
        return "".join(chr(0x1F1E6 + rng.randrange(26)) for _ in range(2))
    if chance < 0.33:
        return rng.choice("👩👨🧑") + "\u200d" + rng.choice("🚀💻🔬🎨🍳🏫")
    if chance < 0.40:
        return rng.choice("❤☀✈☎☕") + "\ufe0f"
    first, last = rng.choice(_PICTURES)
    return chr(rng.randint(first, last))


def _vietnamese(rng: random.Random) -> str:
    return rng.choice("bcdhklmntv") + _of_block(rng, _VIETNAMESE) + rng.choice(("", "n", "ng", "t", "m"))


_Maker = Callable[[random.Random], str]
_MAKERS: List[Tuple[int, _Maker]] = [
    (14, lambda rng: _spelt(rng, CYRILLIC, capitals=True)),
    (8, lambda rng: _spelt(rng, GREEK, capitals=True)),
    (4, lambda rng: _spelt(rng, HEBREW, 6)),
    (4, lambda rng: _spelt(rng, ARABIC, 7)),
    (4, lambda rng: _spelt(rng, HIRAGANA, 6)),
    (4, lambda rng: _spelt(rng, KATAKANA, 6)),
    (16, lambda rng: _of_block(rng, _HAN)),
    (6, lambda rng: _of_block(rng, _HANGUL)),
    (4, _vietnamese),
    (8, lambda rng: _of_block(rng, rng.choice(_OTHERS))),
    (8, picture),
]


def word_maker(rng: random.Random) -> _Maker:
    """A generator for words of one script, drawn by weight."""
    return rng.choices([maker for _, maker in _MAKERS], [weight for weight, _ in _MAKERS])[0]
