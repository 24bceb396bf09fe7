#include "record_predefiniti.h"

#include <array>
#include <string>

#include "dialogs/dialogo_funzioni_bottoni.h"
#include "tablet/catalogo.h"
#include "tablet/modulo.h"

namespace {

std::string SenzaSpazi(std::string s)
{
    s.erase(s.find_last_not_of(' ') + 1);
    s.erase(0, s.find_first_not_of(' '));
    return s;
}

}  // namespace

TDataDigit RecordPredefinito(int tipo, int porta)
{
    CDigit vuoto;
    TDataDigit d;
    vuoto.GetDataDigit(d);  // the library's defaults: buttons, no limits
    ImpostaDaCatalogo(d, tipo);
    d.porta = static_cast<std::int16_t>(porta);
    return d;
}

const char* NomeModello(int tipo)
{
    // The catalogue pads its names with blanks for the selection list.
    static const auto nomi = [] {
        std::array<std::string, numTipiDigit> n;
        for (int t = 0; t < numTipiDigit; ++t) n[static_cast<std::size_t>(t)] = SenzaSpazi(catalogoDigit[t].nome);
        return n;
    }();
    return tipo >= 1 && tipo < numTipiDigit ? nomi[static_cast<std::size_t>(tipo)].c_str() : "?";
}

std::string NomeFunzione(int codice)
{
    const unsigned ids = IdsEtichettaFunzione(codice);
    if (ids == 0) return "?";
    return SenzaSpazi(LoadResString(ids));
}
