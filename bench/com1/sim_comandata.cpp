// A simulated tablet on a pseudo-terminal driven from standard input, for a
// Windows program under Wine whose COM1 it is. It prints the device path,
// then answers each command with one line:
//   modello N       play model N from now on; what the host sent is forgotten,
//                   and the line is raw again, as a fresh terminal is
//   stato X Y B     show that pointer state as the model does: "ok"
//   uno X Y B       send one report of that state, and no more: "ok"
//   invia HEX       send these bytes as they are: "ok"
//   ricevuti        once the line has been quiet a while, what the host sent
//                   since the last time, in hex ("-" for nothing)
//   poll            the polls answered so far
//   fine            end
#include <chrono>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

#include "sim/codifica_report.h"
#include "sim/tavoletta_pty.h"

namespace {

using namespace std::chrono_literals;

std::string Esadecimale(const std::string& byte)
{
    std::string s;
    char b[4];
    for (unsigned char c : byte) {
        std::snprintf(b, sizeof b, " %02X", c);
        s += b;
    }
    return s.empty() ? "-" : s.substr(1);
}

std::string Esegui(TTavolettaPty& sim, int& tipo, const std::string& riga)
{
    std::istringstream in(riga);
    std::string comando;
    in >> comando;
    // A pseudo-terminal refuses settings with parity and then keeps the old
    // ones, failing the next host where a port would not: back to raw.

    if (comando == "modello" && in >> tipo) {
        sim.AttendiQuiete(100ms, 5s);
        sim.Dimentica();
        return sim.RipristinaImpostazioni() ? "ok" : "errore";
    }
    TStatoPuntatore s{};
    if (comando == "stato" && in >> s.x >> s.y >> s.bottone) return sim.Gioca(tipo, s) ? "ok" : "errore";
    if (comando == "uno" && in >> s.x >> s.y >> s.bottone)
        return sim.Invia(CodificaReport(tipo, s.x, s.y, s.bottone)) ? "ok" : "errore";
    if (comando == "invia") {
        std::string byte;
        for (unsigned v; in >> std::hex >> v;) byte += static_cast<char>(v);
        return sim.Invia(byte) ? "ok" : "errore";
    }
    if (comando == "ricevuti") {
        sim.AttendiQuiete(200ms, 5s);
        const std::string byte = sim.ByteRicevuti();
        sim.Dimentica();
        return Esadecimale(byte);
    }
    if (comando == "poll") return std::to_string(sim.PollRicevuti());
    return "errore: " + riga;
}

}  // namespace

int main()
{
    TTavolettaPty sim(0);
    if (!sim.Valida()) {
        std::fprintf(stderr, "sim_comandata: cannot open a pseudo-terminal\n");
        return 1;
    }
    std::cout << sim.PercorsoSlave() << std::endl;
    int tipo = 1;
    for (std::string riga; std::getline(std::cin, riga);) {
        if (!riga.empty() && riga.back() == '\r') riga.pop_back();  // a Windows host's line end
        if (riga == "fine") break;
        std::cout << Esegui(sim, tipo, riga) << std::endl;
    }
    return 0;
}
