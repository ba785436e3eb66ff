#!/usr/bin/env python3
"""Runs the commands that pages show, and compares what they print.   console.py PREFIX PAGE...

PREFIX is where libjkc is installed; pages name /usr/local. A block of the language console has commands behind "$ " and
what they print; "..." stands for any lines. Each page has a folder of its own with the examples, in which its commands run
one after the other. A block of another language that begins with the name of a file, as a comment, is that file there.
Pages in Japanese (ja/, .ja.md) run in a Japanese locale; without one they are passed over, and the status is 77. So is a
page with the comment <!-- needs COMMAND --> where there is no such command.
With JKC_UPDATE=1 in the environment, pages get what was printed wherever they show something else.
"""
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.M | re.S)
NEEDED = re.compile(r"^<!-- needs (\S+) -->$", re.M)
NAMED = re.compile(r"(?:/\*|//|#) ([\w.-]+\.\w+)(?: \*/)?\n")


def is_japanese(page):
    return page.parent.name == "ja" or page.name.endswith(".ja.md")


def japanese_locale(folder):
    """The variables that select one made there, or None."""
    made = shutil.which("localedef") and subprocess.run(
        ["localedef", "-i", "ja_JP", "-f", "UTF-8", f"{folder}/ja_JP.UTF-8"], capture_output=True).returncode == 0
    return {"LOCPATH": str(folder), "LC_ALL": "ja_JP.UTF-8"} if made else None


def commands_of(block):
    """Commands, each with the lines it is to print. A command goes on behind a backslash."""
    found = []
    for line in block.splitlines():
        if line.startswith("$ "):
            found.append([line[2:], []])
        elif found and not found[-1][1] and found[-1][0].endswith("\\"):
            found[-1][0] += "\n" + line
        else:
            found[-1][1].append(line)
    for _, lines in found:
        while lines and not lines[-1]:
            lines.pop()
    return found


def run(commands, prefix, folder, locale):
    """What each of the commands prints, in the same shell."""
    separator = "-- next --"
    script = "".join(f"{c}\nprintf '%s\\n' '{separator}'\n" for c in commands).replace("/usr/local", str(prefix))
    environment = os.environ | {"PATH": f"{prefix}/bin:{os.environ['PATH']}", "LD_LIBRARY_PATH": f"{prefix}/lib",
                                "PKG_CONFIG_PATH": f"{prefix}/lib/pkgconfig", "TZ": "UTC"} | locale
    output = subprocess.run(["bash", "-c", script], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout.decode(errors="replace")
    pieces = output.replace(str(prefix), "/usr/local").split(separator + "\n")
    return [[line.rstrip() for line in piece.splitlines()] for piece in pieces[:-1]]


def matches(shown, printed):
    pattern = "".join(r"(?:.*\n)*" if line == "..." else re.escape(line) + "\n" for line in shown)
    return re.fullmatch(pattern, "".join(line + "\n" for line in printed))


def run_page(page, prefix, locale):
    """How many commands it has, and how many of them print something else."""
    blocks = BLOCK.findall(page.read_text())
    shown = [command for language, block in blocks if language == "console" for command in commands_of(block)]
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(EXAMPLES, folder, dirs_exist_ok=True)
        for language, block in blocks:
            name = NAMED.match(block)
            if name:
                pathlib.Path(folder, name[1]).write_text(block)
        printed = run([command for command, _ in shown], prefix, folder, locale)
    failed = 0
    printed += [["(not run: the shell has ended)"]] * (len(shown) - len(printed))
    for (command, lines), output in zip(shown, printed):
        if not matches(lines, output):
            failed += 1
            if os.environ.get("JKC_UPDATE"):
                head = f"$ {command}\n"
                old, new = ("".join(line + "\n" for line in part) for part in (lines, output))
                page.write_text(page.read_text().replace(head + old, head + new, 1))
            print(f"{page}: $ {command}")
            print("\n".join(difflib.unified_diff(lines, output, "shown", "printed", lineterm="", n=1)))
    return len(shown), failed


def main():
    prefix, pages = pathlib.Path(sys.argv[1]).resolve(), [pathlib.Path(page) for page in sys.argv[2:]]
    status = 0
    with tempfile.TemporaryDirectory() as folder:
        locale = japanese_locale(folder)
        for page in pages:
            missing = [name for name in NEEDED.findall(page.read_text()) if not shutil.which(name)]
            if is_japanese(page) and locale is None:
                missing.append("Japanese locale")
            if missing:
                print(f"{page}: passed over, there is no {', '.join(missing)}")
                status = status or 77
                continue
            count, failed = run_page(page, prefix, locale if is_japanese(page) else {"LC_ALL": "C.UTF-8"})
            print(f"{page}: {count} commands, {failed} print something else")
            status = 1 if failed or not count else status
    sys.exit(status)


if __name__ == "__main__":
    main()
