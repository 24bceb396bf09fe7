// The fuzz targets' seeds: every model's simulated strokes, cut into reads of
// several sizes. Run again when an encoder changes: genera_semi FOLDER

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "tools/sim/codifica_report.h"

namespace fs = std::filesystem;

namespace {

// x, y, button
const int tratto[][3] = {{0, 0, 0},   {120, 340, 0}, {121, 341, 1}, {121, 341, 1},
                         {500, 20, 0}, {9999, 4321, 2}, {65535, 1, 0}, {3, 131071, 4}};

// The stream cut into reads of `pezzo` bytes, each behind its control byte.
std::string Semina(const std::string& flusso, std::size_t pezzo)
{
    std::string semi;
    for (std::size_t pos = 0; pos < flusso.size(); pos += pezzo) {
        const std::string parte = flusso.substr(pos, pezzo);
        semi += static_cast<char>(parte.size() - 1) + parte;
    }
    return semi;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "uso: genera_semi <cartella del corpus>\n");
        return 2;
    }
    for (int tipo = 1; tipo <= 8; ++tipo) {
        std::string flusso;
        for (const auto& s : tratto) flusso += CodificaReport(tipo, s[0], s[1], s[2]);
        const fs::path cartella = fs::path(argv[1]) / ("formato" + std::to_string(tipo));
        fs::create_directories(cartella);
        for (std::size_t pezzo : {1u, 7u, 20u, 64u}) {
            std::ofstream out(cartella / ("tratto_" + std::to_string(pezzo)), std::ios::binary);
            out << Semina(flusso, pezzo);
        }
    }
    return 0;
}
