"""A digitized feature as the geometry a layer takes: points into point
layers, lines and polylines into line layers, polygons into polygon layers
(and into line layers, as the closed line they are). Anything else is
refused with the reason, and nothing is added."""

from qgis.core import QgsGeometry, QgsWkbTypes

_STRATI = {QgsWkbTypes.PointGeometry: "point", QgsWkbTypes.LineGeometry: "line",
           QgsWkbTypes.PolygonGeometry: "polygon"}
_ACCETTA = {"point": {"point"}, "line": {"line", "polyline", "polygon"}, "polygon": {"polygon"}}
_SERVE = {"point": "a point layer", "line": "a line layer", "polyline": "a line layer",
          "polygon": "a polygon or line layer"}


class Rifiuto(Exception):
    """A feature the layer cannot take; str() says why, for the user."""


def geometria(genere, vertici, strato):
    """The QgsGeometry of a feature of kind `genere` with `vertici`
    (QgsPointXY in the layer's CRS; a polygon's last on its first, as the
    session gives it) for the vector layer `strato`, in its own WKB type
    (multi, Z and M as the layer has them)."""
    tipo = strato.wkbType()
    if genere not in _ACCETTA.get(_STRATI.get(QgsWkbTypes.geometryType(tipo)), ()):
        raise Rifiuto("A %s cannot go into \u201c%s\u201d, which holds %s: make %s active and "
                      "digitize it again." % (genere, strato.name(), _descrivi(tipo), _SERVE[genere]))
    if genere == "point":
        g = QgsGeometry.fromPointXY(vertici[0])
    elif QgsWkbTypes.geometryType(tipo) == QgsWkbTypes.PolygonGeometry:
        g = QgsGeometry.fromPolygonXY([vertici])
    else:
        g = QgsGeometry.fromPolylineXY(vertici)
    if QgsWkbTypes.isMultiType(tipo):
        g.convertToMultiType()
    if QgsWkbTypes.hasZ(tipo):
        g.get().addZValue(0)
    if QgsWkbTypes.hasM(tipo):
        g.get().addMValue(0)
    return g


def _descrivi(tipo):
    nome = _STRATI.get(QgsWkbTypes.geometryType(tipo))
    return "%ss" % nome if nome else "no geometry"
