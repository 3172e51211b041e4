# SPDX-License-Identifier: Apache-2.0
"""Values never seen in training, so that an evaluation tests copying rather than memory.

Training values that contain a word of these lists are rejected, unless it is an everyday word.
"""

import re
from typing import FrozenSet

APPLICATIONS = (
    "Blender|Figma|Obsidian|GarageBand|Final Cut Pro|Thunderbird|Inkscape|Audacity|Krita|Bitwarden|Zotero|Transmit|"
    "Cyberduck|OmniFocus|Pixelmator"
).split("|")
FOLDER_NAMES = (
    "Kitchen Remodel|Zanzibar|Quarterly Numbers|Wedding Plans|Thesis|Client Contracts|Old Receipts|Vacation 2031|"
    "Homework|Lighthouse|Pottery Workshop|Fjordland|Mozarella|Xylophone Lessons|Bjork Mixes"
).split("|")
QUERIES = (
    "vegan lasagna|cheapest electric scooter|ramen restaurants osaka|sourdough starter troubleshooting|"
    "hubble telescope pictures|knitting patterns beginners|rust borrow checker|marathon training schedule|"
    "used violin prices|origami crane|volcanoes iceland|noise cancelling headphones"
).split("|")
HOSTS = (
    "nytimes.com|theguardian.com|kernel.org|openstreetmap.org|duolingo.com|quixplorn.net|zeitgeist-online.de|"
    "archive.org|nasa.gov|spiegel.de|bandcamp.com|wolframalpha.com"
).split("|")
TEXTS = (
    "buy oat milk|quarterly numbers look fine|Dear Professor Higgins|lorem ipsum dolor|meet me under the bridge|"
    "Zephyr rocks|password reminder|Hej verden|my umbrella is broken|xkcd comics rule"
).split("|")
LABELS = (
    "Subscribe|Accept Cookies|Checkout|Download Receipt|Mute|Unfollow|Upgrade Plan|Rotate Left|Zoom In|"
    "Verify Identity|Join Meeting|Compose"
).split("|")
FILE_STEMS = (
    "receipt_4471|wedding-guestlist|thesis_chapter3|hubble scan|kayak-trip|blueprint v9|Zeugnis|umbrella|"
    "marathon-plan|xylophone"
).split("|")

# Names and texts beyond ASCII.
ANY_SCRIPT = (
    "Größe 漢字 👍🏽|naïve café|Überweisungen|Žluťoučký kůň|Ελληνικά κείμενα|Привет мир|Смета на ремонт|日本語の文章|写真フォルダ|"
    "会议记录|안녕하세요|한국어 파일|مرحبا بالعالم|שלום עולם|नमस्ते|สวัสดี|Übergrößenträger|façade déjà vu|smörgåsbord|"
    "Łódź wycieczka|Tiếng Việt|🎉 party 🎂|¿Qué tal?|Ça va très bien|Fähre nach Sjælland|Ćwiczenia|Αθήνα|Київ|東京タワー|"
    "Crème brûlée 🍮|rocket 👩‍🚀|Señor Muñoz"
).split("|")

_EVERYDAY = set(
    "com org net gov the and dear look fine plan pictures old client home cut pro final plans join zoom numbers my is "
    "meet in left guide prices buy used me under download archive quarterly".split()
)


def banned_words() -> FrozenSet[str]:
    """The held-out words, in lower case."""
    values = APPLICATIONS + FOLDER_NAMES + QUERIES + HOSTS + TEXTS + LABELS + FILE_STEMS
    words = {word for value in values for word in re.findall(r"[a-z]+", value.lower()) if len(word) > 2}
    words |= {word for value in ANY_SCRIPT for word in value.lower().split(" ")}
    return frozenset(words - _EVERYDAY)
