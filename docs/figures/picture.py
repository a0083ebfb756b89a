"""Pictures as SVG: lines, arrows, dots and text, in colours that are read on light and on dark.

A picture brings its own ground. Where the reader's system is dark, ground and colours change together, so
what is drawn never meets a ground that it was not made for.
"""
from html import escape
from math import hypot

STYLE = """
  svg { color-scheme: light dark; }
  .ground { fill: #fdfcf9; stroke: #d8d4ca; }
  g { color: #24292e; stroke: currentColor; stroke-width: 1.6; fill: none; stroke-linejoin: round; }
  .x { color: #b3261e; } .y { color: #1b7a33; } .z { color: #1f57c3; }
  .part { color: #9a5b00; } .tool { color: #5b3a8e; } .faint { color: #6b7178; } .axis { color: #0b7285; }
  .bold { stroke-width: 3.2; } .dashed { stroke-dasharray: 4 4; } .chain { stroke-dasharray: 14 4 3 4; }
  .filled, .head { fill: currentColor; } .washed { fill: currentColor; fill-opacity: 0.12; }
  text { font: 14px "DejaVu Sans", Verdana, sans-serif; fill: currentColor; stroke: none; }
  .code { font-family: "DejaVu Sans Mono", Menlo, monospace; font-size: 13px; white-space: pre; }
  .halo { stroke: #fdfcf9; stroke-width: 4; paint-order: stroke; }
  @media (prefers-color-scheme: dark) {
    .ground { fill: #1d2126; stroke: #3a4048; }
    g { color: #e3e6ea; }
    .x { color: #ff8a80; } .y { color: #7bd88f; } .z { color: #8ab4ff; }
    .part { color: #ffc069; } .tool { color: #c9a7ff; } .faint { color: #88909a; } .axis { color: #63d0e0; }
    .halo { stroke: #1d2126; }
  }
"""

MARGIN = 16
WIDTH_OF_A_SIGN = 7.9  # of text, a little more than most signs take


def number(value):
    text = "%.1f" % value
    return "0" if text == "-0.0" else text[:-2] if text.endswith(".0") else text


class Picture:
    """Everything is given in pixels, y downwards; the picture is as large as what is in it."""

    def __init__(self, title, description):
        self._title = title
        self._description = description
        self._parts = []
        self._corners = []

    def line(self, points, css="", closed=False):
        self._corners += points
        path = "M" + " L".join("%s %s" % (number(x), number(y)) for x, y in points) + (" Z" if closed else "")
        self._parts.append('<g class="%s"><path d="%s"/></g>' % (css, path))

    def arrow(self, points, css=""):
        """A line with a head at its last point."""
        (x0, y0), (x1, y1) = points[-2], points[-1]
        length = hypot(x1 - x0, y1 - y0)
        ux, uy = (x1 - x0) / length, (y1 - y0) / length
        size = 11 if "bold" in css else 9
        back = (x1 - size * ux, y1 - size * uy)
        wings = [(back[0] - side * 0.42 * size * uy, back[1] + side * 0.42 * size * ux) for side in (1, -1)]
        self.line(points[:-1] + [back], css)
        colour = " ".join(word for word in css.split() if word not in ("bold", "dashed", "chain"))
        self.line([wings[0], (x1, y1), wings[1]], colour + " head", closed=True)

    def dot(self, p, css=""):
        self._corners += [(p[0] - 5, p[1] - 5), (p[0] + 5, p[1] + 5)]
        self._parts.append('<g class="%s filled"><circle cx="%s" cy="%s" r="4"/></g>'
                           % (css, number(p[0]), number(p[1])))

    def box(self, x, y, width, height, css=""):
        self._corners += [(x, y), (x + width, y + height)]
        self._parts.append('<g class="%s"><rect x="%s" y="%s" width="%s" height="%s" rx="5"/></g>'
                           % (css, number(x), number(y), number(width), number(height)))

    def text(self, p, words, css="", anchor="start"):
        """`anchor` says which end stands at p: start, middle or end."""
        width = len(words) * WIDTH_OF_A_SIGN
        left = p[0] - {"start": 0, "middle": width / 2, "end": width}[anchor]
        self._corners += [(left, p[1] - 13), (left + width, p[1] + 5)]
        self._parts.append('<g class="%s"><text class="halo%s" x="%s" y="%s" text-anchor="%s">%s</text></g>'
                           % (css.replace("code", "").strip(), " code" if "code" in css else "",
                              number(p[0]), number(p[1]), anchor, escape(words)))

    def lines_below(self, lines):
        """Lines of text below everything that was drawn so far."""
        left = min(x for x, _ in self._corners)
        low = max(y for _, y in self._corners)
        for row, words in enumerate(lines):
            self.text((left, low + 34 + 22 * row), words, "code")

    def svg(self):
        left = min(x for x, _ in self._corners) - MARGIN
        top = min(y for _, y in self._corners) - MARGIN
        width = max(x for x, _ in self._corners) + MARGIN - left
        height = max(y for _, y in self._corners) + MARGIN - top
        frame = tuple(number(v) for v in (left, top, width, height))
        return "\n".join([
            '<svg xmlns="http://www.w3.org/2000/svg" viewBox="%s %s %s %s" width="%s" height="%s"'
            % (frame + frame[2:]) + ' role="img" aria-labelledby="title desc">',
            '<title id="title">%s</title>' % escape(self._title),
            '<desc id="desc">%s</desc>' % escape(self._description),
            "<style>%s</style>" % STYLE,
            '<rect class="ground" x="%s" y="%s" width="%s" height="%s" rx="8"/>' % frame,
        ] + self._parts + ["</svg>", ""])
