"""Right-handed axes, and which way a positive A, B and C turn."""
from picture import Picture
from rows import add, mul, turned
from space import ORIGIN, Space, X, Y, Z

NAME_SHIFTS = {"A": (4, -42), "B": (38, 26), "C": (-44, 5)}  # beside the ring, in pixels
SENSES = (("A", "X", X, Y, Z, "Y", "Z"), ("B", "Y", Y, Z, X, "Z", "X"), ("C", "Z", Z, X, Y, "X", "Y"))


def rotations():
    picture = Picture("The three axes and the three turns",
                      "Right-handed axes X, Y and Z. About each goes the turn of its letter: A about X takes "
                      "Y to Z, B about Y takes Z to X, C about Z takes X to Y.")
    space = Space(picture, 1.9)
    space.frame(ORIGIN, (X, Y, Z), 120)
    for letter, name, axis, start, end, _, _ in SENSES:
        css = name.lower()
        centre = mul(axis, 78)
        space.arc(add(centre, mul(start, 18)), axis, 300, centre, css + " bold")
        space.text(centre, letter, css, "middle", NAME_SHIFTS[letter])
        # The quarter turn from one axis to the next, near the origin.
        space.arc(mul(start, 48), axis, 88, ORIGIN, css)
    for row, (letter, name, _, _, _, from_, to) in enumerate(SENSES):
        words = "%s: +90\u00b0 about +%s takes +%s to +%s" % (letter, name, from_, to)
        picture.text((250, -150 + 26 * row), words, name.lower())
    return picture


def facts():
    """What the picture says and how it is drawn, as questions to the library with their answers."""
    for _, _, axis, start, end, _, _ in SENSES:
        yield "rotate", axis + (90,) + start, end
        yield "rotate", axis + (30,) + start, turned(start, axis, 30)
