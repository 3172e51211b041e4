# SPDX-License-Identifier: Apache-2.0
"""Wordings that the training grammar cannot produce: other verbs, word orders and fillers.

There is a list for each rule of the grammar that words a task. check_phrasings.py checks that training cannot draw
any of them.
"""

import random
from typing import Dict, List

_WORDINGS: Dict[str, List[str]] = {
    "open_app": [
        "start {app} up",
        "I want {app} to be open",
        "can I have {app} open",
        "let's open {app}",
        "open {app} and bring it to the front",
        "show me the window of the app {app}",
        "the app {app}, open it",
        "get the {app} app started",
    ],
    "quit_app": [
        "I want {app} closed",
        "close {app} down",
        "please have the {app} app quit",
        "let's quit {app}",
        "shut {app} down",
        "the app {app}, quit it",
        "stop running {app}",
        "{app} is no longer needed, close it",
    ],
    "opener": [
        "start up the {app} app and there",
        "let's open {app} and then",
        "get {app} open, and then",
        "first open {app}, then",
        "show the {app} app, then",
    ],
    "visit": [
        "let's go to {site}",
        "can I see {site}",
        "I want the page at {site}",
        "open a page: {site}",
        "let's have a look at {site}",
        "get the site {site} on the screen",
        "bring {site} up in the browser",
    ],
    "visit_in": [
        "with {browser} I want to see {site}",
        "start {browser}, I want to go to {site}",
        "let's go to {site} in {browser}",
        "I want {site} open in {browser}",
        "get {browser} to show {site}",
        "show {site} in the app {browser}",
    ],
    "search": [
        "I want to know more about {query}, so search Google",
        "use Google and look for {query}",
        "let's search for {query}",
        "can I get results for {query}",
        "on Google, start a search about {query}",
        "let's see what Google has on {query}",
        "on Google, look up {query}",
    ],
    "search_in": [
        "start {browser}, I want to search for {query}",
        "let's look up {query} in {browser}",
        "on the web, search for {query} in {browser}",
        "get {browser} to search for {query}",
        "I want a search for {query} in {browser}",
        "with {browser}, I need to find information on {query}",
    ],
    "new_tab": [
        "let's have another tab",
        "can I get a new tab",
        "put a new tab in the browser",
        "I want to see a new tab",
        "open up a tab",
        "show me a new tab",
    ],
    "new_tab_in": [
        "let's have a new tab in {app}",
        "I want to open a tab in {app}",
        "inside {app} I want another tab",
    ],
    "type_text": [
        "can I type {text}",
        "let's write {text}",
        "I want these words: {text}",
        "the text to type is {text}",
        "the following text goes in: {text}",
        "use the keyboard to write {text}",
    ],
    "type_quoted": [
        "let's write {text} in the text box",
        "I want {text} typed here",
        "the words {text}, type them in the field",
        "put the text {text} in here",
        "into this field, write {text}",
    ],
    "type_quoted_in": [
        "I want to have {text} written in {app}",
        "put the words {text} into {app}",
        "in the app {app} I want to type {text}",
    ],
    "press_key": [
        "let's hit {key}",
        "I want the {key} key pressed",
        "give the {key} key a press",
        "use {key} on the keyboard",
        "the {key} key, press it",
        "do a press of the {key} key",
    ],
    "press_combo": [
        "let's press {combo}",
        "while holding {modifiers}, press {key}",
        "I want the keys {combo} pressed",
        "on the keyboard, press {combo}",
        "with {modifiers} down, hit {key}",
        "press the following keys: {combo}",
    ],
    "click": [
        "let's click {label}",
        "the button {label}, click it",
        "I want the {label} button pressed",
        "find the {label} button and click it",
        "do a click on the {label} button",
        "in this window, click the {label} button",
        "there is a button called {label}, press it",
    ],
    "create_folder": [
        "let's set up a folder {name}",
        "I want to have a new folder with {name} as its name",
        "make me a directory, and {name} is its name",
        "there should be a folder called {name}",
        "please get me a folder with the title {name}",
        "a folder called {name}, create it",
    ],
    "create_folder_in": [
        "let's set up a folder {name} in {folder}",
        "in {folder}, I want a new folder called {name}",
        "{folder} needs a folder called {name}",
        "there should be a folder called {name} in my {folder}",
        "inside my {folder} folder, create {name} as a folder",
        "a folder called {name}, create it in {folder}",
        "put in {folder} a folder named {name}",
    ],
    "screenshot": [
        "let's take a screenshot",
        "I want my screen captured",
        "can I have a screenshot",
        "save what is on the screen as a screenshot",
        "do me a screenshot",
    ],
    "screenshot_in": [
        "let's have a screenshot in {folder}",
        "I want a screenshot saved to {folder}",
        "in {folder}, save a screenshot",
        "take a screenshot for me and {folder} is where it goes",
        "capture what I see on the screen and save it to my {folder}",
        "put a picture of what is on the screen in {folder}",
    ],
    "find": [
        "let's see the newest {kind} in {folder}",
        "of all {kind}s in {folder}, find the newest",
        "I am looking for the newest {kind} in {folder}",
        "in my {folder}, which {kind} is the newest one",
        "can I have the latest {kind} in {folder}",
        "where is the latest {kind} in {folder}",
    ],
    "find_after_opening": [
        "let's open {folder} and find the latest {kind}",
        "open {folder}, I want the newest {kind} in it",
        "I want to go to {folder} and find the latest {kind} there",
        "first open my {folder} folder, then look for the newest {kind}",
    ],
    "list_files": [
        "let's see what is in {folder}",
        "which files can I find in {folder}",
        "I want to see the files in {folder}",
        "what do I have in my {folder} folder",
    ],
    "open_folder": [
        "let's see my {folder} folder",
        "can I see the {folder} folder",
        "I want to have my {folder} folder open",
        "bring the {folder} folder up",
        "the {folder} folder, open it",
        "get my {folder} folder on the screen",
    ],
    "open_file": [
        "let's open {file} in {folder}",
        "can I see {file} from {folder}",
        "I want {file} from {folder} open",
        "there is a file {file} in {folder}, open it",
        "the file {file} in {folder}, open it",
    ],
    "open_inner_folder": [
        "let's open the {name} folder in {folder}",
        "in {folder}, open the folder {name}",
        "there is a folder {name} in {folder}, open it",
        "I want the {name} folder in {folder} open",
    ],
    "open_path": ["let's open {path}", "I want {path} open", "can I see {path}"],
    "trash": [
        "let's delete {file} in {folder}",
        "I no longer need {file} in {folder}, delete it",
        "I want {file} in {folder} in the trash",
        "the file {file} in {folder} can be deleted",
        "put into the Trash {file} from {folder}",
        "there is a file {file} in {folder}, delete it",
        "get {file} out of {folder} and into the trash",
    ],
    "trash_inner_folder": [
        "let's delete the {name} folder in {folder}",
        "in {folder}, delete the folder {name}",
        "I no longer need the folder {name} in {folder}, delete it",
    ],
    "trash_path": ["let's delete {path}", "I no longer need {path}, delete it", "put into the Trash {path}"],
    "list_windows": [
        "let's see my open windows",
        "can I see which windows are open",
        "I want to know what windows I have",
        "of my windows, which are open",
        "are there any windows open",
        "windows, list them",
    ],
    "read_ui": [
        "let's see the buttons in this window",
        "I want a list of the controls in this window",
        "are there any buttons here",
        "which of the controls can I use in this app",
        "tell me which buttons this window has",
        "can I see what controls are there",
    ],
    "unsupported": [
        "I want to know the weather in {thing}",
        "please do my homework about {thing}",
        "sing me a song about {thing}",
        "I need a taxi to {thing}",
        "let's play {thing}",
        "can I get a pizza with {thing}",
        "what does {thing} mean",
        "is {thing} good for my health",
        "order me some {thing}",
        "how much is {number} plus {number}",
        "please call my mother",
        "read me my emails",
    ],
}


class EvaluationWordings:
    """Replaces the grammar when an evaluation generates conversations."""

    def expand(self, rule: str, rng: random.Random) -> str:
        return rng.choice(_WORDINGS[rule])

    def all(self) -> Dict[str, List[str]]:
        return _WORDINGS
