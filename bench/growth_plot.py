"""Draws the cost of an object by the number of objects, clients or blocks, as SVG."""

import math

WIDTH, HEIGHT = 400, 250
LEFT, TOP, RIGHT, BOTTOM = 52, 34, 30, 44
LOW, LEAST_HIGH = 0.7, 1.6
LINES = [("instructions", "#1b6ca8"), ("memory", "#3f8f3f"), ("time", "#c0562b")]


def highest(curves):
    """The end of the scale, which is the same for all families: above every ratio."""
    ratios = [value / curve[what][0] for curve in curves for what, _ in LINES for value in curve[what]]
    return max(LEAST_HIGH, math.ceil(5 * max(ratios)) / 5)


def panel(curve, x, y, high):
    """One family: each cost divided by that of the smallest size, over the size. The band of 10 % is shaded."""
    sizes = curve["sizes"]
    span = math.log10(sizes[-1] / sizes[0]) or 1
    inner_width, inner_height = WIDTH - LEFT - RIGHT, HEIGHT - TOP - BOTTOM

    def across(size):
        return x + LEFT + inner_width * math.log10(size / sizes[0]) / span

    def up(ratio):
        return y + TOP + inner_height * (high - max(ratio, LOW)) / (high - LOW)

    parts = [f'<text x="{x + LEFT}" y="{y + 20}" class="title">{curve["title"]}</text>',
             f'<rect x="{x + LEFT}" y="{up(1.1):.1f}" width="{inner_width}" height="{up(0.9) - up(1.1):.1f}" class="flat"/>']
    for tenth in range(round(LOW * 10), round(high * 10) + 1):
        if tenth % 2 == 0:
            ratio = tenth / 10
            parts.append(f'<line x1="{x + LEFT}" y1="{up(ratio):.1f}" x2="{x + LEFT + inner_width}" y2="{up(ratio):.1f}" class="grid"/>'
                         f'<text x="{x + LEFT - 8}" y="{up(ratio) + 4:.1f}" class="left">{ratio:.1f}</text>')
    for size in sizes:
        parts.append(f'<text x="{across(size):.1f}" y="{y + HEIGHT - BOTTOM + 18}" class="below">{size:,}</text>')
    for what, colour in LINES:
        values = curve[what]
        points = [(across(size), up(value / values[0])) for size, value in zip(sizes, values)]
        path = " ".join(f"{px:.1f},{py:.1f}" for px, py in points)
        parts.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        parts += [f'<circle cx="{px:.1f}" cy="{py:.1f}" r="3" fill="{colour}"/>' for px, py in points]
    return "\n".join(parts)


def growth_plot(curves):
    """The SVG of all families, two in a row. Each has a title, sizes, and for every cost a list with one per size."""
    rows = (len(curves) + 1) // 2
    width, height = 2 * WIDTH, rows * HEIGHT + 34
    high = highest(curves)
    panels = [panel(curve, index % 2 * WIDTH, index // 2 * HEIGHT, high) for index, curve in enumerate(curves)]
    legend = []
    for index, (what, colour) in enumerate(LINES):
        x, y = LEFT + 120 * index, rows * HEIGHT + 14
        legend.append(f'<line x1="{x}" y1="{y}" x2="{x + 24}" y2="{y}" stroke="{colour}" stroke-width="2"/>'
                      f'<text x="{x + 30}" y="{y + 4}">{what}</text>')
    legend.append(f'<text x="{LEFT + 120 * len(LINES)}" y="{rows * HEIGHT + 18}">'
                  "per object, as a multiple of the smallest size's</text>")
    style = ("text { font: 12px sans-serif; fill: #333 } .title { font-weight: bold } .left { text-anchor: end } "
             ".below { text-anchor: middle } .grid { stroke: #ddd } .flat { fill: #eef3ea }")
    body = "\n".join([*panels, *legend])
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">\n'
            f'<style>{style}</style>\n<rect width="{width}" height="{height}" fill="#fff"/>\n{body}\n</svg>\n')
