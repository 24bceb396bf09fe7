"""The serial ports of the machine."""

import collections
import os

from ._libreria import InfoPorta, lib

PortInfo = collections.namedtuple("PortInfo", "port device description busy holder")
PortInfo.__doc__ = """A serial port: `port` the COM number that opens it (mapped, or the
platform's own), None where none does; its device; a description; whether
another process holds it (busy) and, where the platform tells, which
(holder, else None)."""


def list_ports():
    """The serial ports of the machine and every port mapped with map_port,
    as PortInfo, sorted by port number, ports without one last."""
    while True:
        n = lib.velmarin_list_ports(None, 0)
        porte = (InfoPorta * max(n, 1))()
        m = lib.velmarin_list_ports(porte, n)
        if m <= n:  # none came between the two calls
            return [PortInfo(p.port or None, os.fsdecode(p.device), p.description.decode("utf-8", "replace"),
                             bool(p.busy), p.holder.decode("utf-8", "replace") or None) for p in porte[:m]]
