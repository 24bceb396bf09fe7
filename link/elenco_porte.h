// The serial ports of the machine, for a host that lets its user choose one:
// each with the library's port number where it has one (COMn as the record
// names it, mapped or the platform's own), its device, a description, and
// whether another process holds it.
#ifndef VELMARIN_ELENCO_PORTE_H
#define VELMARIN_ELENCO_PORTE_H

#include <string>
#include <vector>

struct TPortaElencata {
    int porta = 0;  // 1..255, 0 where no port number opens this device
    std::string dispositivo;
    std::string descrizione;
    bool occupata = false;   // another process holds it
    std::string occupante;   // that process's name, where the platform tells
};

// Linux: /dev/serial/by-id (each adapter by its stable name), the ttyS
// devices that are real UARTs, ttyUSB and ttyACM devices without a by-id
// name, and every port mapped with IODevMapPort. Windows: every COM port the
// system lists, with its friendly name, and every mapped port. Sorted by
// port number, ports without one last, by device.
std::vector<TPortaElencata> ElencoPorte();

// The platform's side: the devices it finds, without port numbers.
std::vector<TPortaElencata> PorteDelSistema();
// Whether another process holds `p`'s device, and which; on the platform.
void Occupazione(TPortaElencata& p);
// The same device under two names (a link and its target, on Linux).
bool StessoDispositivo(const std::string& a, const std::string& b);

#endif
