# SPDX-License-Identifier: Apache-2.0
"""Values for the slots of a task: names, words and texts that the model must copy.

TrainingValues mixes real words with syllables, random letters and tokenizer pieces, so that the model learns to copy
instead of memorising names. HeldOutValues draws from what training rejects.
"""

import random
import re
import string
from typing import List, Sequence

from . import held_out, scripts
from . import vocabulary as words

_BANNED = held_out.banned_words()
# A value must not end in a word that the wording itself may add ("open Notes now", "make a folder called Home app").
_WORDING = frozenset(
    "now please again app application program folder file button key tab online here there today quickly up down off on out".split()
)


class TrainingValues:
    """Values without held-out words."""

    ANY_SCRIPT = 0.5  # share of the phrases with words beyond ASCII

    def __init__(self, pieces: Sequence[str] = ()) -> None:
        self._pieces = [piece for piece in pieces if piece.isalpha()]

    # -- words and phrases

    def _raw_word(self, rng: random.Random) -> str:
        kind = rng.random()
        if kind < 0.30:
            count = rng.choice((1, 2, 2, 3))
            word = "".join(self._syllable(rng) for _ in range(count))
        elif kind < 0.38:
            word = "".join(rng.choice(string.ascii_lowercase) for _ in range(rng.randint(2, 9)))
        elif kind < 0.64 and self._pieces:
            # at least two: a single one could be a word of the wording
            word = "".join(rng.choice(self._pieces) for _ in range(rng.randint(2, 4)))
        elif kind < 0.70:
            letters = list(rng.choice(words.WORDS))
            letters.insert(rng.randint(0, len(letters)), rng.choice(string.ascii_lowercase))
            word = "".join(letters)
        else:
            word = rng.choice(words.WORDS)
        return word[:16]

    @staticmethod
    def _syllable(rng: random.Random) -> str:
        return (
            rng.choice(words.SYLLABLE_STARTS)
            + rng.choice(words.SYLLABLE_VOWELS)
            + rng.choice(words.SYLLABLE_ENDS)
        )

    def plain_word(self, rng: random.Random) -> str:
        """A lower-case word that is neither held out nor a word of the wordings."""
        while True:
            word = self._raw_word(rng).lower()
            if word not in _BANNED and word not in _WORDING:
                return word

    def word(self, rng: random.Random, capital: bool) -> str:
        word = self.plain_word(rng)
        if capital:
            word = word[:1].upper() + word[1:]
        chance = rng.random()
        if chance < 0.03:
            word = word.upper()
        elif chance < 0.05:
            word += "".join(rng.choice("0123456789") for _ in range(rng.randint(1, 4)))
        elif chance < 0.07:
            word += rng.choice("-_+") + self.plain_word(rng)
        elif chance < 0.085:
            word += self.plain_word(rng).capitalize()
        return word

    def phrase(
        self, rng: random.Random, most: int, title: float, fewest: int = 1, linked: bool = True
    ) -> str:
        """`fewest` to `most` words, each capitalised with probability `title`."""
        count = rng.randint(fewest, most)
        style = rng.random()
        capitals = [style < title or (style < title + 0.1 and i == 0) for i in range(count)]
        parts = [
            self.word(rng, capital) if rng.random() < 0.94 else str(rng.randint(0, 2040))
            for capital in capitals
        ]
        if count > 2 and linked and rng.random() < 0.35:
            parts[rng.randint(1, count - 2)] = rng.choice(words.LINKING_WORDS + ["and"])
        if rng.random() < self.ANY_SCRIPT:
            return self._in_any_script(rng, parts)
        return " ".join(parts)

    def _in_any_script(self, rng: random.Random, parts: List[str]) -> str:
        """Adds accents, or puts some words in another script, within the limit of what can be copied."""
        while True:
            changed = self._accented(rng, parts) if rng.random() < 0.4 else self._in_other_script(rng, parts)
            while len(changed) > 1 and scripts.effort(" ".join(changed)) > scripts.COPIED:
                changed = changed[:-1]
            if not _BANNED.intersection(word.lower() for word in changed):
                return " ".join(changed)

    @staticmethod
    def _accented(rng: random.Random, parts: List[str]) -> List[str]:
        always = rng.randrange(len(parts))
        return [
            scripts.accented(rng, part) if index == always or rng.random() < 0.5 else part
            for index, part in enumerate(parts)
        ]

    @classmethod
    def _in_other_script(cls, rng: random.Random, parts: List[str]) -> List[str]:
        maker = scripts.word_maker(rng)
        share = rng.choice((0.3, 1.0, 1.0))
        parts = [maker(rng) if rng.random() < share else part for part in parts]
        if rng.random() < 0.2:
            parts = cls._accented(rng, parts)
        chance = rng.random()
        if chance < 0.15:
            parts.append(scripts.picture(rng))
        elif chance < 0.2:
            parts = [rng.choice(("«%s»", "„%s“", "¿%s", "%s、")) % parts[0]] + parts[1:]
        elif all(map(str.isascii, parts)):
            parts[rng.randrange(len(parts))] = maker(rng)
        return parts

    def talk(self, rng: random.Random, most: int) -> str:
        """A phrase as people write it, often with everyday words, also several in a row."""
        parts = self.phrase(rng, most, title=0.25).split(" ")
        share = rng.choice((0.0, 0.25, 0.6))
        for index in range(len(parts) - 1):  # the last word could be taken for one of the wording's
            if rng.random() < share:
                parts[index] = rng.choice(words.EVERYDAY_WORDS)
        if len(parts) > 2 and rng.random() < 0.2:
            # "under the bridge": the likeliest place of a "the" that belongs to the text and not to the wording
            parts[-3:-1] = [rng.choice(words.PLACE_WORDS), "the"]
        return " ".join(parts)

    # -- slots

    def application(self, rng: random.Random) -> str:
        if rng.random() < 0.35:
            name = rng.choice(words.APPLICATIONS)
            return name if rng.random() < 0.88 else name.lower()
        return self.phrase(rng, rng.choice((1, 2, 2, 3)), title=0.85, linked=False)

    def folder_name(self, rng: random.Random) -> str:
        return self._placeless(self.phrase(rng, rng.choice((1, 2, 2, 3, 4)), title=0.7))

    @staticmethod
    def _placeless(name: str) -> str:
        """Without words like "in", which could belong to the name or to the task."""
        return re.sub(r" (in|on|from|to|at) ", " of ", name)

    def query(self, rng: random.Random) -> str:
        lead = (
            rng.choice(("how to ", "the ", "what is ", "a ", "best ", "the ")) if rng.random() < 0.2 else ""
        )
        return lead + self.talk(rng, rng.choice((1, 2, 3, 4, 5)))

    def text(self, rng: random.Random) -> str:
        text = self.talk(rng, rng.choice((1, 2, 3, 4, 5, 7, 11, 16)))
        return text + (rng.choice("!?") if rng.random() < 0.08 else "")

    def too_long_text(self, rng: random.Random) -> str:
        """A text longer than the planner can copy reliably."""
        if rng.random() < 0.4:
            return self._long_talk(rng, rng.randint(21, 45))
        maker = scripts.word_maker(rng) if rng.random() < 0.8 else scripts.picture
        blank = rng.choice((" ", " ", ""))
        wanted = rng.randint(scripts.TOO_MUCH, 150)
        text = maker(rng)
        while scripts.effort(text) < wanted:
            text += blank + maker(rng)
        return text

    def _long_talk(self, rng: random.Random, count: int) -> str:
        parts: List[str] = []
        while len(parts) < count:
            parts += self.talk(rng, 9).split(" ")
        return " ".join(parts)

    def label(self, rng: random.Random) -> str:
        return (
            rng.choice(words.LABELS)
            if rng.random() < 0.35
            else self.phrase(rng, rng.choice((1, 2, 2, 3)), title=0.9)
        )

    def file_stem(self, rng: random.Random) -> str:
        stem = self._placeless(self.phrase(rng, rng.choice((1, 2, 2, 3)), title=0.3))
        if rng.random() < 0.35:
            stem = stem.replace(" ", rng.choice("-_"))
        if rng.random() < 0.2:
            stem += rng.choice((" ", "-", "_", "")) + str(rng.randint(1, 2040))
        elif rng.random() < 0.04:
            stem += " (%d)" % rng.randint(1, 9)
        return stem

    def host_name(self, rng: random.Random) -> str:
        name = re.sub(r"[^a-z0-9-]", "-", self.word(rng, False).lower())
        if rng.random() < 0.25:
            name += rng.choice(("", "-")) + self.plain_word(rng)
        host = name + "." + rng.choice(words.TOP_LEVEL_DOMAINS)
        chance = rng.random()
        return "www." + host if chance < 0.1 else self.plain_word(rng) + "." + host if chance < 0.17 else host

    def thing(self, rng: random.Random) -> str:
        """The object of an impossible request."""
        return self.phrase(rng, rng.choice((1, 2, 3)), title=0.4)

    # -- slots that are the same for training and evaluation

    def file_name(self, rng: random.Random, extension: str = "") -> str:
        return self.file_stem(rng) + "." + (extension or self.extension(rng))

    def extension(self, rng: random.Random) -> str:
        if rng.random() < 0.7:
            return rng.choice(words.EXTENSIONS)
        return "".join(rng.choice(string.ascii_lowercase) for _ in range(rng.randint(2, 4)))

    def host(self, rng: random.Random) -> str:
        path = "/" + self.plain_word(rng) if rng.random() < 0.12 else ""
        return self.host_name(rng) + path

    def window_title(self, rng: random.Random) -> str:
        if rng.random() < 0.4:
            return rng.choice(words.WINDOW_TITLES)
        title = self.phrase(rng, 3, title=0.6)
        return title if rng.random() < 0.92 else '"%s"' % title

    def home(self, rng: random.Random) -> str:
        user = self.plain_word(rng)
        return rng.choice(
            ("/home/" + user, "/home/" + user, "/root", "/Users/" + user, "/tmp/%s/home" % user)
        )

    def labels(self, rng: random.Random, count: int) -> List[str]:
        return [self.label(rng) for _ in range(count)]


class HeldOutValues(TrainingValues):
    """Held-out names, and words generated differently from the training words."""

    ANY_SCRIPT = 0.0

    def plain_word(self, rng: random.Random) -> str:
        return "".join(
            rng.choice("bcdfghjklmnpqrstvwxz")
            + rng.choice("aeiou")
            + (rng.choice("bcdfgklmnprstvxz") if rng.random() < 0.4 else "")
            for _ in range(rng.randint(2, 4))
        )

    def word(self, rng: random.Random, capital: bool) -> str:
        word = self.plain_word(rng)
        return word.capitalize() if capital else word

    def application(self, rng: random.Random) -> str:
        return _either(rng, held_out.APPLICATIONS, self.phrase(rng, 2, title=0.85, linked=False))

    def folder_name(self, rng: random.Random) -> str:
        return _either(rng, held_out.FOLDER_NAMES, self.phrase(rng, rng.choice((1, 1, 2, 3)), title=0.6))

    def query(self, rng: random.Random) -> str:
        return _either(rng, held_out.QUERIES, self.phrase(rng, 4, title=0.1))

    def text(self, rng: random.Random) -> str:
        return _either(rng, held_out.TEXTS, self.phrase(rng, 4, title=0.2))

    def label(self, rng: random.Random) -> str:
        return _either(rng, held_out.LABELS, self.phrase(rng, 2, title=0.9))

    def file_stem(self, rng: random.Random) -> str:
        return _either(rng, held_out.FILE_STEMS, self.phrase(rng, 2, title=0.2))

    def host_name(self, rng: random.Random) -> str:
        return _either(rng, held_out.HOSTS, self.plain_word(rng) + "." + rng.choice(words.TOP_LEVEL_DOMAINS))


class HeldOutScripts(HeldOutValues):
    """Names and texts beyond ASCII only: held-out ones, and words of random characters."""

    ANY_SCRIPT = 1.0

    def application(self, rng: random.Random) -> str:
        return self._short(rng, 2)

    def folder_name(self, rng: random.Random) -> str:
        return self._short(rng, 3)

    def query(self, rng: random.Random) -> str:
        return self._short(rng, 4)

    def text(self, rng: random.Random) -> str:
        return self._short(rng, 4)

    def label(self, rng: random.Random) -> str:
        return self._short(rng, 2)

    def file_stem(self, rng: random.Random) -> str:
        return self._short(rng, 2)

    def window_title(self, rng: random.Random) -> str:
        return self._short(rng, 3)

    def _short(self, rng: random.Random, most: int) -> str:
        return _either(rng, held_out.ANY_SCRIPT, self.phrase(rng, most, title=0.4))


def _either(rng: random.Random, real: Sequence[str], made_up: str) -> str:
    return rng.choice(real) if rng.random() < 0.6 else made_up
