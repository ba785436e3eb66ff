#!/usr/bin/env python3
"""Follows every link of a site in a folder.   links.py FOLDER

Links within the site must lead to a file, and to a place in it where they name one. Nothing may be loaded from elsewhere, no
page may have a script, and no markup may be left in the text.
"""
import html.parser
import pathlib
import re
import sys
import urllib.parse

EMPTY = {"area", "base", "br", "col", "hr", "img", "input", "link", "meta", "source", "wbr"}
LEFT_OVER = re.compile(r"@ref|\]\(|</?h\d>|\*\*\w[^*]*\*\*|```|&\w+;")
OUTSIDE = re.compile(r"https?:|mailto:")


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.places, self.links, self.faults, self.open = set(), [], [], []
        self.feed(text)
        self.close()
        self.faults += [f"<{tag}> is not closed" for tag in self.open if tag not in ("p", "li", "td", "tr", "dd", "dt")]

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.places |= {values[name] for name in ("id", "name") if values.get(name)}
        self.links += [(tag, values[name]) for name in ("href", "src", "data") if values.get(name)]
        if tag == "script" or any(name.startswith("on") for name in values):
            self.faults.append(f"a script in <{tag}>")
        if tag == "img" and not values.get("alt"):
            self.faults.append(f"no text for the picture {values.get('src')}")
        if tag not in EMPTY:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if tag in self.open:
            while self.open.pop() != tag:
                pass
        elif tag not in EMPTY | {"p"}:
            self.faults.append(f"</{tag}> closes nothing")

    def handle_data(self, text):
        if "code" not in self.open:
            self.faults += [f"markup in the text: {found}" for found in LEFT_OVER.findall(text)]


def main():
    site = pathlib.Path(sys.argv[1]).resolve()
    pages = {path: Page(path.read_text()) for path in sorted(site.rglob("*.html"))}
    faults, followed, reached = [], 0, {site / "index.html"}
    for path, page in pages.items():
        faults += [(path, fault) for fault in page.faults]
        for tag, link in page.links:
            if OUTSIDE.match(link):
                if tag != "a":
                    faults.append((path, f"loads {link}"))
                continue
            followed += 1
            parts = urllib.parse.urlsplit(link)
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            reached.add(target)
            if not target.is_file() or not target.is_relative_to(site):
                faults.append((path, f"there is no {link}"))
            elif parts.fragment and urllib.parse.unquote(parts.fragment) not in pages[target].places:
                faults.append((path, f"there is no such place: {link}"))
    faults += [(path, "no page leads here") for path in pages if path not in reached]
    for path, fault in faults:
        print(f"{path.relative_to(site)}: {fault}")
    print(f"{len(pages)} pages, {followed} links followed, {len(faults)} faults")
    sys.exit(bool(faults) or not followed)


main()
