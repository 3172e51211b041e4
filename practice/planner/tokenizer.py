# SPDX-License-Identifier: Apache-2.0
"""The planner's tokenizer: an exact twin of llama.cpp's with the exported vocabulary.

Type "llama" (SPM), with user-defined tokens for constant text: the lines of the system prompt, the openings of
actions, the fixed phrases of results. Everything else is single characters and pieces of letters only, so that a
value splits the same way in the task and in the JSON of an action, which makes copying learnable. Characters without
a token are spelt as UTF-8 bytes. Chat markers exist only as control tokens.
"""

import collections
import itertools
import json
import pathlib
import re
from typing import Dict, Iterable, Iterator, List, Sequence, Tuple

from . import scripts
from .conversations import GAVE_UP, TOO_LONG, Message
from .system_prompt import AFTER_OPENING, OPENINGS

UNKNOWN, CONTROL, USER_DEFINED, BYTE, NORMAL = 2, 3, 4, 6, 1  # llama.cpp's token types
MERGES_FILE = pathlib.Path(__file__).with_name("merges.json")

# The application drops longer pieces of a reply.
MOST_BYTES = 64


def _in_equal_parts(text: str) -> List[str]:
    """Splits ASCII text into as few parts as the maximum token length allows, of about equal length."""
    count = -(-len(text) // MOST_BYTES)
    return [text[len(text) * i // count : len(text) * (i + 1) // count] for i in range(count)]


# The system prompt in tokens that occur nowhere else. They are longer than any token found inside them, so the model
# does not see the prompt's examples, such as "User: Open Brave…", which would distract it.
SYSTEM_PIECES = OPENINGS + _in_equal_parts(AFTER_OPENING)

SKELETON = [
    '{"action":"open_app","app":"',
    '{"action":"quit_app","app":"',
    '{"action":"open_url","url":"https://',
    '","app":"',
    '{"action":"web_search","query":"',
    '{"action":"new_tab"}',
    '{"action":"type_text","text":"',
    '{"action":"press_key","key":"',
    '","modifiers":"',
    '{"action":"click","label":"',
    '{"action":"create_folder","name":"',
    '","in":"',
    '{"action":"screenshot","save_to":"',
    '{"action":"find_files","folder":"',
    '","extension":"',
    '{"action":"open_path","path":"',
    '{"action":"trash","path":"',
    '{"action":"list_windows"}',
    '{"action":"read_ui"}',
    '{"action":"applescript","script":"',
    '{"action":"done","message":"',
    '"}',
    "\nState: Frontmost app: ",
    ". Windows: ",
    "User: ",
    "Result: ",
    "Error: ",
    " — ",
    "; ",
    " | ",
    " is now frontmost.",
    " is not running.",
    " to quit (it may be waiting on a save prompt).",
    "Clicked “",
    "Created folder at ",
    "Saved screenshot to ",
    "/Screenshot 20",
    " file(s), newest first: ",
    ". Revealed “",
    "” in Finder.",
    " to the Trash.",
    " the default browser.",
    "Couldn't find an app called “",
    "Couldn't find a control labelled “",
    "” didn't respond to a click.",
    "” isn't a valid address.",
    "No readable controls found.",
    "Nothing exists at ",
    "No matching files in ",
    "There are no matching files in ",
    "Couldn't read ",
    "Unsupported key “",
    "The newest file in ",
    "Open windows: ",
    "Created the folder ",
    "Saved a screenshot to ",
    "Searched for ",
    "https://",
    "www.",
    "www.google.com",
    "Accessibility permission is required. Enable it in ",
    "Accessibility permission is required. Enable Orvane in ",
    "Accessibility permission is required to type. Enable it in ",
    "System Settings → Privacy & Security → Accessibility",
    ", then try again.",
    "The screenshot failed. ",
    "Screen Recording permission may be required.",
    GAVE_UP,
    "Sorry, I can't do that. ",
    "I can open apps and websites, search the web, ",
    "and manage windows, files and folders.",
    TOO_LONG,
    "The open windows are listed above.",
    "system\n",
    "user\n",
    "assistant\n",
]
_CHARACTERS = [chr(code) for code in range(33, 127)] + list("▁“”—’…–→" + scripts.CHARACTERS)
_LETTERS_OR_ONE = re.compile(r"[A-Za-z]+|[^A-Za-z]", re.DOTALL)

# Loss classes of tokens.
IGNORED, REPORTED, REPLY, VALUE_EDGE = 0, 1, 2, 3


class Tokenizer:
    """Text to token ids and back."""

    def __init__(self, merges: Sequence[str]) -> None:
        self.merges = list(merges)
        self.tokens: List[str] = []
        self.types: List[int] = []
        self.scores: List[float] = []
        self.number: Dict[str, int] = {}
        self._add("<unk>", UNKNOWN)
        self.start = self._add("<|im_start|>", CONTROL)
        self.end = self._add("<|im_end|>", CONTROL)
        self.first_byte = len(self.tokens)
        for value in range(256):
            self._add("<0x%02X>" % value, BYTE)
        self.newline = self.first_byte + 10
        for text in SYSTEM_PIECES + SKELETON:
            self._add(text, USER_DEFINED)
        for character in _CHARACTERS:
            self._add(character, NORMAL, -10000.0)
        for rank, piece in enumerate(self.merges):
            self._add(piece, NORMAL, -1.0 - rank)
        self.blank = self.number["▁"]
        special = [
            text for text, kind in zip(self.tokens, self.types) if kind in (UNKNOWN, CONTROL, USER_DEFINED)
        ]
        self._special = sorted(special, key=lambda text: -len(text.encode()))
        self._cache: Dict[str, List[int]] = {}

    def _add(self, text: str, kind: int, score: float = 0.0) -> int:
        if text in self.number:
            raise ValueError("token given twice: " + text)
        if len(text.encode()) > MOST_BYTES:
            raise ValueError("no reply could hold this token: " + text)
        self.number[text] = len(self.tokens)
        self.tokens.append(text)
        self.types.append(kind)
        self.scores.append(score)
        return self.number[text]

    def __len__(self) -> int:
        return len(self.tokens)

    def encode(self, text: str) -> List[int]:
        """Special tokens in the whole text, longest first; then the pieces of the rest."""
        fragments: List = [text]
        for special in self._special:
            if special in text:
                fragments = self._split(fragments, special)
        numbers: List[int] = []
        for fragment in fragments:
            if isinstance(fragment, int):
                numbers.append(fragment)
            else:
                for run in _LETTERS_OR_ONE.findall(fragment.replace(" ", "▁")):
                    numbers += self._merge(run)
        return numbers

    def _split(self, fragments: List, special: str) -> List:
        result: List = []
        for fragment in fragments:
            if isinstance(fragment, int):
                result.append(fragment)
                continue
            for index, part in enumerate(fragment.split(special)):
                if index:
                    result.append(self.number[special])
                if part:
                    result.append(part)
        return result

    def _merge(self, run: str) -> List[int]:
        """Joins the best-scored neighbouring pair, leftmost first, until no pair is a piece."""
        known = self._cache.get(run)
        if known is not None:
            return known
        symbols = list(run)
        while True:
            pairs = [self.number.get(symbols[i] + symbols[i + 1]) for i in range(len(symbols) - 1)]
            candidates = [
                (self.scores[n], -i) for i, n in enumerate(pairs) if n is not None and self.types[n] == NORMAL
            ]
            if not candidates:
                break
            at = -max(candidates)[1]
            symbols[at : at + 2] = [symbols[at] + symbols[at + 1]]
        numbers: List[int] = []
        for symbol in symbols:
            if symbol in self.number:
                numbers.append(self.number[symbol])
            else:
                numbers += [self.first_byte + byte for byte in symbol.encode()]
        if len(self._cache) < 200_000:
            self._cache[run] = numbers
        return numbers

    # -- conversations

    def system(self, text: str) -> List[int]:
        """The tokens of the system message, the constant start of every prompt."""
        return [self.start] + self.encode("system\n" + text) + [self.end, self.newline]

    def conversation(self, messages: Iterable[Message]) -> Tuple[List[int], List[int]]:
        """The tokens after the system message, and the loss class of each."""
        numbers: List[int] = []
        classes: List[int] = []
        for index, (role, text) in enumerate(messages):
            head = [self.start] + self.encode(role + "\n")
            body = self.encode(text)
            numbers += head + body + [self.end, self.newline]
            classes += [IGNORED] * len(head) + self._classes(role, index, body)
        return numbers, classes

    def _classes(self, role: str, index: int, body: List[int]) -> List[int]:
        if role != "assistant":
            return [REPORTED if index else IGNORED] * len(body) + [IGNORED, IGNORED]
        fixed = [self.types[number] == USER_DEFINED for number in body]
        # The start of a value, and after each of its words whether it ends or continues: most mistakes happen here.
        # Both answers weigh the same, or values would come out too short or too long.
        edges = [i == 0 or fixed[i - 1] or fixed[i] or body[i] == self.blank for i in range(len(body))]
        return [VALUE_EDGE if edge else REPLY for edge in edges] + [REPLY, IGNORED]


def learn_merges(counts: Dict[str, int], wanted: int) -> List[str]:
    """Byte-pair encoding of whole words of letters; the pieces in the order found."""
    entries = [(list(word), count) for word, count in sorted(counts.items()) if len(word) > 1]
    return list(itertools.islice(_merges(entries), wanted))


def join_words(counts: Dict[str, int], tokenizer: "Tokenizer") -> List[str]:
    """The further pieces that make each of the words one token."""
    entries = [
        ([tokenizer.tokens[number] for number in tokenizer.encode(word)], count)
        for word, count in sorted(counts.items())
    ]
    return [piece for piece in _merges(entries) if piece not in tokenizer.number]


def _merges(entries: List[Tuple[List[str], int]]) -> Iterator[str]:
    """Repeatedly joins the most frequent neighbouring pair; yields each new piece once."""
    found = set()
    while True:
        pairs: collections.Counter = collections.Counter()
        for symbols, count in entries:
            for pair in zip(symbols, symbols[1:]):
                pairs[pair] += count
        if not pairs:
            return
        best = max(pairs, key=lambda pair: (pairs[pair], pair))
        piece = "".join(best)
        if piece not in found:  # two different pairs can form the same piece
            found.add(piece)
            yield piece
        entries = [(_joined(symbols, best, piece), count) for symbols, count in entries]


def _joined(symbols: List[str], pair: Tuple[str, str], piece: str) -> List[str]:
    if pair[0] not in symbols:
        return symbols
    result: List[str] = []
    at = 0
    while at < len(symbols):
        if tuple(symbols[at : at + 2]) == pair:
            result.append(piece)
            at += 2
        else:
            result.append(symbols[at])
            at += 1
    return result


def load() -> Tokenizer:
    """The tokenizer with the merges stored beside this module."""
    return Tokenizer(json.loads(MERGES_FILE.read_text()))
