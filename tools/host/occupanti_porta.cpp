#include "occupanti_porta.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <fstream>

namespace {

bool StessoDispositivo(const struct stat& a, const struct stat& b)
{
    return S_ISCHR(a.st_mode) && S_ISCHR(b.st_mode) && a.st_rdev == b.st_rdev;
}

// Whether one of the descriptors of process `pid` is the device `dispositivo`.
bool TieneAperto(const std::string& pid, const struct stat& dispositivo)
{
    const std::string cartella = "/proc/" + pid + "/fd";
    DIR* d = opendir(cartella.c_str());
    if (!d) return false;
    bool trovato = false;
    while (dirent* voce = readdir(d)) {
        struct stat st {};
        if (voce->d_name[0] != '.' && stat((cartella + "/" + voce->d_name).c_str(), &st) == 0 &&
            StessoDispositivo(st, dispositivo)) {
            trovato = true;
            break;
        }
    }
    closedir(d);
    return trovato;
}

std::string NomeProcesso(const std::string& pid)
{
    std::ifstream comm("/proc/" + pid + "/comm");
    std::string nome;
    std::getline(comm, nome);
    return nome.empty() ? "?" : nome;
}

bool SoloCifre(const char* s)
{
    for (; *s; ++s)
        if (!std::isdigit(static_cast<unsigned char>(*s))) return false;
    return true;
}

}  // namespace

std::vector<TOccupante> OccupantiPorta(const std::string& percorso)
{
    std::vector<TOccupante> occupanti;
    struct stat dispositivo {};
    if (stat(percorso.c_str(), &dispositivo) != 0 || !S_ISCHR(dispositivo.st_mode)) return occupanti;
    DIR* proc = opendir("/proc");
    if (!proc) return occupanti;
    const std::string io = std::to_string(getpid());
    while (dirent* voce = readdir(proc)) {
        const std::string pid = voce->d_name;
        if (!SoloCifre(voce->d_name) || pid == io) continue;
        if (TieneAperto(pid, dispositivo)) occupanti.push_back({std::stoi(pid), NomeProcesso(pid)});
    }
    closedir(proc);
    return occupanti;
}

void AvvisaOccupanti(const std::string& percorso, std::FILE* out)
{
    for (const TOccupante& o : OccupantiPorta(percorso))
        std::fprintf(out,
                     "velmarin-host: warning: %s is also held open by %s (pid %d), which may take the "
                     "tablet's bytes\n",
                     percorso.c_str(), o.nome.c_str(), o.pid);
}
