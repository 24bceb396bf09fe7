#include "collegamento.h"

#include <cstdio>

#include "digit.h"
#include "link/elenco_porte.h"
#include "link/iodev.h"
#include "link/ultimo_errore.h"
#include "record_predefiniti.h"

namespace {

// The library's open keeps out later opens, not a program that had the
// device open already: a modem manager or a forgotten terminal program goes
// on reading and takes the tablet's bytes, and the tablet seems silent.
void AvvisaOccupante(const std::string& percorso)
{
    TPortaElencata p;
    p.dispositivo = percorso;
    Occupazione(p);
    if (p.occupata)
        std::fprintf(stderr, "velmarin-host: warning: %s is also held open by %s, which may take the tablet's bytes\n",
                     percorso.c_str(), p.occupante.c_str());
}

}  // namespace

bool TCollegamento::Prepara(const TOpzioniHost& o, std::chrono::milliseconds p, std::string& errore)
{
    passo = p;
    if (!o.dispositivo.empty()) {
        IODevMapPort(o.porta, o.dispositivo.c_str());
        if (!IODevVerificaPorta(o.porta)) {
            errore = TestoUltimoErrore();
            IODevMapPort(o.porta, nullptr);
            return false;
        }
        AvvisaOccupante(o.dispositivo);
        dispositivo = o.dispositivo;
        portaDispositivo = o.porta;
    } else {
        simulata = std::make_unique<TTavolettaPty>(o.porta);
        if (!simulata->Valida()) {
            errore = "cannot open a pseudo-terminal for the simulated tablet";
            simulata.reset();
            return false;
        }
        // Whichever port the user chooses, the built-in tablet is on it.
        for (int porta = 1; porta <= 4; ++porta) IODevMapPort(porta, simulata->PercorsoSlave().c_str());
    }
    Segui(Record(o));
    return true;
}

void TCollegamento::Riproduci(int t)
{
    riproduttore.reset();
    tipo = t;
    if (!simulata || tipo < 1 || tipo > 8) return;
    riproduttore = std::make_unique<TRiproduttore>(*simulata, tipo, passo);
    if (!inCalibrazione) riproduttore->Percorso(FiguraGriglia(), true);
    riproduttore->Avvia();
}

void TCollegamento::Segui(const TDataDigit& d)
{
    bottoneConferma = 1;
    for (int b = 1; b <= d.numBottoni && b <= 16; ++b)
        if (d.funzBott[b - 1] == funzConferma) {
            bottoneConferma = b;
            break;
        }
    if (simulata && (d.tipo != tipo || !riproduttore)) Riproduci(d.tipo);
    tipo = d.tipo;
    std::string nuova = std::string(d.tipo > 0 ? NomeModello(d.tipo) : "no tablet") + " on COM" + std::to_string(d.porta);
    if (simulata) nuova += " (simulated, " + simulata->PercorsoSlave() + ")";
    else if (d.porta == portaDispositivo) nuova += " = " + dispositivo;
    else nuova += " (not " + dispositivo + ", which is COM" + std::to_string(portaDispositivo) + ")";
    if (nuova == descrizione) return;
    descrizione = nuova;
    if (alCambio) alCambio(descrizione);
}

TDataDigit TCollegamento::Record(const TOpzioniHost& o) const
{
    TDataDigit d = RecordPredefinito(o.tipo, o.porta);
    if (simulata) {
        d.limitiDefiniti = true;
        d.xMin = d.yMin = 0;
        d.xMax = d.yMax = 10000;
    }
    if (o.limiti) {
        d.limitiDefiniti = true;
        d.xMin = o.xMin;
        d.yMin = o.yMin;
        d.xMax = o.xMax;
        d.yMax = o.yMax;
    }
    return d;
}

void TCollegamento::Calibrazione(bool in, bool griglia)
{
    inCalibrazione = in;
    perGriglia = griglia;
    punto = 0;
    if (riproduttore) riproduttore->Percorso(in ? TPercorso{} : FiguraGriglia(), !in);
}

TPuntoSimulato PuntoSimulato(int n, bool griglia)
{
    // Sparse points take the nodes corners first, then the centre and the
    // edges, so that any first three span the sheet.
    constexpr int perPuntiSparsi[9] = {0, 6, 8, 2, 4, 1, 3, 5, 7};
    if (n < 9) {
        const int nodo = griglia ? n : perPuntiSparsi[n];
        return {2000 + (nodo / 3) * 3000, 2000 + (nodo % 3) * 3000};
    }
    return {1500 + (n * 1237) % 7000, 1500 + (n * 2741) % 7000};
}

void TCollegamento::PuntoRichiesto()
{
    if (!inCalibrazione) return;
    const TPuntoSimulato p = PuntoSimulato(punto++, perGriglia);
    if (!riproduttore) return;
    riproduttore->VaiEPremi(p.x, p.y, bottoneConferma, 10);
}

void TCollegamento::LimitiRichiesti()
{
    if (!riproduttore) return;
    riproduttore->VaiEPremi(2000, 2000, bottoneConferma, 10);
    riproduttore->VaiEPremi(8000, 8000, bottoneConferma, 10);
}
