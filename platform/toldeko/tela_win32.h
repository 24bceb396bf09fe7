// What the toolkit drew on a control, put on the real control with the
// system's GDI, on the dialog's thread: the strokes as they come, and the
// whole canvas when the control is exposed.
#ifndef TOLDEKO_TELA_WIN32_H
#define TOLDEKO_TELA_WIN32_H

#include <windows.h>

#include <vector>

#include "platform/toldeko/stato_dialogo.h"

// Each stroke with a pen of its colour and its raster operation (R2_XORPEN
// for the test's cross), as LineTo drew it on the canvas.
void DisegnaTratti(HWND controllo, const std::vector<TTratto>& tratti);
// The canvas, pixel for pixel, from the control's top left.
void DipingiTela(HDC dc, const TTela& tela);

#endif
