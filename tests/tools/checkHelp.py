#!/usr/bin/env python3
"""Checks the manual: well-formed pages with titles, links and pictures that lead somewhere, a way to every page, the
same pages in all languages, every command of the window with its key, and every message.

Usage: checkHelp.py ROOT
"""
import html
import html.parser
import pathlib
import re
import sys

VOID = {"meta", "link", "img", "br", "hr"}
INDEX = "index.html"
COMMANDS = "src/mainwin/commandTable.cpp"


class Page(html.parser.HTMLParser):
    """What the other checks need of a page; `problems` are its own."""

    def __init__(self, path):
        super().__init__()
        self.problems, self.open, self.ids = [], [], set()
        self.links, self.files, self.rows, self.title = [], [], [], ""
        self.feed(path.read_text(encoding="utf-8"))
        self.close()
        self.problems += [f"<{tag}> is never closed" for tag in self.open]
        if not self.title.strip():
            self.problems.append("has no title")

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if tag not in VOID:
            self.open.append(tag)
        if "id" in attributes:
            self.ids.add(attributes["id"])
        if tag == "a":
            self.links.append(attributes["href"])
        if tag == "img" and not attributes.get("alt"):
            self.problems.append(f"{attributes['src']} has no text in its place")
        if tag in ("img", "link"):
            self.files.append(attributes.get("src") or attributes["href"])
        if tag == "script":
            self.problems.append("holds a script")
        if tag == "tr":
            self.rows.append([])
        if tag in ("td", "th"):
            self.rows[-1].append("")

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.problems.append(f"</{tag}> closes nothing (line {self.getpos()[0]})")

    def handle_data(self, data):
        if "title" in self.open:
            self.title += data
        if self.rows and self.rows[-1] and {"td", "th"} & set(self.open):
            self.rows[-1][-1] += data


def read_language(folder):
    return {path.name: Page(path) for path in sorted(folder.glob("*.html"))}


def wrong_links(folder, pages):
    for name, page in pages.items():
        for target in page.files + page.links:
            file, _, place = target.partition("#")
            path = folder / file if file else folder / name
            if ":" in target or not path.is_file():
                yield f"{name}: {target} leads nowhere"
            elif place and path.parent == folder and place not in pages[path.name].ids:
                yield f"{name}: {target} is no place there"


def unreachable(pages):
    seen, waiting = set(), [INDEX]
    while waiting:
        name = waiting.pop()
        if name in pages and name not in seen:
            seen.add(name)
            waiting += [link.partition("#")[0] for link in pages[name].links]
    return [f"{name}: no way leads here from {INDEX}" for name in sorted(set(pages) - seen)]


def missing_commands(table, pages):
    """Commands that stand on a menu or bar have a row of their own in the manual, and their keys too."""
    commands = re.findall(r'\{u"(mi\w+)", \d+, u"([^"]*)", u"[^"]*", u"[^"]*", u"([^"]*)", Kind::\w+, u"(\w*)"', table)
    rows = {(row[0].strip(), row[1].strip()) for page in pages.values() for row in page.rows if len(row) > 1}
    menus = set(re.search(r"mbGeneral\[\] = \{(.*?)\}", table, re.DOTALL).group(1).replace('u"', "").replace('"', "")
                .replace(",", " ").split())
    shown = [row for row in commands if table.count(f'u"{row[0]}') > 1 and row[0] not in menus]
    if len(shown) < 50:
        yield f"only {len(shown)} commands found in the table"
    for name, caption, key, _ in shown:
        plain = re.sub(r"\(&.\)", "", caption).removesuffix("...")
        if (plain, key) not in rows:
            yield f"{name}: no row for {plain} with the key {key or '(none)'}"


def missing_messages(root):
    """What the program says when something failed or is done stands on the page of messages."""
    page = html.unescape((root / "help/ja/messages.html").read_text(encoding="utf-8"))
    for path in sorted(set(root.glob("src/**/*.cpp")) - {root / COMMANDS}):
        for text in re.findall(r'u"([^（"]*?(?:ません|ました)。)', path.read_text(encoding="utf-8")):
            parts = re.split(r"%L?\d|\\r|\\n", text)
            yield from (f"{path.name}: no message {part}" for part in parts if part.strip() not in page)


def main():
    root = pathlib.Path(sys.argv[1])
    languages = {folder.name: read_language(folder) for folder in sorted((root / "help").iterdir())
                 if (folder / INDEX).is_file()}
    found = [] if {"ja", "en"} <= set(languages) else ["a language is missing"]
    used = set()
    for language, pages in languages.items():
        folder = root / "help" / language
        own = [f"{name}: {problem}" for name, page in pages.items() for problem in page.problems]
        own += [*wrong_links(folder, pages), *unreachable(pages)]
        own += [f"{name}: is not in every language" for other in languages.values() for name in set(pages) - set(other)]
        used |= {(folder / file).resolve() for page in pages.values() for file in page.files}
        found += [f"{language}: {problem}" for problem in own]
    found += missing_commands((root / COMMANDS).read_text(encoding="utf-8"), languages["ja"])
    found += missing_messages(root)
    pictures = set((root / "help/pictures").resolve().glob("*"))
    found += [f"{path.name}: no page shows this picture" for path in sorted(pictures - used)]
    found += ["the pictures have more than 2 MB"] * (sum(path.stat().st_size for path in pictures) > 2 << 20)
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
