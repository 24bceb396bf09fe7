// Port names and the devices behind them. The library keeps the name
// "COM<n>" for its port; COMn opens the platform's own device for n unless
// the host has mapped it to another. The table is filled only through
// IODevMapPort: nothing reads the environment, a file or the registry.
#include <array>
#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

#include "digit.h"
#include "link/iodev_info.h"

namespace {

constexpr int maxPorta = 255;  // the port number is one byte in the link record

std::mutex mutexMappa;
std::array<std::string, maxPorta + 1> mappa;  // index: port number; empty = default

}  // namespace

int IODevMapPort(int porta, const char* path)
{
    if (porta < 1 || porta > maxPorta) return 0;
    std::lock_guard<std::mutex> g(mutexMappa);
    mappa[static_cast<std::size_t>(porta)] = path ? path : "";
    return 1;
}

std::string NomePorta(int porta)
{
    char nome[16];
    std::snprintf(nome, sizeof nome, "COM%d", porta);
    return nome;
}

std::string PercorsoPorta(int porta)
{
    if (porta < 1 || porta > maxPorta) return {};
    {
        std::lock_guard<std::mutex> g(mutexMappa);
        const std::string& mappato = mappa[static_cast<std::size_t>(porta)];
        if (!mappato.empty()) return mappato;
    }
    return PercorsoPredefinito(porta);
}

std::vector<std::pair<int, std::string>> PorteMappate()
{
    std::vector<std::pair<int, std::string>> mappate;
    std::lock_guard<std::mutex> g(mutexMappa);
    for (int porta = 1; porta <= maxPorta; ++porta)
        if (!mappa[static_cast<std::size_t>(porta)].empty()) mappate.emplace_back(porta, mappa[static_cast<std::size_t>(porta)]);
    return mappate;
}
