// The COM ports Windows lists: the Ports class of the set-up API, with
// their friendly names, and HARDWARE\DEVICEMAP\SERIALCOMM, where every
// serial driver (and Wine) enters its ports. A port is held by another
// process when an exclusive open of it is refused; Windows does not say by
// whom.
#include <windows.h>
#include <devguid.h>
#include <setupapi.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "link/elenco_porte.h"
#include "link/iodev_info.h"

namespace {

// "COM7" -> 7; 0 for another name.
int NumeroCom(const std::string& nome)
{
    if (nome.size() < 4 || _strnicmp(nome.c_str(), "COM", 3) != 0) return 0;
    for (std::size_t i = 3; i < nome.size(); ++i)
        if (!std::isdigit(static_cast<unsigned char>(nome[i]))) return 0;
    const int n = std::atoi(nome.c_str() + 3);
    return n >= 1 && n <= 255 ? n : 0;
}

std::string ValoreStringa(HKEY chiave, const char* nome)
{
    char buffer[256] = "";
    DWORD dimensione = sizeof buffer - 1, tipo = 0;
    if (RegQueryValueExA(chiave, nome, nullptr, &tipo, reinterpret_cast<BYTE*>(buffer), &dimensione) != ERROR_SUCCESS ||
        tipo != REG_SZ)
        return {};
    return buffer;
}

void Aggiungi(std::vector<TPortaElencata>& porte, const std::string& nome, const std::string& descrizione)
{
    const int n = NumeroCom(nome);
    if (n == 0) return;
    const std::string dispositivo = PercorsoPredefinito(n);
    auto stesso = [&](const TPortaElencata& p) { return StessoDispositivo(p.dispositivo, dispositivo); };
    const auto trovata = std::find_if(porte.begin(), porte.end(), stesso);
    if (trovata == porte.end()) porte.push_back({0, dispositivo, descrizione, false, ""});
    else if (trovata->descrizione.empty()) trovata->descrizione = descrizione;
}

void ClassePorte(std::vector<TPortaElencata>& porte)
{
    const HDEVINFO elenco = SetupDiGetClassDevsA(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
    if (elenco == INVALID_HANDLE_VALUE) return;
    SP_DEVINFO_DATA voce{};
    voce.cbSize = sizeof voce;
    for (DWORD i = 0; SetupDiEnumDeviceInfo(elenco, i, &voce); ++i) {
        char amichevole[256] = "";
        SetupDiGetDeviceRegistryPropertyA(elenco, &voce, SPDRP_FRIENDLYNAME, nullptr,
                                          reinterpret_cast<BYTE*>(amichevole), sizeof amichevole - 1, nullptr);
        const HKEY chiave = SetupDiOpenDevRegKey(elenco, &voce, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
        if (chiave == INVALID_HANDLE_VALUE) continue;
        Aggiungi(porte, ValoreStringa(chiave, "PortName"), amichevole);
        RegCloseKey(chiave);
    }
    SetupDiDestroyDeviceInfoList(elenco);
}

void MappaSeriale(std::vector<TPortaElencata>& porte)
{
    HKEY chiave;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ, &chiave) != ERROR_SUCCESS) return;
    for (DWORD i = 0;; ++i) {
        char nome[256], dati[64];
        DWORD lungNome = sizeof nome, lungDati = sizeof dati - 1, tipo = 0;
        if (RegEnumValueA(chiave, i, nome, &lungNome, nullptr, &tipo, reinterpret_cast<BYTE*>(dati), &lungDati) !=
            ERROR_SUCCESS)
            break;
        dati[lungDati] = '\0';
        if (tipo == REG_SZ) Aggiungi(porte, dati, std::string("serial port (") + nome + ")");
    }
    RegCloseKey(chiave);
}

}  // namespace

bool StessoDispositivo(const std::string& a, const std::string& b) { return _stricmp(a.c_str(), b.c_str()) == 0; }

std::vector<TPortaElencata> PorteDelSistema()
{
    std::vector<TPortaElencata> porte;
    ClassePorte(porte);
    MappaSeriale(porte);
    return porte;
}

void Occupazione(TPortaElencata& p)
{
    // The library's own connection is not another process.
    if (devInfo && devInfo->hCom != nessunOggetto && StessoDispositivo(PercorsoPorta(devInfo->porta), p.dispositivo))
        return;
    const HANDLE h = CreateFileA(p.dispositivo.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (h != INVALID_HANDLE_VALUE) {
        CloseHandle(h);
        return;
    }
    const DWORD codice = GetLastError();
    p.occupata = codice == ERROR_ACCESS_DENIED || codice == ERROR_SHARING_VIOLATION;
}
