// The host's tablet selection through the library's dialog.
#include "configura.h"

#include "guida.h"
#include "record_predefiniti.h"

namespace {

// What the port and the tablet's programming depend on.
bool StessaLinea(const TDataDigit& a, const TDataDigit& b)
{
    return a.tipo == b.tipo && a.porta == b.porta && a.velocita == b.velocita && a.parita == b.parita &&
           a.bitDati == b.bitDati && a.bitStop == b.bitStop && a.reset == b.reset && a.risoluzione == b.risoluzione;
}

}  // namespace

std::string DescriviImpostazione(const TDataDigit& d)
{
    if (d.tipo < 1) return "no tablet chosen\n";
    std::string s = "model " + std::to_string(d.tipo) + " (" + NomeModello(d.tipo) + ") on COM" +
                    std::to_string(d.porta) + "\n  line: " + std::to_string(d.velocita) + " baud, parity " +
                    static_cast<char>(d.parita) + ", " + std::to_string(d.bitDati) + " data bits, " +
                    std::to_string(d.bitStop) + " stop bits\n";
    s += "  buttons: " + std::to_string(d.numBottoni) + "\n";
    for (int b = 1; b <= d.numBottoni && b <= 16; ++b)
        if (d.funzBott[b - 1] != funzNessuna)
            s += "    button " + std::to_string(b) + ": " + NomeFunzione(d.funzBott[b - 1]) + "\n";
    s += "  limits: ";
    if (d.limitiDefiniti)
        s += "x " + std::to_string(d.xMin) + " to " + std::to_string(d.xMax) + ", y " + std::to_string(d.yMin) +
             " to " + std::to_string(d.yMax) + "\n";
    else
        s += "none (Limiti in config digitizes them; a calibration needs them)\n";
    if (BottoneConFunzione(d, funzConferma).empty())
        s += "warning: no button is Conferma, so the limits and the calibration dialogs can never finish\n";
    return s;
}

int Configura(CDigit& digit, TDataDigit& dati)
{
    const int risultato = configDigit(nullptr, &digit, dati);
    TDataDigit lasciato;
    digit.GetDataDigit(lasciato);
    digit.SetDataDigit(dati);
    if (!StessaLinea(lasciato, dati)) {
        digit.Init(nullptr);
        digit.SendInitString();
    }
    return risultato;
}

void RiferisciConfigurazione(int risultato, const TDataDigit& dati, std::FILE* out)
{
    if (risultato != 1)
        std::fprintf(out, "configuration cancelled: the tablet keeps its set-up, %s", DescriviImpostazione(dati).c_str());
    else std::fprintf(out, "tablet set up: %s", DescriviImpostazione(dati).c_str());
    std::fflush(out);
}
