// The serial devices of a Linux machine, from /dev and /sys, and the
// processes that hold one, from /proc as fuser finds them.
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <climits>
#include <cstdlib>
#include <fstream>

#include "link/elenco_porte.h"

namespace {

std::vector<std::string> Voci(const std::string& cartella)
{
    std::vector<std::string> voci;
    if (DIR* d = opendir(cartella.c_str())) {
        while (const dirent* v = readdir(d))
            if (v->d_name[0] != '.') voci.push_back(v->d_name);
        closedir(d);
    }
    return voci;
}

std::string Canonico(const std::string& percorso)
{
    char pieno[PATH_MAX];
    return realpath(percorso.c_str(), pieno) ? pieno : percorso;
}

std::string Leggi(const std::string& file)
{
    std::ifstream f(file);
    std::string s;
    std::getline(f, s);
    return s;
}

bool Inizia(const std::string& s, const char* prefisso) { return s.rfind(prefisso, 0) == 0; }

// A ttyS device stands for every UART the kernel could have; only those
// whose port type is not 0 (PORT_UNKNOWN) are there.
bool UartVera(const std::string& nome)
{
    const std::string tipo = Leggi("/sys/class/tty/" + nome + "/type");
    return !tipo.empty() && std::atoi(tipo.c_str()) != 0;
}

bool SoloCifre(const std::string& s)
{
    for (char c : s)
        if (!std::isdigit(static_cast<unsigned char>(c))) return false;
    return !s.empty();
}

bool Dispositivo(const std::string& percorso, struct stat& st)
{
    return stat(percorso.c_str(), &st) == 0 && S_ISCHR(st.st_mode);
}

// Whether a descriptor of process `pid` is the device.
bool TieneAperto(const std::string& pid, dev_t dispositivo)
{
    const std::string cartella = "/proc/" + pid + "/fd";
    for (const std::string& fd : Voci(cartella)) {
        struct stat st {};
        if (Dispositivo(cartella + "/" + fd, st) && st.st_rdev == dispositivo) return true;
    }
    return false;
}

}  // namespace

bool StessoDispositivo(const std::string& a, const std::string& b) { return a == b || Canonico(a) == Canonico(b); }

std::vector<TPortaElencata> PorteDelSistema()
{
    std::vector<TPortaElencata> porte;
    std::vector<std::string> coperti;  // the kernel names that have a by-id name
    for (const std::string& id : Voci("/dev/serial/by-id")) {
        const std::string percorso = "/dev/serial/by-id/" + id, nome = Canonico(percorso);
        coperti.push_back(nome);
        porte.push_back({0, percorso, id + " (" + nome + ")", false, ""});
    }
    for (const std::string& nome : Voci("/dev")) {
        const std::string percorso = "/dev/" + nome;
        const char* descrizione = Inizia(nome, "ttyUSB") ? "USB serial adapter"
                                  : Inizia(nome, "ttyACM") ? "USB modem (CDC ACM)"
                                  : Inizia(nome, "ttyS") && UartVera(nome) ? "serial port (UART)"
                                                                           : nullptr;
        struct stat st {};
        bool coperto = false;
        for (const std::string& c : coperti) coperto = coperto || c == percorso;
        if (descrizione && !coperto && Dispositivo(percorso, st)) porte.push_back({0, percorso, descrizione, false, ""});
    }
    return porte;
}

void Occupazione(TPortaElencata& p)
{
    struct stat dispositivo {};
    if (!Dispositivo(p.dispositivo, dispositivo)) return;
    const std::string io = std::to_string(getpid());
    for (const std::string& pid : Voci("/proc")) {
        if (!SoloCifre(pid) || pid == io || !TieneAperto(pid, dispositivo.st_rdev)) continue;
        p.occupata = true;
        const std::string nome = Leggi("/proc/" + pid + "/comm");
        p.occupante = (nome.empty() ? "?" : nome) + " (pid " + pid + ")";
        return;
    }
}
