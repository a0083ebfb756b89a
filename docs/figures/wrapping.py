"""Wrapping: a point is turned about the rotary axis into a half-plane, and the rotary value says how far."""
from math import atan2, degrees, hypot

from picture import Picture
from rows import mul, turned
from space import ORIGIN, Space, X, Y, Z

POINT = (45, 60, 55)


def wrapped():
    """The point in the half-plane of +X, the value of C, and the radius; the axis is Z."""
    angle = degrees(atan2(POINT[1], POINT[0]))
    return turned(POINT, Z, -angle), angle, hypot(POINT[0], POINT[1])


def wrapping():
    p_wrapped, angle, radius = wrapped()
    picture = Picture("Wrapping about the rotary axis",
                      "A point is turned about the axis of C into the half-plane of +X. It keeps its height "
                      "and its distance from the axis; C takes up the angle.")
    space = Space(picture, 2.0, azimuth=-58, elevation=26)
    height = mul(Z, POINT[2])
    foot = (POINT[0], POINT[1], 0)

    plane = [(0, 0, -8), (98, 0, -8), (98, 0, 92), (0, 0, 92)]
    space.line(plane, "x washed", closed=True)
    space.text((98, 0, -8), "half-plane of +X", "x", "end", (-4, 18))
    space.frame(ORIGIN, (X, Y), 112)
    space.line([(0, 0, -18), (0, 0, 112)], "axis chain")
    space.text((0, 0, 112), "axis of C", "axis", "middle", (0, -10))
    space.circle(height, Z, (radius, 0, 0), "faint dashed")

    space.arc(POINT, Z, -angle, height, "tool bold")
    space.line([height, POINT], "part")
    space.line([height, p_wrapped], "part")
    space.text((radius / 2, 0, POINT[2]), "radius %.0f" % radius, "part", "middle", (-6, 22))
    space.line([foot, POINT], "faint dashed")
    space.line([ORIGIN, foot], "faint dashed")
    space.arc((34, 0, 0), Z, angle, ORIGIN, "z")
    space.text(turned((34, 0, 0), Z, angle / 2), "C = +%.2f\u00b0" % angle, "z", "start", (8, 8))
    space.dot(POINT, "part")
    space.text(POINT, "point (%d, %d, %d)" % POINT, "part", "start", (10, -8))
    space.dot(p_wrapped, "part")
    words = "wrapped (%d, %d, %d)" % tuple(round(v) for v in p_wrapped)
    space.text(p_wrapped, words, "part", "start", (10, 16))
    return picture


def facts():
    p_wrapped, angle, radius = wrapped()
    yield "wrap", POINT, p_wrapped + (angle, radius)
