// velmarin-host: a host program on the library's public interface and the
// terminal front end of the dialog toolkit. See usoHost for the commands.
#include <cstdio>
#include <string>
#include <vector>

#include "argomenti.h"
#include "backend_terminale.h"
#include "collegamento.h"
#include "dialogs/dialogo_digitalizza.h"
#include "dialogs/dialogo_limiti.h"
#include "dialogs/dialogo_prova.h"
#include "digit.h"
#include "dimostrazione.h"
#include "guida.h"
#include "impostazioni_host.h"
#include "interfaccia_terminale.h"
#include "link/elenco_porte.h"
#include "menu.h"
#include "terminale.h"

namespace {

bool Comanda(const TOpzioniHost& o, std::initializer_list<TComando> quali)
{
    for (TComando c : o.comandi)
        for (TComando q : quali)
            if (c == q) return true;
    return false;
}

bool VuoleTerminale(const std::vector<TComando>& comandi)
{
    for (TComando c : comandi)
        if (c != TComando::osserva && c != TComando::digitalizza) return true;
    return false;
}

// The library's port list, one port a line.
int ElencaPorte(const TOpzioniHost& o, std::FILE* out)
{
    if (!o.dispositivo.empty()) IODevMapPort(o.porta, o.dispositivo.c_str());
    const std::vector<TPortaElencata> porte = ElencoPorte();
    for (const TPortaElencata& p : porte) {
        const std::string porta = p.porta ? "COM" + std::to_string(p.porta) : "-";
        std::fprintf(out, "%-6s %-40s %s%s%s\n", porta.c_str(), p.dispositivo.c_str(), p.descrizione.c_str(),
                     p.occupata ? ", held by " : "", p.occupata ? (p.occupante.empty() ? "another process" : p.occupante.c_str()) : "");
    }
    if (porte.empty()) std::fprintf(out, "no serial ports\n");
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    TOpzioniHost o;
    std::string errore;
    if (!AnalizzaArgomenti(std::vector<std::string>(argv + 1, argv + argc), o, errore)) {
        std::fprintf(stderr, "velmarin-host: %s\n(velmarin-host --help lists the commands)\n", errore.c_str());
        return 2;
    }
    if (o.aiuto) {
        std::fputs(usoHost, stdout);
        std::fputs(usoGis, stdout);
        return 0;
    }
    if (o.comandi.front() == TComando::demo) return Dimostrazione(stdout);
    if (o.comandi.front() == TComando::porte) return ElencaPorte(o, stdout);

    const bool digitalizza = Comanda(o, {TComando::digitalizza}) ||
                             (Comanda(o, {TComando::menu}) && !o.gis.gis.percorso.empty());
    if (!VerificaUscite(o.gis, digitalizza, Comanda(o, {TComando::menu, TComando::calibraPunti, TComando::calibraGriglia}),
                        errore)) {
        std::fprintf(stderr, "velmarin-host: %s\n", errore.c_str());
        return 2;
    }
    TTerminale terminale;
    if (VuoleTerminale(o.comandi) && !terminale.Attivo()) {
        std::fprintf(stderr, "velmarin-host: the dialogs need a terminal on standard input and output\n");
        return 2;
    }
    TDataDigit salvato{};
    std::string impostazioni;
    const bool daFile = CaricaImpostazioni(o, salvato, impostazioni);
    TCollegamento collegamento;
    if (!collegamento.Prepara(o, std::chrono::milliseconds(o.passo), errore)) {
        std::fprintf(stderr, "velmarin-host: %s\n", errore.c_str());
        return 1;
    }
    TBackendTerminale backend(terminale);
    TInterfacciaTerminale interfaccia(terminale, backend);
    int esito = 0;
    {
        TDataDigit dati = collegamento.Record(o);
        if (daFile) dati = ApplicaImpostazioni(salvato, dati, o);
        CDigit digit(dati);
        TGuida guida(digit, collegamento);
        // A dialog that listens to the tablet finds the built-in one set up
        // as the tablet object is now: the selection dialog has just handed
        // it the working copy.
        backend.AlAperto([&collegamento, &digit](unsigned modello) {
            if (modello != modelloDigitalizza && modello != modelloLimiti && modello != modelloProva) return;
            TDataDigit ora;
            digit.GetDataDigit(ora);
            collegamento.Segui(ora);
            if (modello == modelloDigitalizza) collegamento.PuntoRichiesto();
            if (modello == modelloLimiti) collegamento.LimitiRichiesti();
        });
        backend.Suggerimento([&guida](unsigned modello) { return guida.Suggerimento(modello); });
        backend.ConfermaAnnulla([&guida](unsigned modello) { return guida.DomandaAnnulla(modello); });
        collegamento.AlCambio([&backend](const std::string& d) { backend.Intestazione("velmarin-host: " + d); });
        backend.Intestazione("velmarin-host: " + collegamento.Descrizione());
        if (terminale.Attivo()) {
            ImpostaBackendDialoghi(&backend);
            ImpostaInterfacciaUtente(&interfaccia);
        }
        if (o.comandi.front() != TComando::menu) std::printf("velmarin-host: %s\n", collegamento.Descrizione().c_str());
        if (!impostazioni.empty()) std::printf("velmarin-host: %s\n", impostazioni.c_str());
        std::fflush(stdout);
        // Each command builds on the one before: after one that failed,
        // the rest would work on what is not there.
        std::string calibrazione;
        for (TComando c : o.comandi) {
            if (c == TComando::menu) {
                Menu(digit, dati, calibrazione, o, terminale, collegamento);
            } else if (!EseguiComando(c, digit, dati, calibrazione, o, terminale, collegamento)) {
                esito = 1;
                break;
            }
        }
    }
    ImpostaInterfacciaUtente(nullptr);
    ImpostaBackendDialoghi(nullptr);
    return esito;
}
