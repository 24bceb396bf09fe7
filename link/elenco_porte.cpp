#include "link/elenco_porte.h"

#include <algorithm>

#include "link/iodev_info.h"

namespace {

constexpr int maxPorta = 255;

// The port number that opens `dispositivo`: a mapped one first, else the
// platform's own number for it; 0 for none.
int PortaDi(const std::string& dispositivo)
{
    for (const auto& [porta, mappato] : PorteMappate())
        if (StessoDispositivo(mappato, dispositivo)) return porta;
    for (int porta = 1; porta <= maxPorta; ++porta)
        if (PercorsoPorta(porta) == PercorsoPredefinito(porta) && StessoDispositivo(PercorsoPredefinito(porta), dispositivo))
            return porta;
    return 0;
}

}  // namespace

std::vector<TPortaElencata> ElencoPorte()
{
    std::vector<TPortaElencata> porte = PorteDelSistema();
    for (TPortaElencata& p : porte) p.porta = PortaDi(p.dispositivo);
    // A mapped device the system does not list (a pseudo-terminal, a name
    // of the host's own) is a port all the same.
    for (const auto& [porta, mappato] : PorteMappate()) {
        const bool elencato = std::any_of(porte.begin(), porte.end(),
                                          [&](const TPortaElencata& p) { return StessoDispositivo(p.dispositivo, mappato); });
        if (!elencato) porte.push_back({porta, mappato, NomePorta(porta) + ", mapped", false, ""});
    }
    for (TPortaElencata& p : porte) Occupazione(p);
    std::stable_sort(porte.begin(), porte.end(), [](const TPortaElencata& a, const TPortaElencata& b) {
        const int pa = a.porta ? a.porta : maxPorta + 1, pb = b.porta ? b.porta : maxPorta + 1;
        return pa != pb ? pa < pb : a.dispositivo < b.dispositivo;
    });
    return porte;
}
