// The command sequences that put a tablet into the state its decoder expects:
// report format and length, the lines, the optional reset and the model's
// fixed commands, timed by fixed waits. Open loop: nothing the tablet says is
// read or awaited.
//
// With no port record at all (the host calls these before any Init) there is
// no port to program: the link record still takes the format and the length,
// but no port operation is tried and no wait is spent. After a failed Init
// the record exists, so the sequences run in full, waits included, and their
// writes simply reach no tablet.
#include <cstring>

#include "digit.h"
#include "link/iodev.h"
#include "link/iodev_info.h"
#include "platform/winui.h"
#include "reports/digit_link.h"
#include "tablet/connessione_altrui.h"

namespace {

constexpr char esc[] = "\x1B";

// False while a sequence runs for an object that has no connection of its
// own while another object's runs: nothing of it may reach that line.
bool versoLaLinea = true;

// Sets versoLaLinea for one sequence (the reset runs inside the init).
class TVersoLaLinea {
public:
    explicit TVersoLaLinea(std::intptr_t hPorta) : prima(versoLaLinea) { versoLaLinea = !ConnessioneAltrui(hPorta); }
    ~TVersoLaLinea() { versoLaLinea = prima; }
    TVersoLaLinea(const TVersoLaLinea&) = delete;
    TVersoLaLinea& operator=(const TVersoLaLinea&) = delete;

private:
    bool prima;
};

void Manda(const void* byte, std::uint32_t quanti)
{
    if (versoLaLinea) IODevWrite(byte, quanti);
}

// One write of exactly the bytes of a literal, without its terminator.
template <std::size_t N>
void Invia(const char (&byte)[N])
{
    Manda(byte, N - 1);
}

// The resolution command of a model, or null when that place sends nothing.
const char* Risoluzione(int tipo, int risoluzione)
{
    if (risoluzione < 1 || risoluzione > 3) return nullptr;
    static const char* const summa[] = {"e", "h", "j"};
    static const char* const microGrid[] = {"0", "2", "4"};
    static const char* const rolley[] = {
        "FLAG;KDOWN;KALPHA;XDEL ,;YDEL ,;SDEL M;MM;ROUND;DEC;INT;\r",
        "FLAG;KDOWN;KALPHA;XDEL ,;YDEL ,;SDEL M;MM;FULL;DEC;INT;\r",
        nullptr,
    };
    switch (tipo) {
    case 1: case 2: case 3: case 9: return summa[risoluzione - 1];
    case 5: return microGrid[risoluzione - 1];
    case 6: return rolley[risoluzione - 1];
    default: return nullptr;
    }
}

void InviaRisoluzione(int tipo, int risoluzione)
{
    if (const char* r = Risoluzione(tipo, risoluzione))
        Manda(r, static_cast<std::uint32_t>(std::strlen(r)));
}

// Report length of each model, by tipo; -1 where SendInitString sets none.
std::int32_t LenReportDi(int tipo)
{
    static const std::int32_t len[] = {-1, 15, 40, 40, 40, 20, 40, 40, 15, 15};
    return tipo >= 0 && tipo <= 9 ? len[tipo] : -1;
}

bool PortaPresente() { return devInfo != nullptr; }

}  // namespace

void CDigit::SendInitString()
{
    const HCURSOR precedente = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    const TVersoLaLinea linea(hPorta);
    const int tipo = dati.tipo;
    const bool porta = PortaPresente();
    auto attendi = [&](std::int32_t ms) {
        if (porta) Ritarda(ms);
    };

    if (versoLaLinea) Scrivi(digitLink.tipoReport, static_cast<std::int8_t>(tipo & 0xFF));
    if (porta && ((tipo >= 1 && tipo <= 3) || (tipo >= 5 && tipo <= 9))) {
        if (versoLaLinea) {
            IODevSetRts();
            IODevSetDtr();
        }
        if (tipo == 6) attendi(1000);
    }
    SendResetSeScelto();

    const std::int32_t len = LenReportDi(tipo);
    if (len > 0 && versoLaLinea) Scrivi(digitLink.lenReport, len);
    const int ris = dati.risoluzione;
    switch (tipo) {
    case 1: case 2: case 9:
        Invia("@");
        attendi(100);
        InviaRisoluzione(tipo, ris);
        break;
    case 3:
        Invia("O");
        attendi(100);
        InviaRisoluzione(tipo, ris);
        break;
    case 5:
        Invia(esc);
        Invia("MB");
        Invia(esc);
        Invia("M0");
        Invia(esc);
        Invia("C");
        InviaRisoluzione(tipo, ris);
        attendi(2000);
        break;
    case 6:
        Invia("I;");
        attendi(100);
        InviaRisoluzione(tipo, ris);
        attendi(100);
        Invia("MC;");
        Invia("H;");
        Invia("V;");
        attendi(500);
        break;
    case 7:
        Invia(esc);
        Invia("%R\r");
        attendi(1000);
        break;
    default:  // 4 and 8 send nothing more; other values set nothing at all
        break;
    }
    SetCursor(precedente);
}

void CDigit::SendResetSeScelto()
{
    if (!PortaPresente()) return;
    const TVersoLaLinea linea(hPorta);
    if (versoLaLinea) {
        IODevPurgeRx();
        IODevPurgeTx();
    }
    if (dati.reset == 1) return;  // any other value, 0 included, counts as a yes
    switch (dati.tipo) {
    case 1: case 2: case 3: case 9:
        Manda("", 1);  // one NUL byte
        Ritarda(1000);
        break;
    case 5:
        Invia(esc);
        Invia("Z");
        Ritarda(1000);
        break;
    case 6:
        Invia("R;");
        Ritarda(100);
        break;
    case 7:
        Invia(esc);
        Invia("%VR\r");
        Ritarda(1000);
        break;
    case 8:
        Invia(":Z\r");
        Ritarda(1000);
        break;
    default:  // 4 has no reset; other values send nothing and do not wait
        break;
    }
}

// Waits on the 32-bit millisecond tick. A counter that went back has wrapped,
// and the wait starts again from there; start + ms is taken in 32 bits, so a
// wait begun just before the wrap may end at once. Between two reads the
// processor is let go (CediTick), so a wait costs next to no CPU; the host's
// thread stays held all the same, as the design wants.
void CDigit::Ritarda(std::int32_t ms) const
{
    std::uint32_t start = GetTickCount();
    for (;;) {
        const std::uint32_t now = GetTickCount();
        if (start > now) start = now;
        if (now >= start + static_cast<std::uint32_t>(ms)) return;
        CediTick();
    }
}
