#include "interfaccia_terminale.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "platform/toldeko/disegno_testo.h"

TInterfacciaTerminale::TInterfacciaTerminale(TTerminale& t, TBackendTerminale& b) : terminale(t), backend(b) {}

int TInterfacciaTerminale::messageBox(HWND, const char* text, const char* caption, unsigned flags)
{
    const bool siNo = (flags & 0x0F) == MB_YESNO;
    std::vector<std::string> righe;
    std::istringstream in(text ? text : "");
    for (std::string r; std::getline(in, r);) righe.push_back(r);
    const std::string titolo = caption ? caption : "";
    const std::string pulsanti = siNo ? "< Si >   < No >" : "< OK >";
    // Widths in cells: "già" is three, not four bytes wide.
    auto celle = [](const std::string& t) { return CelleTesto(t).size(); };
    std::size_t largo = std::max(celle(titolo) + 4, pulsanti.size());
    for (const std::string& r : righe) largo = std::max(largo, celle(r));

    const std::string testa = titolo.empty() ? std::string() : " " + titolo + " ";
    std::string box = "\r\n  +=" + testa + std::string(largo + 1 - celle(testa), '=') + "+\r\n";
    for (const std::string& r : righe) box += "  | " + r + std::string(largo - celle(r), ' ') + " |\r\n";
    box += "  | " + std::string((largo - pulsanti.size()) / 2, ' ') + pulsanti +
           std::string(largo - pulsanti.size() - (largo - pulsanti.size()) / 2, ' ') + " |\r\n";
    box += "  +" + std::string(largo + 2, '-') + "+\r\n";
    box += siNo ? "  S / Invio: Si    N / Esc: No\r\n" : "  Invio: OK\r\n";
    {
        std::lock_guard<std::recursive_mutex> g(terminale.Schermo());
        backend.Ridisegna();
        terminale.Scrivi("\x1b[?25l" + box);
    }
    for (;;) {
        const TLettura t = terminale.LeggiTasto(200);
        const char c = static_cast<char>(t.carattere | 0x20);
        if (!siNo && (t.tasto == TTasto::invio || t.tasto == TTasto::esc || t.tasto == TTasto::spazio ||
                      t.tasto == TTasto::fine))
            break;
        if (siNo && (t.tasto == TTasto::invio || (t.tasto == TTasto::carattere && (c == 's' || c == 'y')))) {
            backend.Ridisegna();
            return IDYES;
        }
        if (siNo && (t.tasto == TTasto::esc || t.tasto == TTasto::fine || (t.tasto == TTasto::carattere && c == 'n'))) {
            backend.Ridisegna();
            return IDNO;
        }
    }
    backend.Ridisegna();
    return IDOK;
}

void TInterfacciaTerminale::beep(unsigned type)
{
    terminale.Scrivi("\a");
    backend.Avviso(type == 48 ? "Bip: valore non accettato" : "Bip");
}
