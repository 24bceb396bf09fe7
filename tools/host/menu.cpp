#include "menu.h"

#include <cstdio>

#include "calibra_con_rapporto.h"
#include "configura.h"
#include "digitalizza.h"
#include "impostazioni_host.h"
#include "osserva.h"
#include "platform/toldeko/testo_reale.h"

namespace {

void Stato(CDigit& digit)
{
    if (!digit.IsCalibrato()) {
        std::printf("not calibrated\n");
        return;
    }
    double e1 = 0, n1 = 0, e2 = 0, n2 = 0;
    if (digit.IsCalibratoGriglia() && digit.GetSoloAreaCalibrata(e1, n1, e2, n2))
        std::printf("calibrated by grid: East %s to %s, North %s to %s\n", TestoReale(e1).c_str(),
                    TestoReale(e2).c_str(), TestoReale(n1).c_str(), TestoReale(n2).c_str());
    else
        std::printf("calibrated by %s\n", digit.IsCalibratoGriglia() ? "grid" : "sparse points");
}

}  // namespace

bool EseguiComando(TComando c, CDigit& digit, TDataDigit& dati, const TOpzioniHost& o, TTerminale& terminale,
                   TCollegamento& collegamento)
{
    switch (c) {
    case TComando::config: {
        const int risultato = Configura(digit, dati);
        collegamento.Segui(dati);
        RiferisciConfigurazione(risultato, dati, stdout);
        if (risultato == 1) {
            std::string salvate;
            SalvaImpostazioni(o, dati, salvate);
            std::printf("%s\n", salvate.c_str());
        }
        return true;
    }
    case TComando::calibraPunti:
    case TComando::calibraGriglia: {
        // The tablet is programmed first, and that takes a few seconds.
        std::printf("preparing the tablet for the calibration...\n");
        std::fflush(stdout);
        collegamento.Calibrazione(true, c == TComando::calibraGriglia);
        std::string rapporto;
        const bool ok = CalibraConRapporto(digit, c == TComando::calibraGriglia, PercorsoRapporto(o.gis), rapporto);
        collegamento.Calibrazione(false);
        std::printf("calibration %s; ", ok && digit.IsCalibrato() ? "done" : "not done");
        if (!digit.IsScelto()) std::printf("the tablet has no limits (config or --limits sets them); ");
        Stato(digit);
        std::fputs(rapporto.c_str(), stdout);
        std::fflush(stdout);
        return ok;
    }
    case TComando::osserva:
        return Osserva(digit, o.conteggio, o.secondi, &terminale, stdout);
    case TComando::digitalizza: {
        std::string errore;
        if (!Digitalizza(digit, o.gis.gis, o.gis.passo, &terminale, stdout, errore)) {
            std::fprintf(stderr, "velmarin-host: %s\n", errore.c_str());
            return false;
        }
        return true;
    }
    case TComando::menu:
        return true;
    case TComando::demo:
    case TComando::porte:
        return false;  // run on their own, never on a host's tablet
    }
    return false;
}

void Menu(CDigit& digit, TDataDigit& dati, const TOpzioniHost& o, TTerminale& terminale, TCollegamento& collegamento)
{
    for (;;) {
        std::printf("\nvelmarin-host: %s\n", collegamento.Descrizione().c_str());
        Stato(digit);
        std::printf("  c  choose and set up the tablet\n"
                    "  p  calibrate by scattered points\n"
                    "  g  calibrate by a grid\n"
                    "  w  watch the tablet\n"
                    "  q  quit\n> ");
        std::fflush(stdout);
        TLettura t;
        do t = terminale.LeggiTasto(500);
        while (t.tasto == TTasto::nessuno);
        std::printf("\n");
        if (t.tasto == TTasto::fine || t.tasto == TTasto::esc) return;
        switch (t.tasto == TTasto::carattere ? t.carattere : 0) {
        case 'c': EseguiComando(TComando::config, digit, dati, o, terminale, collegamento); break;
        case 'p': EseguiComando(TComando::calibraPunti, digit, dati, o, terminale, collegamento); break;
        case 'g': EseguiComando(TComando::calibraGriglia, digit, dati, o, terminale, collegamento); break;
        case 'w': EseguiComando(TComando::osserva, digit, dati, o, terminale, collegamento); break;
        case 'q': return;
        default: break;
        }
    }
}
