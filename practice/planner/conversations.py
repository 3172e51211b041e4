# SPDX-License-Identifier: Apache-2.0
"""Whole conversations: a task in the user's words, and the plan, reply by reply.

A step has wordings and a course: the model's replies, the desktop's answers, and the closing sentence of a run that
ends with it. Families combine one to three steps.
"""

import json
import random
from dataclasses import dataclass, field
from typing import Callable, Dict, List, Optional, Protocol, Tuple

from . import desktop as screen
from . import scripts
from . import vocabulary as words
from .desktop import Desktop, opened_page
from .phrasings import PHRASINGS
from .values import TrainingValues

Message = Tuple[str, str]  # role, text
OUT_OF_REACH = "Sorry, I can't do that. I can open apps and websites, search the web, and manage windows, files and folders."
TOO_LONG = "Sorry, I can't copy a text like that without mistakes."
GAVE_UP = "I couldn't finish that. "
ERROR_RATE = 0.07


def action(kind: str, /, **arguments: str) -> str:
    """One reply of the model, without empty arguments. A trailing underscore is removed from keys (in_ → in)."""
    fields = {key.rstrip("_"): value for key, value in arguments.items() if value}
    return json.dumps({"action": kind, **fields}, ensure_ascii=False, separators=(",", ":"))


class Wordings(Protocol):
    """The source of a step's wording: the grammar in training, a list in evaluation."""

    def expand(self, rule: str, rng: random.Random) -> str:
        ...


@dataclass
class Setting:
    """The inputs of a conversation: randomness, values, wordings and the desktop."""

    rng: random.Random
    values: TrainingValues
    wordings: Wordings
    error_rate: float = ERROR_RATE
    calm: bool = False
    messages: List[Message] = field(default_factory=list)

    def __post_init__(self) -> None:
        self.desktop = Desktop(self.rng, self.values, self.calm)

    def worded(self, rule: str, **slots: str) -> str:
        text = self.wordings.expand(rule, self.rng)
        for name, value in slots.items():
            text = text.replace("{%s}" % name, value)
        return text

    def chance(self, probability: float) -> bool:
        return self.rng.random() < probability

    def quoted(self, value: str, probability: float) -> str:
        if not self.chance(probability):
            return value
        return self.rng.choice(('"%s"', '"%s"', "“%s”", "'%s'")) % value

    # -- the course of a conversation

    def ask(self, task: str) -> None:
        self.messages.append(("user", "User: %s\nState: %s" % (task, self.desktop.state())))

    def act(self, reply: str, result: str) -> None:
        self.messages.append(("assistant", reply))
        self.messages.append(("user", "Result: %s\nState: %s" % (result, self.desktop.state())))

    def fail(self, reply: str, error: str) -> None:
        """The desktop reports an error, and the run ends with an explanation."""
        self.messages.append(("assistant", reply))
        self.messages.append(("user", "Error: %s\nState: %s" % (error, self.desktop.state())))
        self.finish(GAVE_UP + error)

    def finish(self, message: str) -> None:
        self.messages.append(("assistant", action("done", message=message)))

    def goes_wrong(self) -> bool:
        return self.chance(self.error_rate)

    def error(self, *own: str) -> str:
        return self.rng.choice(own) if own and self.chance(0.75) else self.desktop.any_error()


# A step's course; returns the closing sentence, or None if the run has ended with an error.
Course = Callable[[Setting], Optional[str]]


@dataclass
class Step:
    text: str
    play: Course
    open_ended: bool = False  # ends in free text, so nothing may follow it
    opens_browser: bool = False
    needs_browser: bool = False  # happens in a browser that the wording does not name
    compound: bool = (
        False  # several clauses or a question; cannot be joined with others
    )


# ---------------------------------------------------------------------------------------------- applications


def _plan_name(said: str) -> str:
    """The application name used in the plan: a browser's own name, otherwise what the user said."""
    for alias, name in words.BROWSERS.items():
        if said.lower() == alias.lower():
            return name
    return said


def _opening(said: str) -> Course:
    name = _plan_name(said)

    def play(at: Setting) -> Optional[str]:
        reply = action("open_app", app=name)
        if at.goes_wrong():
            return at.fail(reply, at.error("Couldn't find an app called “%s”." % name))
        shown = at.desktop.displayed(name)
        at.desktop.bring_forward(shown)
        at.act(reply, shown + " is now frontmost.")
        return name + " is open."

    return play


def open_app(at: Setting) -> Step:
    said = _said_browser(at) if at.chance(0.08) else at.values.application(at.rng)
    return Step(at.worded("open_app", app=said), _opening(said), opens_browser=_plan_name(said) in words.BROWSERS.values())


def quit_app(at: Setting) -> Step:
    said = at.values.application(at.rng)
    if at.chance(0.3) and at.desktop.windows:
        said = at.rng.choice(at.desktop.windows)[0]
    return Step(at.worded("quit_app", app=said), _quitting(said))


def _quitting(said: str) -> Course:
    name = _plan_name(said)

    def play(at: Setting) -> Optional[str]:
        reply = action("quit_app", app=name)
        if at.chance(at.error_rate / 3):
            return at.fail(reply, at.error())
        outcome = at.rng.choice(("quit", "quit", "quit", "absent", "waiting"))
        if outcome == "quit":
            at.desktop.close(name)
            at.act(reply, name + " quit.")
            return name + " quit."
        if outcome == "absent":
            at.act(reply, name + " is not running.")
            return name + " is not running."
        at.act(reply, "Asked %s to quit (it may be waiting on a save prompt)." % name)
        return "Asked %s to quit." % name

    return play


# ---------------------------------------------------------------------------------------------- the web


def _said_browser(at: Setting) -> str:
    said = at.rng.choice(list(words.BROWSERS))
    return said if at.chance(0.85) else said.lower()


def _said_site(at: Setting) -> Tuple[str, str]:
    """What the user says, and the address meant."""
    if at.chance(0.22):
        said = at.rng.choice(list(words.SITES))
        return (said if at.chance(0.65) else said.lower()), words.SITES[said]
    host = at.values.host(at.rng)
    return (host if at.chance(0.9) else "https://" + host), host


def open_url(at: Setting) -> Step:
    said, address = _said_site(at)
    browser = _said_browser(at) if at.chance(0.55) else ""
    text = at.worded("visit_in", site=said, browser=browser) if browser else at.worded("visit", site=said)
    name = _plan_name(browser)

    def play(at: Setting) -> Optional[str]:
        reply = action("open_url", url="https://" + address, app=name)
        if at.goes_wrong():
            own = ["“https://%s” isn't a valid address." % address]
            if name:
                own.append("Couldn't find an app called “%s”." % name)
            return at.fail(reply, at.error(*own))
        result = _show_page(at, address.split("/")[0], name)
        at.act(reply, result)
        return result

    compound = " and " in text or "," in text or " then " in text
    return Step(text, play, compound=compound, needs_browser=not browser)


def _show_page(at: Setting, host: str, browser: str) -> str:
    """Opens the page and returns the result line."""
    if not browser:
        if at.chance(0.7):
            at.desktop.bring_forward(at.desktop.displayed("Safari"))
        return opened_page(host, None)
    shown = at.desktop.displayed(browser)
    at.desktop.bring_forward(shown)
    return opened_page(host, shown)


def web_search(at: Setting) -> Step:
    query = at.values.query(at.rng)
    said = at.quoted(query, 0.12)
    browser = _said_browser(at) if at.chance(0.5) else ""
    text = at.worded("search_in", query=said, browser=browser) if browser else at.worded("search", query=said)
    name = _plan_name(browser)

    def play(at: Setting) -> Optional[str]:
        reply = action("web_search", query=query, app=name)
        if at.goes_wrong():
            return at.fail(reply, at.error(*["Couldn't find an app called “%s”." % name] if name else []))
        at.act(
            reply, _show_page(at, at.rng.choice(("www.google.com", "www.google.com", "duckduckgo.com")), name)
        )
        return "Searched for %s." % query

    joined = text.split(said)[0]
    compound = " and " in joined or "," in joined or " then " in joined
    open_ended = text.endswith(said) and said == query
    return Step(text, play, open_ended=open_ended, compound=compound, needs_browser=not browser)


def new_tab(at: Setting) -> Step:
    def play(at: Setting) -> Optional[str]:
        reply = action("new_tab")
        if at.goes_wrong():
            return at.fail(reply, at.error(screen.PERMISSION_KEY))
        at.act(reply, "Opened a new tab.")
        return "Opened a new tab."

    return Step(at.worded("new_tab"), play)


# ---------------------------------------------------------------------------------------------- keyboard, clicks


def _typing(text: str) -> Course:
    def play(at: Setting) -> Optional[str]:
        reply = action("type_text", text=text)
        if at.goes_wrong():
            return at.fail(reply, at.error(screen.PERMISSION_TYPE))
        at.act(reply, "Typed text.")
        return "Typed %s." % text

    return play


def type_text(at: Setting) -> Step:
    text = at.values.text(at.rng)
    said = at.quoted(text, 0.35)
    wording = at.worded(
        "type_text" if said == text else at.rng.choice(("type_text", "type_quoted")), text=said
    )
    return Step(wording, _typing(text), open_ended=wording.endswith(said))


def _key(at: Setting, combined: bool) -> Tuple[str, str]:
    """How a key is said, and its name in the plan."""
    chance = at.rng.random()
    if combined and chance < 0.62:
        key = at.rng.choice(words.LETTER_KEYS)
        return (key if at.chance(0.5) else key.upper()), key
    if combined and chance < 0.70:
        key = at.rng.choice(words.PUNCTUATION_KEYS)
        return key, key
    if chance > 0.95:
        key = at.rng.choice(words.UNSUPPORTED_KEYS)
        return (key if at.chance(0.3) else key.capitalize()), key
    if not combined and chance < 0.3:
        key = at.rng.choice(words.LETTER_KEYS)
        return (key if at.chance(0.5) else key.upper()), key
    said = at.rng.choice(list(words.NAMED_KEYS))
    key = words.NAMED_KEYS[said]
    return (said if at.chance(0.5) else said.capitalize()), key


def press_key(at: Setting) -> Step:
    count = at.rng.choices((0, 1, 2, 3), (34, 32, 22, 12))[0]
    modifiers = at.rng.sample(list(words.MODIFIERS), count)
    said_key, key = _key(at, bool(modifiers))
    if modifiers:
        style = at.rng.choice((str.lower, str.lower, str.capitalize))
        said = [style(at.rng.choice(words.MODIFIERS[name])) for name in modifiers]
        text = at.worded(
            "press_combo", combo=_combination(at, said, said_key), key=said_key, modifiers=_listed(at, said)
        )
    else:
        text = at.worded("press_key", key=said_key)

    def play(at: Setting) -> Optional[str]:
        reply = action("press_key", key=key, modifiers=",".join(modifiers))
        if key in words.UNSUPPORTED_KEYS:
            return at.fail(reply, "Unsupported key “%s”." % key)
        if at.goes_wrong():
            return at.fail(reply, at.error(screen.PERMISSION_KEY))
        at.act(reply, "Pressed %s." % key)
        return "Pressed %s." % key

    return Step(text, play, open_ended=not key.isalnum(), compound=text.startswith("hold"))


def _combination(at: Setting, modifiers: List[str], key: str) -> str:
    separator = at.rng.choice(("+", "+", " ", " ", "-", " + ", " and "))
    if separator == " and ":
        return _listed(at, modifiers) + " and " + key
    if separator == "-" and not key[0].isalnum():
        separator = "+"
    return separator.join(modifiers + [key])


def _listed(at: Setting, names: List[str]) -> str:
    if len(names) == 1:
        return names[0]
    return at.rng.choice((", ", " and ", "+", " ")).join(names)


def click(at: Setting) -> Step:
    label = at.values.label(at.rng)
    said = at.quoted(label, 0.3)

    def play(at: Setting) -> Optional[str]:
        reply = action("click", label=label)
        if at.goes_wrong():
            return at.fail(
                reply,
                at.error(
                    "Couldn't find a control labelled “%s”." % label,
                    "Couldn't find a control labelled “%s”." % label,
                    "“%s” didn't respond to a click." % label,
                    screen.PERMISSION_READ,
                ),
            )
        at.act(reply, "Clicked “%s”." % label)
        return "Clicked %s." % label

    return Step(at.worded("click", label=said), play)


# ---------------------------------------------------------------------------------------------- files


def _said_folder(at: Setting) -> Tuple[str, str]:
    """How a folder is said, and its name in the plan."""
    if at.chance(0.06):
        return "home", "home"
    name = at.rng.choice(words.FOLDERS if at.chance(0.9) else words.RARE_FOLDERS)
    return (name if at.chance(0.7) else name.lower()), name


def _absolute(at: Setting, place: str) -> str:
    return at.desktop.home if place == "home" else at.desktop.home + "/" + place


def create_folder(at: Setting) -> Step:
    name = at.values.folder_name(at.rng)
    said = at.quoted(name, 0.2)
    if at.chance(0.45):
        place, text = "Desktop", at.worded("create_folder", name=said)
    else:
        said_place, place = _said_folder(at)
        text = at.worded("create_folder_in", name=said, folder=said_place)

    def play(at: Setting) -> Optional[str]:
        reply = action("create_folder", name=name, in_=place)
        if at.goes_wrong():
            return at.fail(reply, at.error("Couldn't create the folder “%s”: Permission denied" % name))
        at.desktop.reveal(_absolute(at, place))
        at.act(reply, "Created folder at %s/%s." % (_absolute(at, place), name))
        return "Created the folder %s." % name

    return Step(text, play, compound=" and " in text.replace(said, "") or text.startswith(("in ", "on ")))


def screenshot(at: Setting) -> Step:
    if at.chance(0.35):
        place, text = "Downloads", at.worded("screenshot")
    else:
        said, place = _said_folder(at)
        text = at.worded("screenshot_in", folder=said)

    def play(at: Setting) -> Optional[str]:
        rng = at.rng
        reply = action("screenshot", save_to=place)
        if at.goes_wrong():
            return at.fail(reply, at.error(screen.SCREENSHOT_FAILED))
        stamp = "%d-%02d-%02d at %02d.%02d.%02d" % (
            rng.randint(2024, 2032),
            rng.randint(1, 12),
            rng.randint(1, 28),
            rng.randint(0, 23),
            rng.randint(0, 59),
            rng.randint(0, 59),
        )
        at.act(reply, "Saved screenshot to %s/Screenshot %s.png." % (_absolute(at, place), stamp))
        return "Saved a screenshot to %s." % place

    return Step(text, play, compound=" and " in text or "," in text or " then " in text)


def _said_kind(at: Setting) -> Tuple[str, str]:
    """How a kind of file is said, and its extension."""
    if at.chance(0.6):
        said = at.rng.choice(list(words.KINDS))
        return (said if at.chance(0.5) else said.lower()), words.KINDS[said]
    extension = at.values.extension(at.rng)
    style = at.rng.choice(("%s file", "%s file", ".%s file", "%s"))
    return style % (extension if at.chance(0.5) else extension.upper()), extension


def find_files(at: Setting) -> Step:
    said, place = _said_folder(at)
    kind, extension = _said_kind(at)
    chance = at.rng.random()
    opens_first = chance < 0.35
    if opens_first:
        text = at.worded("find_after_opening", kind=kind, folder=said)
    elif chance < 0.85:
        text = at.worded("find", kind=kind, folder=said)
    else:
        extension = ""
        text = at.worded("list_files", folder=said)

    def play(at: Setting) -> Optional[str]:
        if opens_first and not _opening_path(place)(at):
            return None
        return _finding(place, extension)(at)

    return Step(text, play, compound=True)


def _finding(place: str, extension: str) -> Course:
    def play(at: Setting) -> Optional[str]:
        reply = action("find_files", folder=place, extension=extension)
        if at.goes_wrong():
            return at.fail(reply, at.error("Couldn't read %s." % place))
        if at.chance(0.15):
            at.act(reply, "No matching files in %s." % place)
            return "There are no matching files in %s." % place
        shown = at.rng.choice((1, 1, 2, 2, 3, 3, 4, 5))
        names = [at.values.file_name(at.rng, extension) for _ in range(shown)]
        count = shown if shown < 5 else at.rng.randint(5, 60)
        at.desktop.reveal(_absolute(at, place))
        at.act(
            reply,
            "Found %d file(s), newest first: %s. Revealed “%s” in Finder."
            % (count, ", ".join(names), names[0]),
        )
        return "The newest file in %s is %s." % (place, names[0])

    return play


def _opening_path(path: str) -> Course:
    def play(at: Setting) -> Optional[str]:
        reply = action("open_path", path=path)
        if at.goes_wrong():
            return at.fail(reply, at.error("Nothing exists at %s." % path))
        last = path.rstrip("/").split("/")[-1]
        if at.chance(0.7):
            at.desktop.reveal(path)
        at.act(reply, "Opened %s." % (last if path != "home" else at.desktop.home.split("/")[-1]))
        return "Opened %s." % last

    return play


def _written_path(at: Setting) -> str:
    """A path as written by the user."""
    values, rng = at.values, at.rng
    name = values.file_name(rng) if at.chance(0.75) else values.word(rng, at.chance(0.5))
    start = rng.choice(
        ("~/", "~/", "/tmp/", "~/%s/" % values.word(rng, True), "/home/%s/" % values.plain_word(rng))
    )
    if at.chance(0.45):
        start = rng.choice(words.FOLDERS) + "/"
    return start + name.replace(" ", "-")


def _place_for_file(at: Setting) -> Tuple[str, str]:
    """A folder that contains a file: how it is said, and the start of the file's path."""
    said, place = _said_folder(at)
    return (said, "~") if place == "home" else (said, place)


def open_path(at: Setting) -> Step:
    chance = at.rng.random()
    if chance < 0.5:
        said, path = _said_folder(at)
        text = at.worded("open_folder", folder=said)
    elif chance < 0.75:
        said, place = _place_for_file(at)
        name = at.values.file_name(at.rng)
        path = place + "/" + name
        text = at.worded("open_file", file=at.quoted(name, 0.1), folder=said)
    elif chance < 0.88:
        said, place = _place_for_file(at)
        name = at.values.folder_name(at.rng)
        path = place + "/" + name
        text = at.worded("open_inner_folder", name=at.quoted(name, 0.1), folder=said)
    else:
        path = _written_path(at)
        text = at.worded("open_path", path=path)
    return Step(text, _opening_path(path), compound=text.startswith(("in ", "from ")))


def trash(at: Setting) -> Step:
    chance = at.rng.random()
    said, place = _place_for_file(at)
    if chance < 0.75:
        name = at.values.file_name(at.rng)
        path = place + "/" + name
        text = at.worded("trash", file=at.quoted(name, 0.1), folder=said)
    elif chance < 0.87:
        name = at.values.folder_name(at.rng)
        path = place + "/" + name
        text = at.worded("trash_inner_folder", name=at.quoted(name, 0.1), folder=said)
    else:
        path = _written_path(at)
        name = path.split("/")[-1]
        text = at.worded("trash_path", path=path)

    def play(at: Setting) -> Optional[str]:
        reply = action("trash", path=path)
        if at.goes_wrong():
            return at.fail(
                reply,
                at.error(
                    "Couldn't move “%s” to the Trash: No such file or directory" % name,
                    "Couldn't move “%s” to the Trash." % name,
                    "Nothing exists at %s." % path,
                ),
            )
        at.act(reply, "Moved %s to the Trash." % name)
        return "Moved %s to the Trash." % name

    return Step(text, play, compound=text.startswith(("in ", "from ")))


# ---------------------------------------------------------------------------------------------- the screen


def list_windows(at: Setting) -> Step:
    def play(at: Setting) -> Optional[str]:
        reply = action("list_windows")
        if at.chance(at.error_rate / 3):
            return at.fail(reply, at.error())
        summary = at.desktop.window_summary()
        at.act(reply, summary)
        return "Open windows: " + summary if _can_be_repeated(summary) else "The open windows are listed above."

    return Step(at.worded("list_windows"), play, compound=True)


def _can_be_repeated(summary: str) -> bool:
    """Whether the text fits into a closing reply."""
    return len(summary) + 3 * scripts.effort(summary) < 320


def read_ui(at: Setting) -> Step:
    def play(at: Setting) -> Optional[str]:
        reply = action("read_ui")
        if at.goes_wrong():
            return at.fail(reply, at.error(screen.PERMISSION_READ, "No frontmost app."))
        if at.chance(0.1):
            at.act(reply, "No readable controls found.")
            return "No readable controls found."
        count = at.rng.choice((1, 2, 3, 4, 5, 6, 8, 12)) if at.chance(0.92) else at.rng.randint(13, 40)
        lines = [
            at.rng.choice(words.CONTROL_ROLES) + ": " + label for label in at.values.labels(at.rng, count)
        ]
        at.act(reply, " | ".join(lines))
        return "Controls: " + " | ".join(lines[:3])

    return Step(at.worded("read_ui"), play, compound=True)


# ---------------------------------------------------------------------------------------------- families

STEPS: Dict[str, Callable[[Setting], Step]] = {
    "open_app": open_app,
    "quit_app": quit_app,
    "open_url": open_url,
    "web_search": web_search,
    "new_tab": new_tab,
    "type_text": type_text,
    "press_key": press_key,
    "click": click,
    "create_folder": create_folder,
    "screenshot": screenshot,
    "find_files": find_files,
    "open_path": open_path,
    "trash": trash,
    "list_windows": list_windows,
    "read_ui": read_ui,
}
WEIGHTS = {
    "open_app": 14,
    "quit_app": 8,
    "open_url": 9,
    "web_search": 10,
    "new_tab": 3,
    "type_text": 10,
    "press_key": 11,
    "click": 7,
    "create_folder": 11,
    "screenshot": 6,
    "find_files": 11,
    "open_path": 9,
    "trash": 10,
    "list_windows": 4,
    "read_ui": 4,
    "finder_folder": 7,
    "app_then": 20,
    "two": 44,
    "three": 40,
    "unsupported": 8,
    "too_long": 9,
}
FAMILIES = list(WEIGHTS)


def _in_application(at: Setting) -> Tuple[str, List[Step]]:
    """Opens an application and continues in it."""
    said = at.values.application(at.rng)
    opening = Step("", _opening(said))
    chance = at.rng.random()
    if chance < 0.12:
        text = at.values.text(at.rng)
        quoted = at.rng.choice(('"%s"', "“%s”", "'%s'")) % text
        return at.worded("type_quoted_in", text=quoted, app=said), [opening, Step("", _typing(text))]
    if chance < 0.2:
        return at.worded("new_tab_in", app=said), [opening, new_tab(at)]
    kind = at.rng.choice(
        ("type_text", "type_text", "type_text", "press_key", "click", "new_tab", "screenshot")
    )
    step = STEPS[kind](at)
    return at.worded("opener", app=said) + " " + step.text, [opening, step]


def _finder_folder(at: Setting) -> Tuple[str, List[Step]]:
    said = (
        "Finder"
        if at.chance(0.75)
        else at.rng.choice(("Files", "File Manager", "finder", "Thunar", "Dolphin"))
    )
    step = create_folder(at)
    while step.compound:
        step = create_folder(at)
    return at.worded("opener", app=said) + " " + step.text, [Step("", _opening(said)), step]


def _pair(at: Setting) -> Tuple[str, List[Step]]:
    """One verb for two applications: quit Slack and Mail."""
    first, second = at.values.application(at.rng), at.values.application(at.rng)
    rule, course = at.rng.choice(
        (("open", _opening), ("quit", _quitting), ("launch", _opening), ("close", _quitting))
    )
    return "%s %s and %s" % (rule, first, second), [Step("", course(first)), Step("", course(second))]


def _can_be_joined(text: str) -> bool:
    """Whether a step's wording can be joined with others: a single clause, and no question about the screen."""
    return "," not in text and ":" not in text and not text.startswith(
        ("what", "which", "see ", "there ", "my ", "the ", "as for ", "to begin with")
    )


# For each of several steps, a wish or an order, so that the start of a clause says little about the plan.
_CLAUSE_LEADS = ("please", "please", "just", "also", "now", "next", "you should", "we should", "we'll", "you'll", "I'll")


def _clause(at: Setting, text: str) -> str:
    if at.chance(0.1) and not text.startswith(_NOT_COMMANDS):
        return at.rng.choice(_CLAUSE_LEADS) + " " + text
    return text


def _would_be_one(steps: List[Step], step: Step) -> bool:
    """Whether two steps would be planned as one: "open Chrome, search for cats" is one search."""
    return bool(steps) and steps[-1].opens_browser and step.needs_browser


def _several(at: Setting, count: int) -> Tuple[str, List[Step]]:
    if count == 2 and at.chance(0.06):
        return _pair(at)
    steps: List[Step] = []
    while len(steps) < count:
        step = STEPS[
            at.rng.choice([name for name in STEPS if name not in ("list_windows", "read_ui", "find_files")])
        ](at)
        if not step.compound and _can_be_joined(step.text) and not _would_be_one(steps, step):
            steps.append(step)
    if count == 2:
        joint = at.rng.choice((" and ", " and ", " and then ", ", then ", " then ", ", and ", ", and then "))
        return joint.join(_clause(at, step.text) for step in steps), steps
    last = at.rng.choice((" and ", ", and ", ", then ", " and then ", ", and then "))
    between = ", " if at.chance(0.75) else at.rng.choice((", then ", " and ", " then "))
    first, second, third = (_clause(at, step.text) for step in steps)
    return first + between + second + last + third, steps


def _unsupported(at: Setting) -> str:
    thing = at.values.thing(at.rng)
    if at.chance(0.04):
        return thing
    return at.worded("unsupported", thing=thing, number=str(at.rng.randint(1, 999)))


def _too_long(at: Setting) -> str:
    """A task with a text too long to copy."""
    text = at.values.too_long_text(at.rng)
    said = at.quoted(text, 0.3)
    rule, slot = at.rng.choice(
        (("type_text", "text"), ("type_text", "text"), ("search", "query"), ("create_folder", "name"))
    )
    task = at.worded(rule, **{slot: said})
    return at.worded("opener", app=at.values.application(at.rng)) + " " + task if at.chance(0.2) else task


def converse(at: Setting, family: str) -> List[Message]:
    """One conversation of the family, from the task to the closing reply."""
    if family == "unsupported":
        at.ask(dress(at.rng, _unsupported(at), open_ended=False))
        at.finish(OUT_OF_REACH)
        return at.messages
    if family == "too_long":
        at.ask(dress(at.rng, _too_long(at), open_ended=True))
        at.finish(TOO_LONG)
        return at.messages
    if family in STEPS:
        step = STEPS[family](at)
        text, steps = step.text, [step]
    elif family == "app_then":
        text, steps = _in_application(at)
    elif family == "finder_folder":
        text, steps = _finder_folder(at)
    else:
        text, steps = _several(at, 2 if family == "two" else 3)
    at.ask(dress(at.rng, text, open_ended=steps[-1].open_ended, plain=len(steps) > 1))
    for step in steps:
        closing = step.play(at)
        if closing is None:
            return at.messages
    at.finish(closing)
    return at.messages


_NOT_COMMANDS = (
    "I ", "I'", "let me", "what", "which", "how", "who", "why", "where", "when", "is ", "are ", "do ", "the ", "in ", "on ",
    "from ", "inside", "within", "under", "new ", "a ", "an ", "my ", "keyboard", "screenshot", "using", "with ", "should",
    "can ", "may ", "will ", "could ", "my ", "as for ", "there", "once ", "when ", "with ", "first ", "to begin ", "into ",
    "no more ", "among ", "here ", "this ", "hello", "hi", "thank", "never", "good", "does", "latest", "newest", "use ",
)  # fmt: skip
_POLITE = (
    "please", "please", "can you", "could you", "can you please", "could you please", "would you", "will you", "kindly",
    "I want you to", "I'd like you to", "I need you to", "go ahead and", "just", "help me", "can you help me",
    "would you please", "you should", "try to", "quickly", "how about you", "why don't you", "make sure to", "be so kind and",
    "we should", "we need to", "it is time to", "do me a favour and", "I'd love you to", "somebody should", "you can",
)  # fmt: skip
_GREETINGS = (
    "hey,",
    "ok,",
    "okay,",
    "now",
    "next,",
    "hi,",
    "well,",
    "Orvane,",
    "hey Orvane,",
    "so,",
    "right,",
    "alright,",
)
_ENDINGS = (
    " please",
    ", please",
    " for me",
    " now",
    " right now",
    " right away",
    ", thanks",
    " if you can",
    " quickly",
    " if possible",
    " as soon as you can",
    " at last",
    ", will you",
)


def _unknown_lead(rng: random.Random) -> str:
    """Meaningless words, so that the planner learns to ignore an unfamiliar beginning."""
    made_up = [
        rng.choice(words.SYLLABLE_STARTS) + rng.choice(words.SYLLABLE_VOWELS) + rng.choice(words.SYLLABLE_ENDS)
        for _ in range(rng.randint(1, 3))
    ]
    return rng.choice(("", " ")).join(made_up) + rng.choice(("", "", ",", "'s"))


def dress(rng: random.Random, text: str, open_ended: bool, plain: bool = False) -> str:
    """Adds politeness, capitals and punctuation, none of which changes the plan."""
    command = not text.startswith(_NOT_COMMANDS)
    question = text.lower().startswith(
        ("what", "which", "how", "who", "why", "where", "when", "is ", "are ", "do i ", "do you ", "does")
    )
    chance = rng.random()
    if chance < 0.22 and command:
        lead = rng.choice(_POLITE)
        text = lead + " " + text
        question = lead.startswith(("can", "could", "would", "will", "how", "why"))
    elif chance < 0.26 and command:
        text = _unknown_lead(rng) + " " + text
    elif chance < 0.31:
        text = rng.choice(_GREETINGS) + " " + text
    elif chance < 0.42 and (command or not question) and not open_ended and not plain:
        text += rng.choice(_ENDINGS)
    if question and not open_ended and rng.random() < 0.65:
        text += "?"
    elif not open_ended and text[-1].isalnum() and rng.random() < 0.15:
        text += rng.choice("..!")
    return text[0].upper() + text[1:] if text[0].isascii() and rng.random() < 0.72 else text


def make(
    rng: random.Random, values: TrainingValues, family: str = "", **setting
) -> Tuple[str, List[Message]]:
    """A conversation of the given family, or of one drawn by weight."""
    family = family or rng.choices(FAMILIES, [WEIGHTS[name] for name in FAMILIES])[0]
    return family, converse(Setting(rng, values, setting.pop("wordings", PHRASINGS), **setting), family)
