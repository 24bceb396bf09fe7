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

bool EseguiComando(TComando c, CDigit& digit, TDataDigit& dati, std::string& calibrazione, const TOpzioniHost& o,
                   TTerminale& terminale, TCollegamento& collegamento)
{
    switch (c) {
    case TComando::config: {
        const int risultato = Configura(digit, dati);
        collegamento.Segui(dati);
        RiferisciConfigurazione(risultato, dati, stdout);
        if (risultato != 1) return false;
        std::string salvate;
        const bool salvato = SalvaImpostazioni(o, dati, salvate);
        std::printf("%s\n", salvate.c_str());
        return salvato;
    }
    case TComando::calibraPunti:
    case TComando::calibraGriglia: {
        // The tablet is programmed first, and that takes a few seconds.
        std::printf("preparing the tablet for the calibration...\n");
        std::fflush(stdout);
        collegamento.Calibrazione(true, c == TComando::calibraGriglia);
        const TCalibrazioneFatta fatta =
            CalibraConRapporto(digit, c == TComando::calibraGriglia, PercorsoRapporto(o.gis));
        collegamento.Calibrazione(false);
        if (!fatta.id.empty()) calibrazione = fatta.id;
        std::printf("calibration %s; ", fatta.riuscita && digit.IsCalibrato() ? "done" : "not done");
        if (!digit.IsScelto()) std::printf("the tablet has no limits (config or --limits sets them); ");
        Stato(digit);
        std::fputs(fatta.testo.c_str(), stdout);
        std::fflush(stdout);
        // The calibration holds and is on the screen; only its record is
        // missing, and the run's status says so.
        if (!fatta.errore.empty())
            std::fprintf(stderr, "velmarin-host: the calibration is not recorded: %s\n", fatta.errore.c_str());
        return fatta.riuscita && fatta.errore.empty();
    }
    case TComando::osserva:
        return Osserva(digit, o.conteggio, o.secondi, &terminale, stdout);
    case TComando::digitalizza: {
        std::string errore;
        if (o.gis.gis.percorso.empty()) errore = "digitize needs --out FILE: start velmarin-host with it";
        else if (Digitalizza(digit, o.gis.gis, o.gis.passo, calibrazione, &terminale, stdout, errore)) return true;
        std::fprintf(stderr, "velmarin-host: %s\n", errore.c_str());
        return false;
    }
    case TComando::menu:
        return true;
    case TComando::demo:
    case TComando::porte:
        return false;  // run on their own, never on a host's tablet
    }
    return false;
}

void Menu(CDigit& digit, TDataDigit& dati, std::string& calibrazione, const TOpzioniHost& o, TTerminale& terminale,
          TCollegamento& collegamento)
{
    const std::string digitalizza = o.gis.gis.percorso.empty()
                                        ? "digitize (start velmarin-host with --out FILE first)"
                                        : "digitize into " + o.gis.gis.percorso;
    for (;;) {
        std::printf("\nvelmarin-host: %s\n", collegamento.Descrizione().c_str());
        Stato(digit);
        std::printf("  c  choose and set up the tablet\n"
                    "  p  calibrate by scattered points\n"
                    "  g  calibrate by a grid\n"
                    "  d  %s\n"
                    "  w  watch the tablet\n"
                    "  q  quit\n> ",
                    digitalizza.c_str());
        std::fflush(stdout);
        TLettura t;
        do t = terminale.LeggiTasto(500);
        while (t.tasto == TTasto::nessuno);
        std::printf("\n");
        if (t.tasto == TTasto::fine || t.tasto == TTasto::esc) return;
        const char tasto = t.tasto == TTasto::carattere ? t.carattere : 0;
        const char tasti[] = {'c', 'p', 'g', 'd', 'w'};
        const TComando comandi[] = {TComando::config, TComando::calibraPunti, TComando::calibraGriglia,
                                    TComando::digitalizza, TComando::osserva};
        if (tasto == 'q') return;
        for (int i = 0; i < 5; ++i)
            if (tasto == tasti[i]) EseguiComando(comandi[i], digit, dati, calibrazione, o, terminale, collegamento);
    }
}
