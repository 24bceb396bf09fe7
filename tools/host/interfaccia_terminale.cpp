#include "interfaccia_terminale.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "guida.h"
#include "impaginazione.h"
#include "link/ultimo_errore.h"
#include "platform/toldeko/disegno_testo.h"
#include "resources/stringhe.h"

TInterfacciaTerminale::TInterfacciaTerminale(TTerminale& t, TBackendTerminale& b) : terminale(t), backend(b) {}

namespace {

// The box as lines, with its title in the top border and its buttons last.
std::vector<std::string> Riquadro(const char* text, const char* caption, bool siNo)
{
    std::vector<std::string> righe;
    std::istringstream in(text ? text : "");
    for (std::string r; std::getline(in, r);) righe.push_back(r);
    const std::string titolo = caption ? caption : "";
    const std::string pulsanti = siNo ? "< Yes >   < No >" : "< OK >";
    // Widths in cells: "già" is three, not four bytes wide.
    auto celle = [](const std::string& t) { return CelleTesto(t).size(); };
    std::size_t largo = std::max(celle(titolo) + 4, pulsanti.size());
    for (const std::string& r : righe) largo = std::max(largo, celle(r));

    const std::string testa = titolo.empty() ? std::string() : " " + titolo + " ";
    std::vector<std::string> box{"+=" + testa + std::string(largo + 1 - celle(testa), '=') + "+"};
    for (const std::string& r : righe) box.push_back("| " + r + std::string(largo - celle(r), ' ') + " |");
    box.push_back("| " + std::string((largo - pulsanti.size()) / 2, ' ') + pulsanti +
                  std::string(largo - pulsanti.size() - (largo - pulsanti.size()) / 2, ' ') + " |");
    box.push_back("+" + std::string(largo + 2, '-') + "+");
    return box;
}

}  // namespace

int TInterfacciaTerminale::messageBox(HWND, const char* text, const char* caption, unsigned flags)
{
    const bool siNo = (flags & 0x0F) == MB_YESNO;
    // The library's box of a port not opened says so in its own words; the
    // system's reason (which device, refused why) is in its last error, set by
    // the failure just before the box, and goes under them.
    std::string testo = text ? text : "";
    const char* perche = TestoUltimoErrore();
    const char* portaNonAperta = TestoRisorsa(idsPortaNonConfigurata);
    if (portaNonAperta && testo == portaNonAperta && perche && *perche)
        for (const std::string& r : APiuRighe(std::string("(") + perche + ")", 60)) testo += "\n" + r;
    const std::vector<std::string> box = Riquadro(testo.c_str(), caption, siNo);
    // A question's Yes gives something up ("Continuo ?" drops a calibration):
    // it takes a key of its own, never an Enter meant for what came before.
    const std::string tasti = siNo ? "Y: Yes  N or Esc: No" : "Enter, Space or Esc: OK";
    const bool suDialogo = backend.Modello() != 0;
    if (suDialogo) {
        backend.Riquadro(box, tasti);
    } else {
        std::string testo = "\r\n";
        for (const std::string& r : box) testo += "  " + r + "\r\n";
        terminale.Scrivi(testo + "  " + tasti + "\r\n");
    }
    int risposta = IDOK;
    for (;;) {
        const TLettura t = terminale.LeggiTasto(200);
        const char c = static_cast<char>(t.carattere | 0x20);
        if (!siNo && (t.tasto == TTasto::invio || t.tasto == TTasto::esc || t.tasto == TTasto::spazio ||
                      t.tasto == TTasto::fine))
            break;
        if (siNo && t.tasto == TTasto::carattere && (c == 's' || c == 'y')) {
            risposta = IDYES;
            break;
        }
        if (siNo && (t.tasto == TTasto::esc || t.tasto == TTasto::fine || (t.tasto == TTasto::carattere && c == 'n'))) {
            risposta = IDNO;
            break;
        }
        if (t.tasto == TTasto::nessuno && suDialogo && TTerminale::DaRidisegnare()) backend.Riquadro(box, tasti);
    }
    if (suDialogo) backend.Riquadro({}, {});
    return risposta;
}

void TInterfacciaTerminale::beep(unsigned type)
{
    terminale.Scrivi("\a");
    // A dialog that refuses its entry from outside (a grid too large) is
    // closed by then, and the note waits for the one that follows.
    const unsigned modello = backend.ModelloRecente();
    if (modello != 0) backend.Avviso(Rifiuto(modello, type));
}

// The library shows the wait cursor while it programs the tablet, which
// holds the program for seconds.
void TInterfacciaTerminale::cursore(HCURSOR c)
{
    const char* const testo = "Busy: programming the tablet, please wait...";
    if (backend.Modello() != 0) {
        backend.Occupato(c == IDC_WAIT ? testo : "");
        return;
    }
    terminale.Scrivi(c == IDC_WAIT ? std::string("  ") + testo : std::string("\r\x1b[K"));
}
