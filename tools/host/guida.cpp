#include "guida.h"

#include "dialogs/dialogo_digitalizza.h"
#include "dialogs/dialogo_funzioni_bottoni.h"
#include "dialogs/dialogo_griglia.h"
#include "dialogs/dialogo_limiti.h"
#include "dialogs/dialogo_prova.h"
#include "dialogs/dialogo_punti_sparsi.h"
#include "dialogs/dialogo_scelta_tavoletta.h"
#include "record_predefiniti.h"

namespace {

std::string Didascalia(const TStatoDialogo& s, int id, const char* altrimenti)
{
    const TStatoElemento* e = s.Elemento(id);
    if (!e) return altrimenti;
    std::string t;
    for (std::size_t i = 0; i < e->testo.size(); ++i)
        if (e->testo[i] != '&') t += e->testo[i];
    return t;
}

}  // namespace

int IndicePredefinito(const TStatoDialogo& s)
{
    for (std::size_t i = 0; i < s.elementi.size(); ++i)
        if (s.elementi[i].tipo == TTipoElemento::predefinito && s.elementi[i].abilitato) return static_cast<int>(i);
    return -1;
}

std::string TastiDelControllo(const TStatoDialogo& s, int fuoco)
{
    const TStatoElemento* e =
        fuoco >= 0 && fuoco < static_cast<int>(s.elementi.size()) ? &s.elementi[static_cast<std::size_t>(fuoco)] : nullptr;
    const TTipoElemento tipo = e ? e->tipo : TTipoElemento::statico;
    std::string t;
    switch (tipo) {
    case TTipoElemento::edit: t = "Type, Backspace: erase  Tab/Shift-Tab, arrows: move"; break;
    case TTipoElemento::radio: t = "Arrows: in group  Space: choose  Tab/Shift-Tab: move"; break;
    case TTipoElemento::combo: t = "Left/Right/Space: change  Tab/Shift-Tab, Up/Down: move"; break;
    case TTipoElemento::pulsante:
    case TTipoElemento::predefinito:
        t = "Space, Enter: " + Didascalia(s, e->id, "") + "  Tab/Shift-Tab, arrows: move";
        break;
    default: break;
    }
    // Enter presses a focused button, else the default one.
    const bool suPulsante = e && (tipo == TTipoElemento::pulsante || tipo == TTipoElemento::predefinito);
    if (!e) t = "Tab: to the buttons";
    if (!suPulsante && IndicePredefinito(s) >= 0) t += "  Enter: " + Didascalia(s, 1, "OK");
    t += "  Esc: " + Didascalia(s, 2, "close");
    return t;
}

std::string BottoneConFunzione(const TDataDigit& d, int funzione)
{
    for (int b = 1; b <= d.numBottoni && b <= 16; ++b)
        if (d.tipo > 0 && d.funzBott[b - 1] == funzione)
            return "tablet button " + std::to_string(b) + " (" + NomeFunzione(funzione) + ")";
    return {};
}

TGuida::TGuida(const CDigit& d, const TCollegamento& c) : digit(d), collegamento(c) {}

std::string TGuida::PerDigitalizzare() const
{
    TDataDigit d;
    digit.GetDataDigit(d);
    const std::string conferma = BottoneConFunzione(d, funzConferma);
    std::string annulla = BottoneConFunzione(d, funzAnnulla);
    if (conferma.empty()) return "No tablet button is set to Conferma: this never ends but with Esc.";
    annulla = annulla.empty() ? "" : " or " + annulla.substr(annulla.find("button"), annulla.find(" (") - annulla.find("button"));
    return "Take it with " + conferma + "; Esc" + annulla + " gives up.";
}

// Each point asked for before the one on screen was taken.
int TGuida::PuntiPresi(unsigned modello) const
{
    const int chiesti = collegamento.PuntiChiesti();
    return modello == modelloDigitalizza && chiesti > 0 ? chiesti - 1 : chiesti;
}

std::string TGuida::Suggerimento(unsigned modello) const
{
    const bool inCalibrazione = collegamento.InCalibrazione(), griglia = collegamento.PerGriglia();
    const int presi = PuntiPresi(modello);
    const std::string fine = presi >= 3 ? " Esc: done, with the " + std::to_string(presi) + " points taken."
                                        : " Three points at least, 21 at most.";
    switch (modello) {
    case modelloPuntiSparsi:
        return "Point " + std::to_string(presi + 1) + ": its ground East and North." + (inCalibrazione ? fine : "");
    case modelloDigitalizza:
        return PerDigitalizzare() + (inCalibrazione && !griglia && presi >= 3 ? fine : "");
    case modelloGriglia:
        return "Squares: 1 to " + std::to_string(maxQuadrati) + " each way; every field needs a number.";
    case modelloLimiti: return PerDigitalizzare() + " Lower left first.";
    case modelloProva: return "Move the cursor on the tablet: the cross and the counts follow it.";
    case modelloFunzioniBottoni: return "One button needs Conferma, or points and limits can never be taken.";
    case modelloSceltaTavoletta: return "Limiti: digitize two corners. Prova: see the pointer live.";
    default: return {};
    }
}

std::string TGuida::DomandaAnnulla(unsigned modello) const
{
    if (!collegamento.InCalibrazione()) return {};
    const bool griglia = collegamento.PerGriglia();
    const int presi = PuntiPresi(modello);
    // Three sparse points or more: Esc ends the calibration with them.
    if (presi == 0 || (!griglia && presi >= 3)) return {};
    return "Give up the calibration? The " + std::to_string(presi) + (griglia ? " node" : " point") +
           (presi == 1 ? "" : "s") + " taken will be lost.";
}

std::string Rifiuto(unsigned modello, unsigned tipo)
{
    switch (modello) {
    case modelloPuntiSparsi: return "Refused: East and North both need a number.";
    case modelloGriglia:
        return "Refused: every field needs a number, and the squares 1 to " + std::to_string(maxQuadrati) +
               " each way.";
    case modelloSceltaTavoletta:
        if (tipo == 32) return "Refused: choose a tablet model first.";
        return "Refused: Prova needs the limits first.";
    default: return "Refused.";
    }
}
