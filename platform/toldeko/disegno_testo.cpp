#include "disegno_testo.h"

#include <algorithm>

namespace {

using TCelle = std::vector<std::string>;  // one character (UTF-8 sequence) a cell

// "&OK" shows as "OK"; "&&" as "&".
std::string SenzaAcceleratori(const std::string& s)
{
    std::string r;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '&' && i + 1 < s.size()) ++i;
        else if (s[i] == '&') continue;
        r += s[i];
    }
    return r;
}

enum class TAllinea { sinistra, centro, destra };

// `testo` cut or padded to `larghezza` cells; a cut text ends in '~', so
// that nobody takes "Inizia Polilinea - Dis. L~" for the whole label.
TCelle Adatta(const std::string& testo, int larghezza, TAllinea allinea)
{
    TCelle c = CelleTesto(testo);
    if (larghezza <= 0) return {};
    if (static_cast<int>(c.size()) > larghezza) {
        c.resize(static_cast<std::size_t>(larghezza));
        if (larghezza > 1) c.back() = "~";
    }
    const int vuoto = larghezza - static_cast<int>(c.size());
    const int prima = allinea == TAllinea::sinistra ? 0 : allinea == TAllinea::destra ? vuoto : vuoto / 2;
    TCelle r(static_cast<std::size_t>(prima), " ");
    r.insert(r.end(), c.begin(), c.end());
    r.resize(static_cast<std::size_t>(larghezza), " ");
    return r;
}

class TGriglia {
public:
    TGriglia(int colonne, int righe)
        : larghezza(colonne), celle(static_cast<std::size_t>(righe), TCelle(static_cast<std::size_t>(colonne), " "))
    {
    }

    void Scrivi(int col, int riga, const TCelle& testo)
    {
        if (riga < 0 || riga >= static_cast<int>(celle.size())) return;
        for (std::size_t i = 0; i < testo.size(); ++i) {
            const int c = col + static_cast<int>(i);
            if (c >= 0 && c < larghezza) celle[static_cast<std::size_t>(riga)][static_cast<std::size_t>(c)] = testo[i];
        }
    }
    void Scrivi(int col, int riga, const std::string& testo) { Scrivi(col, riga, CelleTesto(testo)); }

    // A frame from (c0, r0) to (c1, r1), corners included, with an optional
    // caption in its top line.
    void Cornice(int c0, int r0, int c1, int r1, const std::string& titolo, const char* orizzontale = "-")
    {
        for (int c = c0 + 1; c < c1; ++c) {
            Scrivi(c, r0, orizzontale);
            Scrivi(c, r1, "-");
        }
        for (int r = r0 + 1; r < r1; ++r) {
            Scrivi(c0, r, "|");
            Scrivi(c1, r, "|");
        }
        for (int c : {c0, c1})
            for (int r : {r0, r1}) Scrivi(c, r, "+");
        // The caption stays inside the corners: a long one is cut.
        if (titolo.empty()) return;
        TCelle t = CelleTesto(" " + titolo + " ");
        t.resize(std::min(t.size(), static_cast<std::size_t>(std::max(0, c1 - c0 - 3))));
        Scrivi(c0 + 2, r0, t);
    }

    std::vector<std::string> Righe() const
    {
        std::vector<std::string> r;
        for (const TCelle& riga : celle) {
            std::string s;
            for (const std::string& c : riga) s += c;
            while (!s.empty() && s.back() == ' ') s.pop_back();
            r.push_back(s);
        }
        return r;
    }

private:
    int larghezza;
    std::vector<TCelle> celle;
};

bool Disegnato(const TTela& t, int x0, int x1, int y0, int y1)
{
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x) {
            const std::uint32_t p = t.Pixel(x, y);
            if (p != coloreSfondo && p != coloreBordo) return true;
        }
    return false;
}

// What was drawn inside a frame, coarsely: '#' on each cell that holds ink.
// The canvas inside its one-pixel border is spread over the cells inside
// the frame's lines, so that a drawing on the border's inner edge, as a
// cross at the frame's limits, shows in the first or last cell.
void DisegnaTela(TGriglia& g, const TTela& t, int col, int riga, int colonne, int righe)
{
    const int celleX = colonne - 2, celleY = righe - 1;
    const int pixelX = t.larghezza - 2, pixelY = t.altezza - 2;
    if (t.Vuota() || celleX <= 0 || celleY <= 0 || pixelX <= 0 || pixelY <= 0) return;
    for (int r = 0; r < celleY; ++r)
        for (int c = 0; c < celleX; ++c)
            if (Disegnato(t, 1 + c * pixelX / celleX, 1 + (c + 1) * pixelX / celleX, 1 + r * pixelY / celleY,
                          1 + (r + 1) * pixelY / celleY))
                g.Scrivi(col + 1 + c, riga + 1 + r, "#");
}

bool IsCornice(TTipoElemento t) { return t == TTipoElemento::gruppo || t == TTipoElemento::cornice; }

void Disegna(TGriglia& g, const TStatoElemento& e, const TMisura& m)
{
    const TPosizione p = PosizioneControllo(e, m);
    const int col = p.colonna, w = p.larghezza;
    const int riga = IsCornice(e.tipo) ? 1 + e.y / 8 : p.riga;
    const std::string apre = e.abilitato ? "[" : "{", chiude = e.abilitato ? "]" : "}";
    switch (e.tipo) {
    case TTipoElemento::gruppo:
    case TTipoElemento::cornice:
        g.Cornice(col, riga, col + w - 1, riga + std::max(1, e.cy / 8), SenzaAcceleratori(e.testo));
        DisegnaTela(g, e.tela, col, riga, w, std::max(1, e.cy / 8));
        return;
    case TTipoElemento::statico: {
        const TAllinea a = (e.stile & stileCentrato) ? TAllinea::centro
                           : (e.stile & stileADestra) ? TAllinea::destra
                                                      : TAllinea::sinistra;
        g.Scrivi(col, riga, Adatta(e.testo, w, a));
        return;
    }
    case TTipoElemento::edit:
        g.Scrivi(col, riga, apre);
        g.Scrivi(col + 1, riga, Adatta(e.testo, w - 2, TAllinea::sinistra));
        g.Scrivi(col + w - 1, riga, chiude);
        return;
    case TTipoElemento::pulsante:
    case TTipoElemento::predefinito: {
        const bool pred = e.tipo == TTipoElemento::predefinito;
        const std::string a = e.abilitato ? (pred ? "<<" : "<") : (pred ? "{{" : "{");
        const std::string c = e.abilitato ? (pred ? ">>" : ">") : (pred ? "}}" : "}");
        const int bordo = static_cast<int>(a.size());
        g.Scrivi(col, riga, a);
        g.Scrivi(col + bordo, riga, Adatta(SenzaAcceleratori(e.testo), w - 2 * bordo, TAllinea::centro));
        g.Scrivi(col + w - bordo, riga, c);
        return;
    }
    case TTipoElemento::radio: {
        const std::string segno = e.check ? "*" : " ";
        g.Scrivi(col, riga, (e.abilitato ? "(" : "{") + segno + (e.abilitato ? ")" : "}"));
        g.Scrivi(col + 4, riga, Adatta(SenzaAcceleratori(e.testo), w - 4, TAllinea::sinistra));
        return;
    }
    case TTipoElemento::combo: {
        const bool scelta = e.selezione >= 0 && e.selezione < static_cast<int>(e.voci.size());
        g.Scrivi(col, riga, apre);
        g.Scrivi(col + 1, riga, Adatta(scelta ? e.voci[static_cast<std::size_t>(e.selezione)].testo : "", w - 3,
                                       TAllinea::sinistra));
        g.Scrivi(col + w - 2, riga, "v" + chiude);
        return;
    }
    }
}

}  // namespace

std::vector<std::string> CelleTesto(const std::string& s)
{
    TCelle c;
    for (std::size_t i = 0; i < s.size();) {
        const unsigned char b = static_cast<unsigned char>(s[i]);
        std::size_t n = b >= 0xF0 ? 4 : b >= 0xE0 ? 3 : b >= 0xC0 ? 2 : 1;
        n = std::min(n, s.size() - i);
        c.push_back(s.substr(i, n));
        i += n;
    }
    return c;
}

// Eight dialog units a row, inside a border; columns by the measure, a
// control's width from its two edges so that neighbours never overlap.
// One-line controls stand on the row of their middle, so that an edit a
// little taller than its label lands on the label's row.
TPosizione PosizioneControllo(const TStatoElemento& e, const TMisura& m)
{
    const int col = m.Colonna(e.x);
    return {1 + (e.y + e.cy / 2 - 4) / 8, 1 + col, std::max(1, m.Colonna(e.x + e.cx) - col)};
}

TMisura MisuraPer(const TStatoDialogo& stato, int larghezza)
{
    if (larghezza <= 0 || stato.cx / 4 + 2 <= larghezza) return {};
    return {std::max(1, larghezza - 2), stato.cx};
}

std::vector<std::string> DisegnaDialogo(const TStatoDialogo& stato, const TMisura& m)
{
    const int colonne = m.Colonna(stato.cx) + 2, righe = stato.cy / 8 + 2;
    TGriglia g(colonne, righe);
    g.Cornice(0, 0, colonne - 1, righe - 1, stato.titolo, "=");
    // Frames first, so that the controls inside them stand on top.
    for (const TStatoElemento& e : stato.elementi)
        if (IsCornice(e.tipo)) Disegna(g, e, m);
    for (const TStatoElemento& e : stato.elementi)
        if (!IsCornice(e.tipo)) Disegna(g, e, m);
    return g.Righe();
}

std::string DisegnaDialogoTesto(const TStatoDialogo& stato)
{
    std::string testo;
    for (const std::string& riga : DisegnaDialogo(stato)) testo += riga + "\n";
    return testo;
}
