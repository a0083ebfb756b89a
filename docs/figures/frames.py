"""From the part to the machine, on a machine of each type: what a positive angle does to part and tool.

The machines are made for the pictures: C through the origin, and the other axis a little away from it.
"""
from collections import namedtuple

from picture import Picture
from rows import add, cross, dot, mul, sub, turned, unit
from space import ORIGIN, Space, X, Y, Z, corners

Axis = namedtuple("Axis", "letter on base direction degrees")
Machine = namedtuple("Machine", "type primary secondary")

P_PART = (34, 22, 40)
PART = ((-40, -26, 0), (48, 30, 40))
TOOL_LENGTH = 90

TABLE_TABLE = Machine("table-table",
                      Axis("A", "table", (0, 0, -30), X, -30), Axis("C", "table", ORIGIN, Z, 50))
HEAD_TABLE = Machine("head-table",
                     Axis("C", "table", ORIGIN, Z, 50), Axis("B", "head", (0, 0, 150), Y, 35))
HEAD_HEAD = Machine("head-head",
                    Axis("C", "head", ORIGIN, Z, 50), Axis("A", "head", (0, 0, 150), X, 35))


def part_to_mach(machine, p, base_too=True):
    """p_mach = p_part * Q(secondary, -a2) * Q(primary, -a1), of the axes on the table."""
    for axis in (machine.secondary, machine.primary):
        if axis.on == "table":
            p = turned(p, axis.direction, -axis.degrees, axis.base if base_too else ORIGIN)
    return p


def tool_in_mach(machine):
    """The tool direction as the head holds it: the axis next to the tool first."""
    d_tool = Z
    for axis in (machine.secondary, machine.primary):
        if axis.on == "head":
            d_tool = turned(d_tool, axis.direction, axis.degrees)
    return d_tool


def tool_on_part(machine):
    """The tool direction as seen from the part: out of the machine as a point goes, the primary first."""
    d_tool = tool_in_mach(machine)
    for axis in (machine.primary, machine.secondary):
        if axis.on == "table":
            d_tool = turned(d_tool, axis.direction, axis.degrees)
    return d_tool


def point_text(p):
    return "(%s)" % ", ".join("%.1f" % (v + 0.0 if abs(v) >= 0.05 else 0) for v in p)


def signed(degrees):
    return "%s%d\u00b0" % ("+" if degrees > 0 else "\u2212", abs(degrees))


def axis_text(axis):
    return "%s = %s" % (axis.letter, signed(axis.degrees))


def draw_part(space, carry, css, wash=""):
    floor, lid = ([carry(p) for p in side] for side in corners(*PART))
    for low, high in zip(floor, lid):
        space.line([low, high], css)
    space.line(floor, css, closed=True)
    space.line(lid, (css + " " + wash).strip(), closed=True)


def draw_part_frame(space, carry):
    """The axes of the part that lie elsewhere than the machine's."""
    for letter, axis in zip("xyz", (X, Y, Z)):
        end = carry(mul(axis, 64))
        if dot(sub(end, mul(axis, 64)), sub(end, mul(axis, 64))) > 1:
            space.arrow([carry(ORIGIN), end], "part")
            space.text(end, letter, "part", "middle", (4, 16) if letter != "z" else (-12, 0))


def draw_table(space, machine):
    """The axes of the table; the secondary one goes round with the primary."""
    primary, secondary = machine.primary, machine.secondary
    if secondary.on == "table":
        draw_table_axis(space, secondary,
                        lambda p: turned(p, primary.direction, -primary.degrees, primary.base))
    if primary.on == "table":
        draw_table_axis(space, primary, lambda p: p)


def draw_table_axis(space, axis, carry):
    """Its line, and the way the part goes: a positive angle shows the part turned the other way."""
    to_mach = lambda p: carry(add(axis.base, p))
    along, across = (X, Z) if axis.direction == X else (Z, X)
    low, high = (-110, 110) if axis.direction == X else (-45, 142)
    space.line([to_mach(mul(along, low)), to_mach(mul(along, high))], "axis chain")
    centre = to_mach(mul(along, high - 12))
    direction = sub(to_mach(along), to_mach(ORIGIN))
    start = sub(to_mach(mul(across, 16)), to_mach(ORIGIN))
    space.arc(add(centre, start), direction, -280 if axis.degrees > 0 else 280, centre, "axis")
    end = to_mach(mul(along, high))
    anchor, shift = ("end", -10) if space.at(end)[0] < 0 else ("start", 10)
    space.text(end, axis_text(axis), "axis", anchor, (shift, 4))


def draw_head_axis(space, axis, p_pivot, direction):
    space.line([add(p_pivot, mul(direction, -45)), add(p_pivot, mul(direction, 60))], "axis chain")
    centre = add(p_pivot, mul(direction, 48))
    start = X if direction == Z else unit(cross(direction, Z))
    space.arc(add(centre, mul(start, 14)), direction, 280 if axis.degrees > 0 else -280, centre, "axis")
    space.text(add(p_pivot, mul(direction, 60)), axis_text(axis), "axis", "start", (10, 4))


def draw_head(space, machine, p_pivot):
    """The axes of the head at the end of the tool; the secondary one is turned by the primary."""
    draw_direction = machine.secondary.direction
    if machine.primary.on == "head":
        draw_direction = turned(draw_direction, machine.primary.direction, machine.primary.degrees)
        draw_head_axis(space, machine.primary, p_pivot, machine.primary.direction)
    if machine.secondary.on == "head":
        draw_head_axis(space, machine.secondary, p_pivot, draw_direction)


def frames(machine):
    picture = Picture("From the part to the machine: %s" % machine.type,
                      "A part with all axes at 0 in grey, and turned by the axes of the table in colour, "
                      "with its frame; the tool stands on the same point of the part.")
    space = Space(picture, 1.55)
    carry = lambda p: part_to_mach(machine, p)
    turns_part = "table" in (machine.primary.on, machine.secondary.on)

    if turns_part:
        draw_part(space, lambda p: p, "faint dashed")
    draw_part(space, carry, "part", "washed")
    draw_part_frame(space, carry)
    space.frame(ORIGIN, (X, Y, Z), 112)
    draw_table(space, machine)

    p_mach = carry(P_PART)
    d_tool = tool_in_mach(machine)
    p_pivot = add(p_mach, mul(d_tool, TOOL_LENGTH))
    space.line([p_mach, p_pivot], "tool bold")
    draw_head(space, machine, p_pivot)
    if turns_part:
        space.dot(P_PART, "faint")
    space.dot(p_mach, "tool")
    space.text(add(p_mach, mul(d_tool, 0.55 * TOOL_LENGTH)), "tool", "tool", "start", (10, 4))
    space.text(p_mach, "p", "tool", "start", (9, 14))
    label_lines(space, machine, p_mach)
    return picture


def label_lines(space, machine, p_mach):
    factors = ["Q(%s, %s)" % (axis.letter, signed(-axis.degrees))
               for axis in (machine.secondary, machine.primary) if axis.on == "table"]
    lines = ["on the part     p = %s" % point_text(P_PART),
             "in the machine  %s = %s" % (" * ".join(["p"] + factors), point_text(p_mach)),
             "the tool, seen from the part   %s" % rounded(tool_on_part(machine)),
             "grey: with every axis at 0" if factors else "the head turns the tool alone"]
    space.picture.lines_below(lines)


def rounded(d):
    return "(%s)" % ", ".join("%.3f" % (v if abs(v) >= 0.0005 else 0) for v in d)


def facts():
    for machine in (TABLE_TABLE, HEAD_TABLE, HEAD_HEAD):
        words = [machine.type]
        for axis in (machine.primary, machine.secondary):
            words += [axis.letter, axis.on] + list(axis.base) + list(axis.direction) + [axis.degrees]
        yield "part_to_machine", tuple(words) + P_PART, part_to_mach(machine, P_PART)
        yield "tool_on_part", tuple(words), tool_on_part(machine)
