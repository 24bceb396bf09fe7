"""The tablet of the set-up: made from it, its port mapped, its stored
calibration fitted again."""

import velmarin


def crea(impostazione):
    """A velmarin.Tablet for `impostazione`; the stored calibration is put
    back if it still fits (else the tablet starts uncalibrated)."""
    if impostazione.dispositivo:
        velmarin.map_port(impostazione.porta, impostazione.dispositivo)
    tavoletta = velmarin.Tablet(impostazione.modello, impostazione.porta, **impostazione.record)
    if impostazione.calibrazione:
        try:
            applica(tavoletta, impostazione.calibrazione)
        except (velmarin.VelmarinError, ValueError, TypeError, KeyError):
            impostazione.calibrazione = None
    return tavoletta


def applica(tavoletta, calibrazione):
    """Fits `calibrazione` (as Impostazione.calibrazione holds it) on `tavoletta`."""
    if calibrazione["kind"] == "points":
        tavoletta.fit_points(calibrazione["points"])
    else:
        tavoletta.fit_grid(*calibrazione["grid"], calibrazione["nodes"])


def ripristina(tavoletta, calibrazione):
    """Puts back the calibration the set-up keeps, after trial fits: the
    calibration dialogs fit on the tablet in use, as another tablet object
    would silence its connection."""
    if calibrazione:
        applica(tavoletta, calibrazione)
    else:
        tavoletta.forget_calibration()
