"""The project's documents for users as pages that a browser shows without a network."""
import base64
import os
import re
import subprocess

# Each page comes from the document of the same name in docs/.
PAGES = ("using", "administering", "cap_does_nothing")

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{title}</title>
<style>
body {{ font: 16px/1.5 "Segoe UI", sans-serif; max-width: 54em; margin: 2em auto; padding: 0 1em; color: #222; }}
h1, h2, h3 {{ line-height: 1.25; color: #1d4f80; }}
table {{ border-collapse: collapse; }}
th, td {{ border: 1px solid #ccc; padding: .3em .6em; text-align: left; vertical-align: top; }}
code, pre {{ font-family: Consolas, monospace; background: #f3f5f7; }}
pre {{ padding: .6em; overflow-x: auto; }}
img {{ max-width: 100%; height: auto; }}
</style>
</head>
<body>
<nav>{navigation}</nav>
{body}
</body>
</html>
"""


class HelpError(Exception):
    """A document that cannot become a page."""


def body_of(document):
    return subprocess.run(["cmark-gfm", "--extension", "table", document], check=True, capture_output=True,
                          text=True).stdout


def title_of(body):
    found = re.search(r"<h1>(.*?)</h1>", body)
    if found is None:
        raise HelpError("expected a heading of the first level, found none")
    return re.sub(r"<[^>]+>", "", found.group(1))


def with_pictures(body, docs):
    """Puts the pictures into the page, so that it is one file. As images they keep their styles to themselves."""
    def picture(match):
        path = os.path.join(docs, match.group("name"))
        if not os.path.exists(path) or not path.endswith(".svg"):
            raise HelpError(f"expected the picture docs/{match.group('name')} as SVG, found none")
        with open(path, "rb") as file:
            data = base64.b64encode(file.read()).decode("ascii")
        return f'<img src="data:image/svg+xml;base64,{data}" alt="{match.group("text")}">'
    return re.sub(r'<img src="(?P<name>[^"]+)" alt="(?P<text>[^"]*)" />', picture, body)


def with_links(body):
    """Links to other pages lead to their files; those to documents that are not shipped become plain text."""
    def link(match):
        name = match.group("name")
        return f'<a href="{name}.html{match.group("place") or ""}">{match.group("text")}</a>' if name in PAGES \
            else match.group("text")
    return re.sub(r'<a href="(?P<name>[\w/.]+)\.md(?P<place>#[^"]*)?">(?P<text>.*?)</a>', link, body)


def make_pages(docs, folder):
    """Writes all pages into `folder`."""
    bodies = {name: with_links(with_pictures(body_of(os.path.join(docs, name + ".md")), docs)) for name in PAGES}
    titles = {name: title_of(body) for name, body in bodies.items()}
    os.makedirs(folder, exist_ok=True)
    for name in PAGES:
        others = [f'<a href="{other}.html">{titles[other]}</a>' for other in PAGES if other != name]
        with open(os.path.join(folder, name + ".html"), "w", encoding="utf-8", newline="\n") as file:
            file.write(PAGE.format(title=titles[name], navigation=" | ".join(others), body=bodies[name]))
