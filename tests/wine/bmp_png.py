#!/usr/bin/env python3
"""Turns a 24-bit bottom-up BMP into a PNG, with the standard library only."""
import struct
import sys
import zlib


def leggi_bmp(percorso):
    with open(percorso, "rb") as f:
        dati = f.read()
    inizio = struct.unpack_from("<I", dati, 10)[0]
    larghezza, altezza, _, bit = struct.unpack_from("<iiHH", dati, 18)
    if bit != 24:
        raise ValueError(f"{percorso}: {bit} bits a pixel, not 24")
    passo = (larghezza * 3 + 3) & ~3
    righe = []
    for y in range(abs(altezza)):
        sorgente = y if altezza < 0 else abs(altezza) - 1 - y
        riga = dati[inizio + sorgente * passo:inizio + sorgente * passo + larghezza * 3]
        rgb = bytearray(riga)
        rgb[0::3], rgb[2::3] = riga[2::3], riga[0::3]  # BGR to RGB
        righe.append(bytes(rgb))
    return larghezza, abs(altezza), righe


def scrivi_png(percorso, larghezza, altezza, righe):
    def blocco(tipo, contenuto):
        return (struct.pack(">I", len(contenuto)) + tipo + contenuto +
                struct.pack(">I", zlib.crc32(tipo + contenuto) & 0xFFFFFFFF))
    grezzi = b"".join(b"\0" + r for r in righe)
    with open(percorso, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n")
        f.write(blocco(b"IHDR", struct.pack(">IIBBBBB", larghezza, altezza, 8, 2, 0, 0, 0)))
        f.write(blocco(b"IDAT", zlib.compress(grezzi, 9)))
        f.write(blocco(b"IEND", b""))


if __name__ == "__main__":
    scrivi_png(sys.argv[2], *leggi_bmp(sys.argv[1]))
