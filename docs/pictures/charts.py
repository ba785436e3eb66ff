#!/usr/bin/env python3
"""Draws the charts of the pages from their own tables, so that both say the same.   charts.py [--check]

With --check nothing is drawn; the status is 1 where a table is another than when its chart was drawn.
"""
import hashlib
import io
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent
DOCS = HERE.parent
# Page and heading of the table, its columns that are drawn, what the axis says; log: whether by powers of ten.
CHARTS = {
    "speed.svg": dict(page="performance.md", heading="Prose", columns=["libjkc", "iconv told", "ICU told", "uchardet + iconv"],
                      axis="MB/s of prose: the more the better. iconv and ICU are told the source, libjkc judges it"),
    "judging.svg": dict(page="performance.md", heading="Judging alone, prose", log=True,
                        columns=["libjkc", "uchardet, whole text", "ucsdet"], axis="MB/s of prose, by powers of ten: the more the better"),
    "accuracy.svg": dict(page="decision.md", heading="How often it is right", missing=True,
                         columns=["prose: right", "markup: right", "dictionaries: right"],
                         axis="not decided rightly, of 100,000 pieces of 4 to 300 bytes: the less the better"),
}
# In light and in dark surroundings. Text and axes are in the first colour.
LIGHT = ["#1d2328", "#0a6c74", "#d07a1c", "#8257a8", "#8a949c"]
DARK = ["#dfe3e7", "#45b8c2", "#f0a04b", "#b794e0", "#78838c"]
GRID = "#d5dadf", "#363d43"


def number(cell):
    found = re.match(r"[\d,.]+", cell)
    return float(found[0].replace(",", "")) if found else None


def table(page, heading):
    """The head and the rows of the first table below a heading."""
    text = (DOCS / page).read_text()
    found = re.search(rf"^#+ {re.escape(heading)}$[\s\S]*?\n\n((?:\|.*\n)+)", text, re.M)
    rows = [[cell.strip() for cell in line.strip()[1:-1].split("|")] for line in found[1].splitlines()]
    return rows[0], rows[2:]


def data_of(chart):
    head, rows = table(chart["page"], chart["heading"])
    places = [head.index(column) for column in chart["columns"]]
    values = {row[0]: [number(row[place]) for place in places] for row in rows}
    if chart.get("missing"):
        values = {name: [round((100 - value) * 1000) for value in row] for name, row in values.items()}
    return values


def digest(chart):
    return hashlib.sha256(repr((data_of(chart), chart["columns"], chart["axis"])).encode()).hexdigest()[:16]


def draw(chart):
    import matplotlib
    matplotlib.use("svg")
    matplotlib.rcParams.update({"svg.hashsalt": "libjkc", "svg.fonttype": "none", "font.family": "sans-serif",
                                "font.sans-serif": ["DejaVu Sans"], "font.size": 9, "axes.edgecolor": LIGHT[0],
                                "text.color": LIGHT[0], "axes.labelcolor": LIGHT[0], "xtick.color": LIGHT[0],
                                "ytick.color": LIGHT[0]})
    from matplotlib import pyplot

    values, columns = data_of(chart), chart["columns"]
    high = 0.8 / len(columns)
    figure, axes = pyplot.subplots(figsize=(7.2, 0.9 + len(values) * (0.17 * len(columns) + 0.14)))
    for place, column in enumerate(columns):
        heights = [row + (place - (len(columns) - 1) / 2) * high for row in range(len(values))]
        bars = [row[place] or 0 for row in values.values()]
        axes.barh(heights, bars, high * 0.92, color=LIGHT[place + 1], label=column.split(":")[0])
        for y, value in zip(heights, bars):
            axes.annotate(f"{value:.0f}", (max(value, 1), y), (3, 0), textcoords="offset points", va="center", fontsize=7)
    axes.set_yticks(range(len(values)), values)
    axes.margins(y=0.01)
    axes.invert_yaxis()
    if chart.get("log"):
        axes.set_xscale("log")
        axes.set_xlim(left=1)
    axes.set_xlabel(chart["axis"], fontsize=8)
    axes.grid(axis="x", color=GRID[0], linewidth=0.6)
    axes.set_axisbelow(True)
    for side in ("top", "right", "left"):
        axes.spines[side].set_visible(False)
    axes.tick_params(length=0)
    figure.legend(loc="upper left", ncol=len(columns), frameon=False, fontsize=8)
    figure.tight_layout(rect=(0, 0, 1, 1 - 0.28 / figure.get_figheight()))
    out = io.StringIO()
    figure.savefig(out, format="svg", transparent=True, metadata={"Date": None, "Creator": None})
    pyplot.close(figure)
    return adapted(out.getvalue(), chart)


def adapted(svg, chart):
    """With the colours of dark surroundings, and without places of numbers that nobody sees."""
    rules = "".join(f'[style*="{what}: {light}"] {{ {what}: {dark} !important }}\n'
                    for light, dark in zip([*LIGHT, GRID[0]], [*DARK, GRID[1]]) for what in ("fill", "stroke"))
    style = f"<style>@media (prefers-color-scheme: dark) {{\n{rules}}}</style>\n"
    svg = re.sub(r"(<svg[^>]*>\n)", rf"\1 <!-- data: {digest(chart)} -->\n {style}", svg, count=1)
    svg = re.sub(r" <metadata>.*?</metadata>\n", "", svg, flags=re.S)
    return re.sub(r"[ ]+\n", "\n", svg)


def main():
    stale = []
    for name, chart in CHARTS.items():
        if sys.argv[1:] != ["--check"]:
            (HERE / name).write_text(draw(chart))
        elif f"data: {digest(chart)}" not in (HERE / name).read_text():
            stale.append(name)
    if stale:
        sys.exit(f"the tables are other than {', '.join(stale)}: run scripts/pictures")


main()
