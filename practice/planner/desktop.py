# SPDX-License-Identifier: Apache-2.0
"""A desktop as the model sees it: the state line, and the texts of results and errors.

The texts are those of the application's executor. A result often names another application than the model's action,
because Linux has other applications than macOS: `displayed` maps the names.
"""

import random
from typing import List, Optional, Tuple

from . import vocabulary as words
from .values import TrainingValues

MOST_WINDOWS = 8
PERMISSION_READ = (
    "Accessibility permission is required. Enable it in System Settings → Privacy & Security → Accessibility."
)
PERMISSION_TYPE = "Accessibility permission is required to type. Enable it in System Settings → Privacy & Security → Accessibility."
PERMISSION_KEY = (
    "Accessibility permission is required. Enable Orvane in System Settings → Privacy & Security → Accessibility, "
    "then try again."
)
SCREENSHOT_FAILED = "The screenshot failed. Screen Recording permission may be required."


class Desktop:
    """Open windows, the frontmost application and the user's home, with random content.

    A calm desktop starts with at most one window.
    """

    def __init__(self, rng: random.Random, values: TrainingValues, calm: bool = False) -> None:
        self._rng = rng
        self._values = values
        self.home = values.home(rng)
        self._on_linux = rng.random() < 0.8
        count = rng.choice((0, 0, 1)) if calm else rng.choice((0, 1, 1, 2, 2, 2, 3, 3, 4, 5, 6, 8))
        self.windows: List[Tuple[str, str]] = []
        for _ in range(count):
            application = self.displayed(values.application(rng))
            self.windows.append((application, self._title(application)))
        self.front = self._next_front()

    # -- what the model is told

    def state(self) -> str:
        return "Frontmost app: %s. Windows: %s" % (self.front, self.window_summary())

    def window_summary(self) -> str:
        entries = []
        for application, title in self.windows:
            entry = application + " — " + title if title else application
            if entry not in entries:
                entries.append(entry)
        return "; ".join(entries[:MOST_WINDOWS]) or "none"

    def displayed(self, name: str) -> str:
        """The name that the desktop reports for an application called `name` by the user."""
        rng = self._rng
        if self._on_linux and name in words.STAND_INS:
            return rng.choice(words.STAND_INS[name])
        if rng.random() < 0.85:
            return name if rng.random() < 0.9 else name.title()
        if rng.random() < 0.5:
            return name + " " + rng.choice(("Web Browser", "Editor", "Desktop", "App", "Viewer", "2"))
        return self._values.phrase(rng, 2, title=0.9, linked=False)

    # -- what happens

    def bring_forward(self, application: str) -> None:
        """Raises the application's windows, or opens one if it has none."""
        own = [window for window in self.windows if window[0] == application]
        others = [window for window in self.windows if window[0] != application]
        if not own and self._rng.random() < 0.95:
            own = [(application, self._title(application))]
        self.windows = (own + others)[:MOST_WINDOWS]
        if self._rng.random() < 0.95:
            self.front = application

    def close(self, application: str) -> None:
        self.windows = [window for window in self.windows if window[0] != application]
        if self.front == application:
            self.front = self._next_front()

    def reveal(self, place: str) -> None:
        """The file manager shows a folder, as after create_folder or find_files."""
        if self._rng.random() < 0.25:
            return
        manager = self._rng.choice(words.FILE_MANAGERS) if self._on_linux else "Finder"
        folder = place.rstrip("/").split("/")[-1] or place
        title = folder if manager == "Finder" else folder + self._rng.choice((" - Thunar", "", " — Dolphin"))
        self.windows = ([(manager, title)] + [w for w in self.windows if w[0] != manager])[:MOST_WINDOWS]
        self.front = manager

    def any_error(self) -> str:
        """A message of the platform, which the application passes on unchanged."""
        rng, values = self._rng, self._values
        return rng.choice(
            (
                "Permission denied",
                "The application did not respond.",
                "Timed out after %d seconds." % rng.randint(2, 90),
                "Couldn't reach %s." % values.application(rng),
                "Couldn't start %s: No such file or directory" % values.application(rng),
                "Couldn't write to %s: Read-only file system" % self.home,
                "No frontmost app.",
                "The X server has gone away.",
                "“%s” could not be opened." % values.phrase(rng, 2, title=0.5),
                "No application is registered for this kind of file.",
            )
        )

    def _title(self, application: str) -> str:
        rng = self._rng
        chance = rng.random()
        if chance < 0.12:
            return application
        if chance < 0.15:
            return ""
        title = self._values.window_title(rng)
        return title + " - " + application.split(" ")[0] if rng.random() < 0.35 else title

    def _next_front(self) -> str:
        if self.windows and self._rng.random() < 0.9:
            return self.windows[0][0]
        if self._rng.random() < 0.4:
            return "unknown"
        return self.displayed(
            self._rng.choice(("Finder", "Safari", "Terminal", self._values.application(self._rng)))
        )


def opened_page(host: str, browser: Optional[str]) -> str:
    return "Opened %s in %s." % (host, browser or "the default browser")
