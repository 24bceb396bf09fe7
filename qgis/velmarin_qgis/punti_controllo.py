"""The control points of a calibration while they are taken, and their fit
after each change. A press fills the row that waits for one (a row to
redo), else opens a new row; the ground coordinates come apart, in any
order. Every complete row takes part in the fit, made on the tablet in use
(the only tablet object: another would silence its line); whoever ends the
calibration decides what stays in force."""

import velmarin

MASSIMO = 21  # the library's sparse fit takes 3 to 21 points


class PuntiControllo:
    def __init__(self, prova):
        self._prova = prova
        self.righe = []       # [x, y, east, north], None while missing
        self.attesa = None    # the row the next press fills; None: a new row
        self.usate = []       # the complete rows, in the fit's order
        self.rapporto = None  # velmarin.FitReport of the complete rows, from three on
        self.errore = ""      # why they could not be fitted

    def pressione(self, x, y):
        """The row the press filled; None when 21 rows are taken already."""
        if self.attesa is None:
            if len(self.righe) >= MASSIMO:
                return None
            self.righe.append([None] * 4)
            riga = len(self.righe) - 1
        else:
            riga, self.attesa = self.attesa, None
        self.righe[riga][:2] = [x, y]
        self._adatta()
        return riga

    def terreno(self, riga, est, nord):
        self.righe[riga][2:] = [float(est), float(nord)]
        self._adatta()

    def rifai(self, riga):
        """The row's press is taken again by the next one."""
        self.righe[riga][:2] = [None, None]
        self.attesa = riga
        self._adatta()

    def rimuovi(self, riga):
        del self.righe[riga]
        if self.attesa == riga:
            self.attesa = None
        elif self.attesa is not None and self.attesa > riga:
            self.attesa -= 1
        self._adatta()

    def punti(self):
        return [tuple(self.righe[r]) for r in self.usate]

    def _adatta(self):
        self.usate = [r for r, valori in enumerate(self.righe) if None not in valori]
        self.rapporto, self.errore = None, ""
        if len(self.usate) >= 3:
            try:
                self._prova.fit_points(self.punti())
                self.rapporto = self._prova.fit_report()
            except velmarin.VelmarinError as errore:
                self.errore = str(errore)
