# SPDX-License-Identifier: Apache-2.0
"""Word lists: real names, and words that generated values are mixed from."""

APPLICATIONS = (
    "Safari|Finder|Notes|Mail|Calendar|Spotify|Slack|Terminal|Photos|Preview|TextEdit|Messages|Maps|Reminders|"
    "Calculator|System Settings|App Store|Xcode|Visual Studio Code|Discord|Zoom|Pages|Numbers|Keynote|FaceTime|"
    "Podcasts|Books|Stocks|Home|Weather|Clock|Contacts|Chess|Activity Monitor|Disk Utility|Telegram|WhatsApp|"
    "Steam|Notion|Dropbox|Skype|Sublime Text|Atom|Postman|Evernote|Trello|Signal|Teams|Outlook|Microsoft Word|"
    "Microsoft Excel|PowerPoint|Files|Text Editor|Firefox|Google Chrome|Brave Browser|Arc|Music|Mousepad|"
    "LibreOffice Writer|Image Viewer|File Manager|Android Studio|Font Book|Voice Memos|Photo Booth|Stickies|"
    "QuickTime Player|Script Editor|Key Chain Access|Time Machine|Paint|VLC|GIMP|Emacs|Vim|1Password|Adobe Reader"
).split("|")

# What a user calls a browser, and the name used in the plan.
BROWSERS = {
    "Safari": "Safari",
    "Brave": "Brave Browser",
    "Brave Browser": "Brave Browser",
    "Google Chrome": "Google Chrome",
    "Chrome": "Google Chrome",
    "Firefox": "Firefox",
    "Arc": "Arc",
}

SITES = {
    "YouTube": "youtube.com",
    "GitHub": "github.com",
    "Gmail": "gmail.com",
    "Wikipedia": "wikipedia.org",
    "Reddit": "reddit.com",
    "Twitter": "twitter.com",
    "Facebook": "facebook.com",
    "Amazon": "amazon.com",
    "Netflix": "netflix.com",
    "LinkedIn": "linkedin.com",
    "Instagram": "instagram.com",
    "Hacker News": "news.ycombinator.com",
    "Google Maps": "maps.google.com",
    "eBay": "ebay.com",
    "Stack Overflow": "stackoverflow.com",
}

FOLDERS = ["Desktop", "Documents", "Downloads", "Pictures"]
RARE_FOLDERS = ["Movies", "Public", "Videos", "Templates"]

# How a kind of file is said, and its extension. Also used in lower case.
KINDS = {
    "PDF": "pdf",
    "PNG": "png",
    "JPG": "jpg",
    "JPEG": "jpeg",
    "GIF": "gif",
    "SVG": "svg",
    "ZIP": "zip",
    "CSV": "csv",
    "MP3": "mp3",
    "MP4": "mp4",
    "MOV": "mov",
    "DMG": "dmg",
    "TXT": "txt",
    "HTML": "html",
    "JSON": "json",
    "XML": "xml",
    "DOCX": "docx",
    "XLSX": "xlsx",
    "PPTX": "pptx",
    "EPUB": "epub",
    "PDF document": "pdf",
    "PDF file": "pdf",
    "PNG image": "png",
    "PNG file": "png",
    "JPG image": "jpg",
    "zip file": "zip",
    "zip archive": "zip",
    "Word document": "docx",
    "Word file": "docx",
    "text file": "txt",
    "spreadsheet": "xlsx",
    "Excel file": "xlsx",
    "PowerPoint file": "pptx",
    "PowerPoint presentation": "pptx",
    "PowerPoint": "pptx",
    "CSV file": "csv",
    "MP3 file": "mp3",
    "MP4 video": "mp4",
    "GIF image": "gif",
    "disk image": "dmg",
    "JSON file": "json",
    "Markdown file": "md",
}
EXTENSIONS = "pdf png jpg zip docx txt csv xlsx mp3 mp4 dmg gif json key md mov html pptx epub svg py tar log iso".split()
TOP_LEVEL_DOMAINS = "com org net io de co.uk dev app fr edu gov info nl es me tv".split()

LABELS = (
    "Save|Cancel|OK|Open|Close|Delete|Send|Sign In|Log In|New Folder|Don't Save|Continue|Next|Back|Done|Submit|"
    "Share|Print|Export|Import|Add|Remove|Apply|Install|Allow|New Note|Play|Pause|Reload|File|Edit|View|Help|"
    "Preferences|Save As…|Select All|Undo|Redo|Yes|No|More Info|Sign Up|Add to Cart|Show All|Try Again|Settings"
).split("|")

LETTER_KEYS = "abcdefghijklmnopqrstuvwxyz0123456789"
PUNCTUATION_KEYS = ",/=[];'"
# How a named key is said, and its name in the plan. All but the last two are in the application's key table.
NAMED_KEYS = {
    "return": "return",
    "enter": "enter",
    "tab": "tab",
    "space": "space",
    "delete": "delete",
    "backspace": "backspace",
    "escape": "escape",
    "esc": "esc",
    "left": "left",
    "right": "right",
    "up": "up",
    "down": "down",
    "left arrow": "left",
    "right arrow": "right",
    "up arrow": "up",
    "down arrow": "down",
    "space bar": "space",
    "spacebar": "space",
}
UNSUPPORTED_KEYS = ["f1", "f2", "f5", "f11", "f12", "home", "end"]
MODIFIERS = {
    "command": ["command", "command", "cmd"],
    "shift": ["shift"],
    "option": ["option", "option", "alt"],
    "control": ["control", "control", "ctrl"],
}

CONTROL_ROLES = [
    "Button",
    "Button",
    "Button",
    "TextField",
    "StaticText",
    "MenuItem",
    "Link",
    "CheckBox",
    "Tab",
    "RadioButton",
]

# Linux applications that stand in for the Mac names that users say.
STAND_INS = {
    "Finder": ["Thunar File Manager", "Thunar File Manager", "Files", "Dolphin", "File Manager"],
    "Safari": ["Firefox ESR", "Firefox ESR", "Chromium Web Browser", "Firefox"],
    "TextEdit": ["Mousepad", "Mousepad", "Text Editor", "Kate", "FeatherPad"],
    "Notes": ["Notes", "Mousepad", "Text Editor"],
    "Mail": ["Thunderbird Mail", "Evolution", "Mail"],
    "Terminal": ["Xfce Terminal", "Konsole", "Terminal", "XTerm"],
    "Preview": ["Document Viewer", "Image Viewer", "Okular"],
    "Calculator": ["Calculator", "Calculator", "Galculator", "KCalc"],
    "System Settings": ["Settings Manager", "Settings", "System Settings"],
    "Firefox": ["Firefox ESR", "Firefox ESR", "Firefox", "Firefox Web Browser"],
    "Google Chrome": ["Google Chrome", "Google Chrome", "Chromium Web Browser"],
    "Brave Browser": ["Brave Browser", "Brave Web Browser"],
    "Music": ["Rhythmbox", "Music"],
    "Photos": ["Shotwell", "Photos"],
    "Calendar": ["Calendar", "Orage Calendar"],
}
FILE_MANAGERS = ["Thunar File Manager", "Thunar File Manager", "Finder", "Files", "Dolphin"]
WINDOW_TITLES = (
    "Start Page|Inbox|Downloads|Documents|Desktop|Untitled|New Tab|Home|Library|All Notes|Google|readme.md|Welcome|"
    "Recents|Today|Settings|Untitled 2|Favorites|Mozilla Firefox|Apple|Terminal|Untitled 1|Pictures|Startpage"
).split("|")

_WORDS = """
project work school photos invoice taxes budget recipes travel music notes draft final report holiday garden house
family kids client team meeting plan design video backup archive old new big small red blue green black white
summer winter spring autumn monday tuesday wednesday thursday friday saturday sunday january february march april
june july august september october november december best cheap free easy quick healthy chicken pasta bread coffee
tea water wine cheese butter salad soup pizza cake chocolate rice fish salmon apple lemon orange banana tomato
hotel flight train bus car bike phone laptop camera keyboard monitor desk chair lamp sofa bed book movie game song
guitar piano drums violin football tennis golf running yoga swimming hiking skiing doctor dentist bank money price
sale store shop city town village paris london berlin tokyo york boston madrid rome vienna oslo chicago texas
canada brazil india china japan germany france italy spain greece river lake mountain beach island forest desert
weather news sports science history math physics biology chemistry language english french german spanish python
java code data file letter email list table box bag shoes shirt jacket dress hat watch ring dog cat bird horse
tree flower rose sun moon star sky rain snow wind storm source world number one two three four five six seven
eight nine ten time day week year night morning evening review guide tutorial example definition meaning hello
thanks dear soon good great love happy birthday later today tomorrow macbook air iphone pro max mini office home
kitchen bathroom bedroom living room wedding party gift card map tour ticket visa passport insurance contract
lease salary tax bill receipt order delivery package mail post stamp market street road bridge station airport
museum theatre cinema concert festival library university college student teacher exam homework lecture course
lesson paper essay thesis research study chapter page story poem novel author artist painting photo picture frame
screen printer cable battery charger power energy solar electric engine motor wheel tire paint wood metal glass
stone brick plastic paper cotton wool silk leather gold silver copper iron steel oil gas coal fire smoke ice
health heart brain blood bone skin hair eye ear nose hand foot back pain sleep dream mind body food drink meal
breakfast lunch dinner snack fruit vegetable meat egg milk sugar salt pepper spice sauce recipe cooking baking
baby child girl boy woman man mother father sister brother friend neighbor boss worker manager director company
business industry factory farm land field plant seed animal insect spider snake lion tiger bear wolf fox rabbit
mouse elephant monkey whale shark ocean sea coast harbor ship boat sail captain pilot driver rider runner player
quarter quarterly annual monthly weekly daily figures sales profit loss cost growth rate trend chart graph
numbers results summary update version release feature bug test server network security password account profile
""".split()
WORDS = sorted(set(_WORDS))
# Small words inside a value; never at its ends, and none that starts a new step.
LINKING_WORDS = "in of for with the a on from to at my by".split()
# Words that occur in texts as well as in wordings; no verbs that begin a step, which would be ambiguous. The commonest
# are repeated as often as people write them: wordings use them before a value, where they are never copied.
EVERYDAY_WORDS = (
    "the " * 30 + "a of to in and my " * 5 + "an on at by for with from "
    "is are was will be not can has have had do did does it me we you they he she us them this that these those no yes "
    "more most less all any some few other new old good best cheap free last first next over under into about near "
    "behind without before after between during what when where which who why how so but or if as than there here today "
    "soon still just only very too also right left up down out off back your our their his her an one two need want like "
    "love know see think look seem work live read book note part made done page name file folder window program image list word time place key line"
).split()
PLACE_WORDS = "in on at by for with from to of under over near behind into about before after between around across".split()

SYLLABLE_STARTS = (
    "b c d f g h j k l m n p r s t v w x y z bl br ch cl cr dr fl fr gl gr kn pl pr qu sh sk sl sm sn sp st sw th tr "
    "tw wh"
).split()
SYLLABLE_VOWELS = "a e i o u ai ea ee ie oa oo ou y au".split()
SYLLABLE_ENDS = ["", "", "", *"n r s t l m d k p x g ck nd st rt ng sh th mp".split()]
