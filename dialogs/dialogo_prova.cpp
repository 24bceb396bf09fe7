#include "dialogo_prova.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int idCornice = 2280;
constexpr int idX = 2281;
constexpr int idY = 2282;
constexpr int idBottone = 2283;
constexpr std::int32_t nessunCursore = -1000;
constexpr double limitePosizione = 1e9;
constexpr COLORREF colorePenna = 0xFFFF00;  // red 0, green 255, blue 255

// Pixels per count along an axis; 0 for limits that do not span it.
double Scala(std::int32_t pixelDa, std::int32_t pixelA, std::int32_t da, std::int32_t a)
{
    const std::int64_t conteggi = static_cast<std::int64_t>(a) - da;
    if (conteggi == 0) return 0;
    return static_cast<double>(static_cast<std::int64_t>(pixelA) - pixelDa) / static_cast<double>(conteggi);
}

std::int32_t Posizione(std::int32_t conteggio, double scala, double off)
{
    const double v = std::clamp(conteggio * scala + off, -limitePosizione, limitePosizione);
    return static_cast<std::int32_t>(v);  // toward zero
}

}  // namespace

GDigitProvaDlg::GDigitProvaDlg(GWnd* parent, CDigit* tavoletta, GModule* module, GThread* thread)
    : GDlg(parent, modelloProva, module, thread),
      cursoreX(nessunCursore),
      cursoreY(nessunCursore),
      digit(tavoletta),
      cornice(new GStatic(this, idCornice, 0, 0))
{
    TDataDigit dati{};
    if (digit) digit->GetDataDigit(dati);
    xMin = dati.xMin;
    yMin = dati.yMin;
    xMax = dati.xMax;
    yMax = dati.yMax;
}

// Every way out stops the notification before the context goes.
GDigitProvaDlg::~GDigitProvaDlg()
{
    if (digit) digit->StopCommNotification();
    if (dc) ReleaseDC(cornice->handle(), dc);
    if (penna) DeleteObject(penna);
}

void GDigitProvaDlg::setupWindow()
{
    GDlg::setupWindow();
    GRect r;
    cornice->getClientRect(r);
    const std::int32_t L = r.left + 1, T = r.top + 1, R = r.right - 1, B = r.bottom - 1;
    scalaX = Scala(L, R, xMin, xMax);
    scalaY = Scala(B, T, yMin, yMax);
    offX = L - scalaX * xMin;
    offY = B - scalaY * yMin;
    dc = GetDC(cornice->handle());
    penna = CreatePen(PS_SOLID, 0, colorePenna);
    if (digit) digit->SetCommNotificationTo(static_cast<CDigitNtfy*>(this));
}

void GDigitProvaDlg::OnCancel()
{
    if (digit) digit->StopCommNotification();
    GDlg::OnCancel();
}

void GDigitProvaDlg::NotifyMove(std::int32_t x, std::int32_t y) { NotifyButton(0, x, y); }

void GDigitProvaDlg::NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y)
{
    SetROP2(dc, R2_XORPEN);
    SelectObject(dc, penna);
    if (cursoreX != nessunCursore && cursoreY != nessunCursore) Croce(cursoreX, cursoreY);
    cursoreX = Posizione(x, scalaX, offX);
    cursoreY = Posizione(y, scalaY, offY);
    Croce(cursoreX, cursoreY);

    char testo[32];
    std::snprintf(testo, sizeof testo, "[%06d]", static_cast<int>(x));
    setDlgItemText(idX, testo);
    std::snprintf(testo, sizeof testo, "[%06d]", static_cast<int>(y));
    setDlgItemText(idY, testo);
    if (button == 0)
        setDlgItemText(idBottone, "<=>");
    else {
        std::snprintf(testo, sizeof testo, "<%d>", static_cast<int>(button));
        setDlgItemText(idBottone, testo);
    }
}

// Two strokes; LineTo leaves its end out, so each arm covers nine pixels
// centred on (cx, cy).
void GDigitProvaDlg::Croce(std::int32_t cx, std::int32_t cy)
{
    MoveToEx(dc, cx - 4, cy, nullptr);
    LineTo(dc, cx + 5, cy);
    MoveToEx(dc, cx, cy - 4, nullptr);
    LineTo(dc, cx, cy + 5);
}
