#include "platform/toldeko/tela_win32.h"

void DisegnaTratti(HWND controllo, const std::vector<TTratto>& tratti)
{
    HDC dc = GetDC(controllo);
    if (!dc) return;
    for (const TTratto& t : tratti) {
        HPEN penna = CreatePen(PS_SOLID, 0, t.colore);
        HGDIOBJ prima = SelectObject(dc, penna);
        SetROP2(dc, t.modo);
        MoveToEx(dc, t.x0, t.y0, nullptr);
        LineTo(dc, t.x1, t.y1);
        SelectObject(dc, prima);
        DeleteObject(penna);
    }
    ReleaseDC(controllo, dc);
}

void DipingiTela(HDC dc, const TTela& tela)
{
    if (tela.Vuota()) return;
    // A top-down 32-bit DIB holds 0x00RRGGBB; the canvas 0x00BBGGRR.
    std::vector<DWORD> righe(tela.pixel.size());
    for (std::size_t i = 0; i < righe.size(); ++i) {
        const std::uint32_t c = tela.pixel[i];
        righe[i] = (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF);
    }
    BITMAPINFO bmi{};
    bmi.bmiHeader.biSize = sizeof bmi.bmiHeader;
    bmi.bmiHeader.biWidth = tela.larghezza;
    bmi.bmiHeader.biHeight = -tela.altezza;
    bmi.bmiHeader.biPlanes = 1;
    bmi.bmiHeader.biBitCount = 32;
    bmi.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(tela.larghezza), static_cast<DWORD>(tela.altezza), 0, 0, 0,
                      static_cast<UINT>(tela.altezza), righe.data(), &bmi, DIB_RGB_COLORS);
}
