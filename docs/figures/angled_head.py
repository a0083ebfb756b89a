"""The angled head: its two angles, its two lengths, and the tip that follows from them."""
from picture import Picture
from rows import add, mul, sub, turned
from space import ORIGIN, Space, X, Y, Z

TILT, TURN = 40, 30  # degrees
LENGTHS = (70, 95)


def geometry():
    """Tip, tool direction and reference direction: a tilt about Y, then a turn about Z."""
    place = lambda d: turned(turned(d, Y, TILT), Z, TURN)
    tip = add(turned((0, 0, LENGTHS[0]), Z, TURN), place((0, 0, LENGTHS[1])))
    return tip, place(Z), place(X)


def angled_head():
    tip, tool_dir, ref_dir = geometry()
    picture = Picture("The angles of an angled head",
                      "The tilt leads from +Z towards +X, about Y; the turn leads the tilted spindle about "
                      "Z. The tip leads from the tool reference point back to the mounting point.")
    space = Space(picture, 1.6, azimuth=-70, elevation=28)

    # All goes back from the tool reference point to the mounting point, as the tool direction does.
    reference = ORIGIN
    joint = add(reference, mul(tool_dir, LENGTHS[1]))
    mount = add(joint, (0, 0, LENGTHS[0]))
    untilted = sub(joint, (0, 0, LENGTHS[1]))
    tilted = sub(joint, mul(turned(Z, Y, TILT), LENGTHS[1]))

    space.line([joint, untilted], "faint dashed")
    space.line([joint, tilted], "faint dashed")
    space.arc(untilted, Y, TILT, joint, "y")
    space.text(untilted, "tilt %d\u00b0 about Y" % TILT, "y", "start", (10, 0))
    space.arc(tilted, Z, TURN, joint, "z")
    space.text(turned(tilted, Z, TURN / 2, joint), "turn %d\u00b0 about Z" % TURN, "z", "end", (-12, -8))

    space.line([mount, joint], "bold")
    space.text(mul(add(mount, joint), 0.5), "first length %d" % LENGTHS[0], "", "start", (12, 4))
    space.line([joint, reference], "bold")
    space.text(mul(add(joint, reference), 0.5), "second length %d" % LENGTHS[1], "", "start", (14, 18))
    for p, name in ((mount, "mounting point"), (joint, "tilt joint"), (reference, "tool reference point")):
        space.dot(p)
        space.text(p, name, "", *(("end", (-10, 16)) if p == reference else ("start", (12, 4))))
    space.arrow([reference, sub(mount, mul(tip, 0.02))], "part dashed")
    space.text(mul(tip, 0.5), "tip", "part", "end", (-10, 4))
    space.arrow([reference, mul(tool_dir, 42)], "tool bold")
    space.text(mul(tool_dir, 42), "tool direction", "tool", "end", (-10, -4))
    space.arrow([reference, mul(ref_dir, 42)], "x")
    space.text(mul(ref_dir, 42), "reference direction", "x", "start", (8, 16))
    space.frame(add(mount, (-120, -40, -60)), (X, Y, Z), 34)
    picture.lines_below(["tip                  (%.1f, %.1f, %.1f)" % tip,
                         "tool direction       (%.3f, %.3f, %.3f)" % tool_dir,
                         "reference direction  (%.3f, %.3f, %.3f)" % ref_dir])
    return picture


def facts():
    tip, tool_dir, ref_dir = geometry()
    yield "head", (TURN, TILT) + LENGTHS, tip + tool_dir + ref_dir
