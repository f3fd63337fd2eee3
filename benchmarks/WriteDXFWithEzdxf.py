#!/usr/bin/env python3
"""Writes the curves of BenchDXFWriting.cpp with the r12writer of ezdxf, and prints how many seconds that took.

usage: WriteDXFWithEzdxf.py FILE POINTS POINTS_IN_CURVE
"""
import math
import sys
import time

from ezdxf.addons.r12writer import r12writer


def make_curves(count, in_curve):
    for first in range(0, count, in_curve):
        radius = 100.0 + 0.005 * first
        angles = [6.283185307 * i / in_curve for i in range(in_curve)]
        yield [(radius * math.cos(a), radius * math.sin(a), 0.0001 * radius * radius) for a in angles]


name, count, in_curve = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
curves = list(make_curves(count, in_curve))
start = time.perf_counter()
with r12writer(name) as dxf:
    for curve in curves:
        dxf.add_polyline(curve, closed=True, layer="1", color=0)
print(time.perf_counter() - start)
