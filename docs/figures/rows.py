"""Points as rows and rigid transforms, as the library has them: p * M, and A * B does A first.

Written for the pictures alone, so that what they show is worked out a second time beside the library.
"""
from math import cos, radians, sin, sqrt


def add(a, b):
    return tuple(u + v for u, v in zip(a, b))


def sub(a, b):
    return tuple(u - v for u, v in zip(a, b))


def mul(a, factor):
    return tuple(u * factor for u in a)


def dot(a, b):
    return sum(u * v for u, v in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    return mul(a, 1 / sqrt(dot(a, a)))


def turned(p, direction, degrees, base=(0, 0, 0)):
    """p turned about the line through base along direction, right-handed: about +Z, +90 takes +X to +Y."""
    u = unit(direction)
    c, s = cos(radians(degrees)), sin(radians(degrees))
    q = sub(p, base)
    q = add(add(mul(q, c), mul(cross(u, q), s)), mul(u, dot(u, q) * (1 - c)))
    return add(q, base)
