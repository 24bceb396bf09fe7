"""The calibration report: how well the control points fit one affine map."""

import collections
import ctypes
import math

from ._libreria import ResiduoPunto, SommarioAdattamento, lib

WARNINGS = {
    0x01: "clustered",       # the points' box covers under a quarter of the limits
    0x02: "collinear",       # the smaller spread of the counts is under a tenth of the larger
    0x04: "blunder",         # 5 points or more; a leave-one-out residual over 3 times the median
    0x08: "no_redundancy",   # three points: nothing checks them
    0x10: "node_out_of_place",  # a grid node off its row and its column by a fifth of a spacing
}

PointResidual = collections.namedtuple(
    "PointResidual", "x y east north residual_east residual_north loo_east loo_north")
PointResidual.__doc__ = """A control point (a grid's node): its counts, its ground coordinates,
its residual (given minus the affine map of all the points) and its
leave-one-out residual (given minus the map fitted without it; None where
there is none), in ground units."""


def _numero(v):
    return None if math.isnan(v) else v


class FitReport:
    """The report of a tablet's calibration in force, in ground units.

    kind: 'sparse' or 'grid'; points: PointResidual per point (a grid's nodes
    East index fastest); rms: sqrt(sum(dE^2 + dN^2) / n); std_dev, the
    standard deviation of unit weight, sqrt(sum(dE^2 + dN^2) / (2n - 6)), None
    for three points; worst: the indices of the two longest residuals;
    predicted_worst: the standard error of the fitted position at the worst
    corner of the limits, None for three points and for a grid; warnings: a
    set of names from WARNINGS."""

    def __init__(self, sommario, residui):
        self.kind = {1: "sparse", 2: "grid"}[sommario.kind]
        self.points = [PointResidual(r.x, r.y, r.east, r.north, r.residual_east, r.residual_north,
                                     _numero(r.loo_east), _numero(r.loo_north)) for r in residui]
        self.rms = sommario.rms
        self.std_dev = _numero(sommario.std_dev)
        self.worst = tuple(sommario.worst)
        self.predicted_worst = _numero(sommario.predicted_worst)
        self.warnings = {nome for bit, nome in WARNINGS.items() if sommario.warnings & bit}

    def __repr__(self):
        return "<FitReport %s, %d points, rms %.4g, warnings %s>" % (
            self.kind, len(self.points), self.rms, sorted(self.warnings) or "none")


def rapporto(maniglia):
    """The report of the tablet behind `maniglia`, None when it has no calibration."""
    sommario = SommarioAdattamento()
    n = lib.velmarin_fit_report(maniglia, ctypes.byref(sommario), None, 0)
    if n <= 0:
        return None
    residui = (ResiduoPunto * n)()
    lib.velmarin_fit_report(maniglia, None, residui, n)
    return FitReport(sommario, residui)
