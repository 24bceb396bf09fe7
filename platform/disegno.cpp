#include "disegno.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "platform/toldeko/finestra_dialogo.h"

namespace {

struct TPenna {
    COLORREF colore;
};

struct TContesto {
    HWND finestra;
    std::int32_t x = 0, y = 0;  // the current position
    int modo = R2_COPYPEN;
    TPenna* penna = nullptr;    // null: the context's own black pen
};

std::mutex mutexDisegno;
std::unordered_map<const void*, std::unique_ptr<TContesto>> contesti;
std::unordered_map<const void*, std::unique_ptr<TPenna>> penne;
// Pens deleted while still selected somewhere stay until no context uses them.
std::unordered_map<const void*, std::unique_ptr<TPenna>> penneOrfane;

TContesto* Contesto(HDC dc)
{
    auto it = contesti.find(dc);
    return it == contesti.end() ? nullptr : it->second.get();
}

// True while some context still has the pen selected.
bool PennaScelta(const TPenna* penna)
{
    return std::any_of(contesti.begin(), contesti.end(), [&](const auto& kv) { return kv.second->penna == penna; });
}

// The sixteen raster operations: code - 1 is a truth table of pen P and
// destination D, bit 2P + D giving the result.
std::uint32_t Combina(int modo, std::uint32_t p, std::uint32_t d)
{
    const unsigned tavola = static_cast<unsigned>(modo - 1);
    std::uint32_t r = 0;
    if (tavola & 1u) r |= ~p & ~d;
    if (tavola & 2u) r |= ~p & d;
    if (tavola & 4u) r |= p & ~d;
    if (tavola & 8u) r |= p & d;
    return r & 0xFFFFFFu;
}

void Punto(TTela& t, std::int64_t x, std::int64_t y, int modo, COLORREF colore)
{
    if (x < 0 || y < 0 || x >= t.larghezza || y >= t.altezza) return;
    std::uint32_t& d = t.pixel[static_cast<std::size_t>(y * t.larghezza + x)];
    d = Combina(modo, colore, d);
}

// The pixels from (x0, y0) up to (x1, y1), the end left out. One pixel per
// step along the longer axis, the other coordinate rounded; the steps are
// walked only where they meet the canvas, so a line of any length costs at
// most the canvas's size.
void Linea(TTela& t, std::int64_t x0, std::int64_t y0, std::int64_t x1, std::int64_t y1, int modo,
           COLORREF colore)
{
    const std::int64_t dx = x1 - x0, dy = y1 - y0;
    const bool orizzontale = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t lungo = orizzontale ? dx : dy, corto = orizzontale ? dy : dx;
    const std::int64_t passi = std::llabs(lungo);
    if (passi == 0) return;
    const std::int64_t verso = lungo > 0 ? 1 : -1;
    const std::int64_t inizio = orizzontale ? x0 : y0, inizioCorto = orizzontale ? y0 : x0;
    const std::int64_t limite = orizzontale ? t.larghezza : t.altezza;
    // Steps k in [0, passi) whose long coordinate inizio + verso*k lies in [0, limite).
    std::int64_t kMin = verso > 0 ? -inizio : inizio - (limite - 1);
    std::int64_t kMax = verso > 0 ? limite - 1 - inizio : inizio;
    kMin = std::max<std::int64_t>(kMin, 0);
    kMax = std::min<std::int64_t>(kMax, passi - 1);
    for (std::int64_t k = kMin; k <= kMax; ++k) {
        // Rounded to nearest, halves away from zero.
        const std::int64_t num = 2 * corto * k;
        const std::int64_t scarto = (num >= 0 ? num + passi : num - passi) / (2 * passi);
        const std::int64_t a = inizio + verso * k, b = inizioCorto + scarto;
        if (orizzontale)
            Punto(t, a, b, modo, colore);
        else
            Punto(t, b, a, modo, colore);
    }
}

}  // namespace

HDC GetDC(HWND finestra)
{
    int indice = 0;
    TFinestraDialogo* f = TFinestraDialogo::DaManiglia(finestra, indice);
    if (!f) return nullptr;
    std::lock_guard<std::mutex> g(mutexDisegno);
    if (indice >= 0) f->Disegna(indice, [](TTela&) {});  // the window shows its face from now on
    auto c = std::make_unique<TContesto>();
    c->finestra = finestra;
    HDC dc = c.get();
    contesti.emplace(dc, std::move(c));
    return dc;
}

int ReleaseDC(HWND finestra, HDC dc)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    TContesto* c = Contesto(dc);
    if (!c || c->finestra != finestra) return 0;
    const TPenna* penna = c->penna;
    contesti.erase(dc);
    if (penna && penneOrfane.count(penna) && !PennaScelta(penna)) penneOrfane.erase(penna);
    return 1;
}

HPEN CreatePen(int, int, COLORREF colore)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    auto p = std::make_unique<TPenna>(TPenna{colore & 0xFFFFFFu});
    HPEN h = p.get();
    penne.emplace(h, std::move(p));
    return h;
}

int DeleteObject(HGDIOBJ oggetto)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    auto it = penne.find(oggetto);
    if (it == penne.end()) return 0;
    if (PennaScelta(it->second.get())) penneOrfane.emplace(oggetto, std::move(it->second));
    penne.erase(it);
    return 1;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ oggetto)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    TContesto* c = Contesto(dc);
    auto it = penne.find(oggetto);
    if (!c || it == penne.end()) return nullptr;
    TPenna* precedente = c->penna;
    c->penna = it->second.get();
    return precedente;
}

int SetROP2(HDC dc, int modo)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    TContesto* c = Contesto(dc);
    if (!c || modo < R2_BLACK || modo > R2_WHITE) return 0;
    const int precedente = c->modo;
    c->modo = modo;
    return precedente;
}

int MoveToEx(HDC dc, std::int32_t x, std::int32_t y, POINT* precedente)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    TContesto* c = Contesto(dc);
    if (!c) return 0;
    if (precedente) *precedente = {c->x, c->y};
    c->x = x;
    c->y = y;
    return 1;
}

int LineTo(HDC dc, std::int32_t x, std::int32_t y)
{
    std::lock_guard<std::mutex> g(mutexDisegno);
    TContesto* c = Contesto(dc);
    if (!c) return 0;
    int indice = 0;
    TFinestraDialogo* f = TFinestraDialogo::DaManiglia(c->finestra, indice);
    if (!f) return 0;  // the window went before its context
    const COLORREF colore = c->penna ? c->penna->colore : 0;
    const int modo = c->modo;
    const std::int64_t x0 = c->x, y0 = c->y;
    if (indice >= 0) {
        const TTratto tratto{c->x, c->y, x, y, modo, colore};
        f->Traccia(indice, tratto, [&](TTela& t) { Linea(t, x0, y0, x, y, modo, colore); });
    }
    c->x = x;
    c->y = y;
    return 1;
}
