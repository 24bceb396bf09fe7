// The few Windows drawing services the library calls: a device context on a
// control of a dialog, a solid pen, the raster operation, and straight
// lines. They work on the toolkit's windows, whatever the platform: what is
// drawn lands on the control's canvas (TTela, in the dialog's state), where
// tests and the text renderer read it, from whichever thread draws.
//
// On Windows the canvas is the truth behind a real window. Each line is also
// handed, as a stroke, to the view of the Win32 dialog backend, which draws
// it again on the real control with the system's own GDI (GetDC, CreatePen,
// SetROP2, SelectObject, MoveToEx, LineTo, ReleaseDC, DeleteObject) on the
// dialog's thread, the only one that may draw on it; when the control is
// exposed, the view paints it from the canvas, and strokes already in that
// canvas are not drawn again (platform/toldeko/tela_win32.cpp). So an XOR
// line drawn twice leaves the real control as it was too.
//
// As on the platform, LineTo draws from the current position up to its end
// point, leaving that point out, and moves the current position there. Lines
// are one pixel wide whatever the pen's width and are cut to the canvas, so
// any coordinates are safe. Of the raster operations all sixteen of the
// platform are honoured; the library uses R2_XORPEN, under which drawing
// the same line twice leaves the canvas as it was.
//
// Handles are checked: a context or a pen that is not live (never made, or
// already released or deleted) makes a call fail with 0 and change nothing.
// Every call may come from any thread; one lock serialises them.
#ifndef VELMARIN_DISEGNO_H
#define VELMARIN_DISEGNO_H

#include <cstdint>

#include "platform/winui.h"

using HDC = void*;
using HPEN = void*;
using HGDIOBJ = void*;
using COLORREF = std::uint32_t;  // 0x00BBGGRR

struct POINT {
    std::int32_t x, y;
};

constexpr int PS_SOLID = 0;
constexpr int R2_BLACK = 1;
constexpr int R2_NOT = 6;
constexpr int R2_XORPEN = 7;
constexpr int R2_NOP = 11;
constexpr int R2_COPYPEN = 13;
constexpr int R2_WHITE = 16;

constexpr COLORREF RGB(std::uint8_t r, std::uint8_t g, std::uint8_t b)
{
    return static_cast<COLORREF>(r) | static_cast<COLORREF>(g) << 8 | static_cast<COLORREF>(b) << 16;
}

// A context on the window `finestra`: a control of a live dialog, or the
// dialog itself. Null for any other handle. It starts at (0, 0) with
// R2_COPYPEN and a black pen. The control's canvas exists from then on.
HDC GetDC(HWND finestra);
// 1 when `dc` was a live context of `finestra`, which then goes; else 0.
int ReleaseDC(HWND finestra, HDC dc);

HPEN CreatePen(int stile, int larghezza, COLORREF colore);
// Deletes a pen; 1 if it was live. A pen still selected in a context stays
// in use there until another is selected.
int DeleteObject(HGDIOBJ oggetto);
// Selects a pen into a context; returns the previous one (null for the
// context's own black pen, and null on failure).
HGDIOBJ SelectObject(HDC dc, HGDIOBJ oggetto);
// Sets the raster operation (1 to 16); returns the previous one, 0 on failure.
int SetROP2(HDC dc, int modo);
int MoveToEx(HDC dc, std::int32_t x, std::int32_t y, POINT* precedente);
int LineTo(HDC dc, std::int32_t x, std::int32_t y);

#endif
