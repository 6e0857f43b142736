"""Draws the works with a title for the picture: for each a group of bars, nanoseconds for one element."""

import math
from xml.sax.saxutils import escape

import works

SIZE = 65536
# who, its name in the legend, its class in the style
WHO = (
    ("zet", "zet", "zet"),
    ("hand", "one loop by hand, -O3 -march=native", "hand"),
    ("numpy", "numpy", "numpy"),
    ("numexpr", "numexpr", "numexpr"),
    ("muParser", "muParser, bulk mode", "muparser"),
)

WIDTH, LEFT, RIGHT, TOP = 900, 300, 70, 96
BAR, GAP = 13, 13

STYLE = """
  text { font: 13px 'DejaVu Sans', Verdana, sans-serif; fill: #24292f }
  .title { font-size: 17px; font-weight: bold }
  .small { font-size: 11px; fill: #57606a }
  .own { font-weight: bold; fill: #24292f }
  .card { fill: #ffffff; stroke: #d0d7de }
  .grid { stroke: #d8dee4 }
  .zet { fill: #d1480e } .hand { fill: #8c959f }
  .numpy { fill: #3a7ebf } .numexpr { fill: #6fb07f } .muparser { fill: #a98bc9 }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6edf3 }
    .small { fill: #9198a1 }
    .own { fill: #e6edf3 }
    .card { fill: #0d1117; stroke: #30363d }
    .grid { stroke: #262c34 }
    .zet { fill: #f0743a } .hand { fill: #6e7681 }
    .numpy { fill: #4f97db } .numexpr { fill: #579a69 } .muparser { fill: #9b7fc0 }
  }
"""


def text(x, y, content, style="", anchor="start"):
    return f'<text x="{x:.1f}" y="{y:.1f}" class="{style}" text-anchor="{anchor}">{escape(content)}</text>'


def short(value):
    """With two or three digits that count."""
    places = 3 if value < 0.1 else 2 if value < 10 else 1 if value < 100 else 0
    return f"{value:.{places}f}"


def groups(results):
    """For each work its title and the times of those who have it."""
    for work in works.WORKS:
        name = f"{work.name}, {SIZE}"
        if work.picture and name in results.times:
            yield work.picture, [(who, style, results.median(name, who) / SIZE) for who, _, style in WHO
                                 if results.median(name, who) is not None]


def legend():
    x = 20.0
    for _, label, style in WHO:
        yield f'<rect x="{x:.1f}" y="{TOP - 44}" width="12" height="12" class="{style}"/>'
        yield text(x + 18, TOP - 33, label)
        x += 44 + 7.4 * len(label)


def draw(path, results, machine):
    all_groups = list(groups(results))
    times = [time for _, bars in all_groups for _, _, time in bars]
    low = math.floor(math.log10(min(times)))
    high = math.log10(max(times)) + 0.05
    bottom = TOP + sum(len(bars) * BAR + GAP for _, bars in all_groups)
    height = bottom + 52

    def across(time):
        return LEFT + (WIDTH - LEFT - RIGHT) * (math.log10(time) - low) / (high - low)

    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" height="{height}">',
        f"<style>{STYLE}</style>",
        f'<rect x="0.5" y="0.5" width="{WIDTH - 1}" height="{height - 1}" rx="6" class="card"/>',
        text(20, 30, f"Nanoseconds for one element, tiles of {SIZE:,}: shorter is faster", "title"),
        *legend(),
    ]
    for exponent in range(low, math.floor(high) + 1):
        x = across(10.0**exponent)
        parts.append(f'<line x1="{x:.1f}" y1="{TOP - 8}" x2="{x:.1f}" y2="{bottom}" class="grid"/>')
        parts.append(text(x, bottom + 16, f"{10.0**exponent:g}", "small", "middle"))
    y = float(TOP)
    for title, bars in all_groups:
        parts.append(text(LEFT - 12, y + len(bars) * BAR / 2 + 4, title, "", "end"))
        for who, style, time in bars:
            x = across(time)
            parts.append(f'<rect x="{LEFT}" y="{y:.1f}" width="{x - LEFT:.1f}" height="{BAR - 1.5}" class="{style}"/>')
            parts.append(text(x + 5, y + BAR - 2.5, short(time), "small own" if who == "zet" else "small"))
            y += BAR
        y += GAP
    parts.append(text(20, bottom + 38, f"{machine}; one thread, medians of one run of scripts/bench.sh; logarithmic "
                      "scale. numpy's sin, cos and exp round differently.", "small"))
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(parts) + "\n</svg>\n")
