"""Things in space, seen from a distance: points are projected in parallel, X to the lower right, Z up."""
from math import cos, radians, sin

from rows import add, mul, turned

X, Y, Z, ORIGIN = (1, 0, 0), (0, 1, 0), (0, 0, 1), (0, 0, 0)


class Space:
    """Draws into a picture what it is given in space."""

    def __init__(self, picture, scale=1.0, azimuth=-62, elevation=24):
        self.picture = picture
        a, e = radians(azimuth), radians(elevation)
        self._right = mul((-sin(a), cos(a), 0), scale)
        self._up = mul((-cos(a) * sin(e), -sin(a) * sin(e), cos(e)), scale)

    def at(self, p):
        return (sum(u * v for u, v in zip(p, self._right)), -sum(u * v for u, v in zip(p, self._up)))

    def line(self, points, css="", closed=False):
        self.picture.line([self.at(p) for p in points], css, closed)

    def arrow(self, points, css=""):
        self.picture.arrow([self.at(p) for p in points], css)

    def dot(self, p, css=""):
        self.picture.dot(self.at(p), css)

    def text(self, p, words, css="", anchor="start", shift=(0, 0)):
        x, y = self.at(p)
        self.picture.text((x + shift[0], y + shift[1]), words, css, anchor)

    def frame(self, origin, directions, length):
        """Three arrows, or two, each with its letter and in its colour."""
        for letter, direction in zip("XYZ", directions):
            end = add(origin, mul(direction, length))
            self.arrow([origin, end], letter.lower())
            self.text(add(origin, mul(direction, length * 1.09)), letter, letter.lower(), "middle", (0, 5))

    def arc(self, start, direction, degrees, base=ORIGIN, css=""):
        """The way of a point that turns about a line, with an arrow at its end."""
        steps = max(2, int(abs(degrees) / 4))
        self.arrow([turned(start, direction, degrees * i / steps, base) for i in range(steps + 1)], css)

    def circle(self, centre, direction, start, css=""):
        self.line([turned(add(centre, start), direction, 6 * i, centre) for i in range(60)], css, closed=True)


def corners(low, high):
    """The four corners of the floor and of the lid of a box, each once round."""
    floor = [(low[0], low[1]), (high[0], low[1]), (high[0], high[1]), (low[0], high[1])]
    return [p + (low[2],) for p in floor], [p + (high[2],) for p in floor]
