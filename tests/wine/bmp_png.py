#!/usr/bin/env python3
"""Turns a 24-bit bottom-up BMP into a PNG, with the standard library only."""
import struct
import sys
import zlib


def blocco(tipo, contenuto):
    return struct.pack(">I", len(contenuto)) + tipo + contenuto + struct.pack(">I", zlib.crc32(tipo + contenuto))


with open(sys.argv[1], "rb") as f:
    dati = f.read()
inizio = struct.unpack_from("<I", dati, 10)[0]
larghezza, altezza = struct.unpack_from("<ii", dati, 18)
passo = (larghezza * 3 + 3) & ~3
righe = []
for y in reversed(range(altezza)):  # the top row, last in the file, first
    riga = bytearray(dati[inizio + y * passo:inizio + y * passo + larghezza * 3])
    riga[0::3], riga[2::3] = riga[2::3], riga[0::3]  # BGR to RGB
    righe.append(b"\0" + riga)
with open(sys.argv[2], "wb") as f:
    f.write(b"\x89PNG\r\n\x1a\n")
    f.write(blocco(b"IHDR", struct.pack(">IIBBBBB", larghezza, altezza, 8, 2, 0, 0, 0)))
    f.write(blocco(b"IDAT", zlib.compress(b"".join(righe), 9)))
    f.write(blocco(b"IEND", b""))
