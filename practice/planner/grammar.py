# SPDX-License-Identifier: Apache-2.0
"""A small template language for the many ways to say one thing.

    (a|b|c)   exactly one of the alternatives
    [a|b]     one of the alternatives, or nothing
    <name>    another rule of the same grammar
    {slot}    a value filled in by the caller; kept in the expansion

Blanks are collapsed after an expansion, so optional words may be surrounded by blanks.
"""

import random
import re
from typing import Dict, Iterator, List, Sequence, Tuple, Union

Node = Union[str, Tuple[str, list]]
_TOKEN = re.compile(r"[()\[\]|]|<[a-z_]+>|[^()\[\]|<]+")


class Grammar:
    """Named rules, each a list of templates.

    Expansion draws uniformly at every choice. A share of the expansions is plain: the first template with all first
    alternatives and nothing optional, the most common wording.
    """

    def __init__(
        self, rules: Dict[str, Sequence[str]], plain: float = 0.0, never_plain: Sequence[str] = ()
    ) -> None:
        self._plain = plain
        self._never_plain = frozenset(never_plain)
        self._rules = {
            name: [_parse(template) for template in templates] for name, templates in rules.items()
        }

    def expand(self, rule: str, rng: random.Random) -> str:
        """A random wording of the rule, slots unfilled."""
        if rule not in self._never_plain and rng.random() < self._plain:
            return tidy(self._plainly(self._rules[rule][0]))
        return tidy(self._expand(rng.choice(self._rules[rule]), rng))

    def patterns(self, rule: str) -> Iterator["re.Pattern[str]"]:
        """Regular expressions that match exactly the wordings of the rule (slots as literal text)."""
        for sequence in self._rules[rule]:
            yield re.compile(r"\s*" + self._pattern(sequence) + r"\s*", re.IGNORECASE)

    def _plainly(self, sequence: List[Node]) -> str:
        parts = []
        for node in sequence:
            if isinstance(node, str):
                parts.append(node)
            elif node[0] == "rule":
                parts.append(self._plainly(self._rules[node[1]][0]))
            elif node[0] == "one":
                parts.append(self._plainly(node[1][0]))
        return "".join(parts)

    def _expand(self, sequence: List[Node], rng: random.Random) -> str:
        parts = []
        for node in sequence:
            if isinstance(node, str):
                parts.append(node)
            elif node[0] == "rule":
                parts.append(self._expand(rng.choice(self._rules[node[1]]), rng))
            elif node[0] == "one" or rng.random() < 0.5:
                parts.append(self._expand(rng.choice(node[1]), rng))
        return "".join(parts)

    def _pattern(self, sequence: List[Node]) -> str:
        parts = []
        for node in sequence:
            if isinstance(node, str):
                parts.append(re.sub(r"(\\ )+", r"\\s*", re.escape(node)))
            elif node[0] == "rule":
                parts.append("(?:%s)" % "|".join(self._pattern(s) for s in self._rules[node[1]]))
            else:
                choice = "(?:%s)" % "|".join(self._pattern(s) for s in node[1])
                parts.append(choice if node[0] == "one" else choice + "?")
        return "".join(parts)


def tidy(text: str) -> str:
    """Collapses the blanks left by optional words, also before a comma or colon."""
    return re.sub(r" ([,:])", r"\1", re.sub(r" +", " ", text)).strip()


def _parse(template: str) -> List[Node]:
    tokens = _TOKEN.findall(template)
    sequence, rest = _parse_sequence(tokens, 0)
    if rest != len(tokens):
        raise ValueError("unbalanced template: " + template)
    return sequence


def _parse_sequence(tokens: List[str], at: int) -> Tuple[List[Node], int]:
    sequence: List[Node] = []
    while at < len(tokens) and tokens[at] not in ")]|":
        token = tokens[at]
        if token in "([":
            options, at = _parse_options(tokens, at + 1, ")" if token == "(" else "]")
            sequence.append(("one" if token == "(" else "maybe", options))
        else:
            sequence.append(("rule", token[1:-1]) if token[0] == "<" else token)
            at += 1
    return sequence, at


def _parse_options(tokens: List[str], at: int, closing: str) -> Tuple[List[List[Node]], int]:
    options = []
    while True:
        option, at = _parse_sequence(tokens, at)
        options.append(option)
        if at >= len(tokens):
            raise ValueError("missing " + closing)
        if tokens[at] == closing:
            return options, at + 1
        if tokens[at] != "|":
            raise ValueError("expected | or " + closing)
        at += 1
