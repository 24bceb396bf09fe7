"""The calibration report as the dialogs show it: a table of residuals and
a summary whose words say what they mean."""

from qgis.PyQt.QtGui import QBrush, QColor
from qgis.PyQt.QtWidgets import QTableWidget, QTableWidgetItem, QHeaderView

AVVISI = {
    "clustered": "The points cover under a quarter of the tablet's area: the map is weakly held away from them.",
    "collinear": "The points lie almost on one line: the map across that line is weakly held.",
    "blunder": "A point's leave-one-out residual is over three times the median one: check that point.",
    "no_redundancy": "Three points: nothing checks them. A fourth point shows their errors.",
    "node_out_of_place": "A node lies off its row and its column by over a fifth of a spacing: "
                         "was the right node pressed?",
}

COLONNE = ("X", "Y", "East", "North", "dE", "dN", "Leave-one-out dE", "Leave-one-out dN")


def numero(v, cifre=3):
    if v is None:
        return ""
    testo = "%.*f" % (cifre, v)
    return testo.lstrip("-") if float(testo) == 0 else testo  # never "-0.0000"


def riassunto(rapporto, quanti_punti=None):
    """One paragraph: the counts, RMS, standard deviation, predicted worst error, warnings."""
    if rapporto is None:
        mancano = 3 - (quanti_punti or 0)
        return "Fitted from three points on; %d more to go." % mancano if mancano > 0 else ""
    righe = ["%d %s fitted. RMS of the residuals %s; standard deviation of unit weight %s%s." % (
        len(rapporto.points), "nodes" if rapporto.kind == "grid" else "points", numero(rapporto.rms, 4),
        numero(rapporto.std_dev, 4) or "none (no redundancy)",
        "" if rapporto.predicted_worst is None else
        "; predicted error at the worst corner of the tablet %s" % numero(rapporto.predicted_worst, 4))]
    righe += ["Warning: " + AVVISI[a] for a in sorted(rapporto.warnings)]
    return "\n".join(righe)


class TabellaResidui(QTableWidget):
    """Rows of (x, y, east, north), any of them None while missing, and the
    report's residuals beside the rows that took part in the fit."""

    def __init__(self, parent=None):
        super().__init__(0, len(COLONNE), parent)
        self.setHorizontalHeaderLabels(COLONNE)
        self.setSelectionBehavior(QTableWidget.SelectRows)
        self.setSelectionMode(QTableWidget.SingleSelection)
        self.setEditTriggers(QTableWidget.NoEditTriggers)
        self.horizontalHeader().setSectionResizeMode(QHeaderView.ResizeToContents)

    def mostra(self, righe, rapporto, usate):
        """`usate`: the indices of the rows the report's points stand for, in order."""
        self.setRowCount(len(righe))
        for r, (x, y, est, nord) in enumerate(righe):
            valori = ["" if x is None else str(x), "" if y is None else str(y), numero(est), numero(nord)]
            self._riga(r, valori + [""] * 4, False)
        if rapporto is None:
            return
        for i, (r, p) in enumerate(zip(usate, rapporto.points)):
            valori = [str(p.x), str(p.y), numero(p.east), numero(p.north), numero(p.residual_east, 4),
                      numero(p.residual_north, 4), numero(p.loo_east, 4), numero(p.loo_north, 4)]
            self._riga(r, valori, i in rapporto.worst)

    def _riga(self, r, valori, peggiore):
        for c, testo in enumerate(valori):
            voce = QTableWidgetItem(testo)
            if peggiore:
                voce.setBackground(QBrush(QColor(255, 230, 200)))
            self.setItem(r, c, voce)
