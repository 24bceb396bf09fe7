"""Digitizing tablets on a serial line, from Python: the velmarin library's
C interface over ctypes.

    velmarin.map_port(3, "/dev/ttyUSB0")
    with velmarin.Tablet(model=5, port=3) as tablet:
        tablet.connect()
        tablet.listen(on_button=lambda button, x, y: print(button, x, y))
"""

from ._libreria import TDataDigit
from ._porte import PortInfo, list_ports
from ._rapporto import WARNINGS, FitReport, PointResidual
from ._sessione import Feature, Session
from ._errori import PortError, VelmarinError
from ._tavoletta import Tablet, check_port, function_name, map_port, model_name, model_settings, version

__version__ = version()

__all__ = ["Feature", "FitReport", "PointResidual", "PortError", "PortInfo", "Session", "TDataDigit", "Tablet",
           "VelmarinError", "WARNINGS", "check_port", "function_name", "list_ports", "map_port", "model_name",
           "model_settings", "version", "__version__"]
