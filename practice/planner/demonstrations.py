# SPDX-License-Identifier: Apache-2.0
"""The demonstration tasks and their planned actions, without the closing one."""

import pathlib
from typing import Dict, List

from .conversations import OUT_OF_REACH, action

TASKS_FILE = pathlib.Path(__file__).resolve().parent.parent / "demonstration_tasks.txt"

# The result of each action on a Linux desktop; {home} is the user's home folder.
PLANS: Dict[str, List[List[str]]] = {
    "Open Safari and search Google for MacBook Air": [
        [action("web_search", query="MacBook Air", app="Safari"), "Opened www.google.com in Firefox ESR."],
    ],
    "Open Finder and create a folder called Projects": [
        [action("open_app", app="Finder"), "Thunar File Manager is now frontmost."],
        [
            action("create_folder", name="Projects", in_="Desktop"),
            "Created folder at {home}/Desktop/Projects.",
        ],
    ],
    "Take a screenshot and save it to Downloads": [
        [
            action("screenshot", save_to="Downloads"),
            "Saved screenshot to {home}/Downloads/Screenshot 2026-05-01 at 14.03.07.png.",
        ],
    ],
    "Open my Downloads folder and find the latest PDF": [
        [action("open_path", path="Downloads"), "Opened Downloads."],
        [
            action("find_files", folder="Downloads", extension="pdf"),
            "Found 2 file(s), newest first: budget v9.pdf, notes.pdf. Revealed “budget v9.pdf” in Finder.",
        ],
    ],
    "Create a folder called Kitchen Remodel in Documents": [
        [
            action("create_folder", name="Kitchen Remodel", in_="Documents"),
            "Created folder at {home}/Documents/Kitchen Remodel.",
        ],
    ],
    "Open TextEdit and type quarterly numbers look fine": [
        [action("open_app", app="TextEdit"), "Mousepad is now frontmost."],
        [action("type_text", text="quarterly numbers look fine"), "Typed text."],
    ],
    "Open TextEdit and type Größe 漢字 👍🏽": [
        [action("open_app", app="TextEdit"), "Mousepad is now frontmost."],
        [action("type_text", text="Größe 漢字 👍🏽"), "Typed text."],
    ],
    "Move old receipts.zip in Downloads to the Trash": [
        [action("trash", path="Downloads/old receipts.zip"), "Moved old receipts.zip to the Trash."],
    ],
    "Open Calculator": [[action("open_app", app="Calculator"), "Calculator is now frontmost."]],
    "Quit Calculator": [[action("quit_app", app="Calculator"), "Calculator quit."]],
    "Open my Documents folder": [[action("open_path", path="Documents"), "Opened Documents."]],
    "What windows are open?": [[action("list_windows"), "{windows}"]],
    "Find the newest PNG in Pictures": [
        [
            action("find_files", folder="Pictures", extension="png"),
            "Found 3 file(s), newest first: c.png, b.png, a.png. Revealed “c.png” in Finder.",
        ],
    ],
    "What's the weather in Oslo?": [],
}
# The replies to impossible tasks.
DECLINED = {"What's the weather in Oslo?": OUT_OF_REACH}


def tasks() -> List[str]:
    return TASKS_FILE.read_text().splitlines()
