#!/usr/bin/env python3
"""Draw scale_bench's time against frame count and frame size, from its JSON, as an SVG.

plot_scale.py SCALE.json > docs/images/scale.svg
"""
import json
import math
import sys

WIDTH, HEIGHT, MARGIN = 420, 300, 56
COLOURS = {"analyse": "#1f6fb2", "save": "#b2551f", "reopen": "#3f8f3f", "renderFrame": "#7a3fa0"}
GRAPHS = (("frames", ("analyse", "save", "reopen"), "frames of 64 x 36"),
          ("pixels", ("renderFrame",), "pixels a frame"))


def series(runs, name, counter):
    points = [(run[counter], run["cpu_time"] if name == "analyse" else run["least_us"] / 1000)
              for run in runs if run["name"].split("/")[0] == name]
    return sorted(points)


def graph(runs, left, counter, names, label):
    lines = {name: series(runs, name, counter) for name in names}
    points = [point for line in lines.values() for point in line]
    if not points:
        sys.exit(f"{sys.argv[1]} has no run with {counter}; run the whole of scale_bench.")
    spans = [(math.floor(math.log10(min(axis))), math.ceil(math.log10(max(axis))))
             for axis in zip(*points)]

    def place(point):
        shares = [(math.log10(value) - low) / (high - low)
                  for value, (low, high) in zip(point, spans)]
        return (left + MARGIN + shares[0] * (WIDTH - MARGIN - 16),
                HEIGHT - MARGIN + 10 - shares[1] * (HEIGHT - MARGIN - 20))

    out = []
    for axis, (low, high) in enumerate(spans):
        for power in range(low, high + 1):
            near = [10.0 ** spans[0][0], 10.0 ** spans[1][0]]
            far = [10.0 ** spans[0][1], 10.0 ** spans[1][1]]
            near[axis] = far[axis] = 10.0 ** power
            (x0, y0), (x1, y1) = place(near), place(far)
            out.append(f'<path d="M{x0:.1f} {y0:.1f}L{x1:.1f} {y1:.1f}" stroke="#ddd"/>')
            text = f"{10.0 ** power:g}"
            out.append(f'<text x="{x0 - 6:.1f}" y="{y0 + 4:.1f}" text-anchor="end">{text}</text>'
                       if axis else f'<text x="{x0:.1f}" y="{y0 + 16:.1f}" '
                       f'text-anchor="middle">{text}</text>')
    for row, (name, line) in enumerate(lines.items()):
        path = "L".join("{:.1f} {:.1f}".format(*place(point)) for point in line)
        out.append(f'<path d="M{path}" fill="none" stroke="{COLOURS[name]}" stroke-width="2"/>')
        out.append(f'<text x="{left + MARGIN + 12}" y="{26 + 16 * row}" '
                   f'fill="{COLOURS[name]}">{name}, ms</text>')
    out.append(f'<text x="{left + WIDTH / 2 + 20}" y="{HEIGHT - 8}" '
               f'text-anchor="middle">{label}</text>')
    return out


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{2 * WIDTH}" height="{HEIGHT}" '
          'font-family="sans-serif" font-size="11">')
    print(f'<rect width="{2 * WIDTH}" height="{HEIGHT}" fill="white"/>')
    for index, shape in enumerate(GRAPHS):
        print("\n".join(graph(runs, index * WIDTH, *shape)))
    print("</svg>")


if __name__ == "__main__":
    main()
