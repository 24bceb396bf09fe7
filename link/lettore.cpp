// The reader's loop, the delivery gate and the resume of delivery, the same
// on every platform: only the waits, the purge, the lines and the wake-up
// belong to the platform's layer.
#include <algorithm>
#include <chrono>
#include <mutex>

#include "link/iodev.h"
#include "link/iodev_info.h"
#include "link/raccolta_interrotta.h"
#include "platform/winui.h"
#include "reports/digit_link.h"

namespace {

std::mutex cancello;                       // the delivery gate
std::atomic<std::thread::id> idLettore{};  // the reader thread while it runs

constexpr int pausaGuasto = 20;  // ms the reader pauses on a port that gives no bytes

int PausaVuota(int attesaQuiete) { return attesaQuiete < 0 ? pausaGuasto : std::min(pausaGuasto, attesaQuiete); }

// The reader's own clock for the pauses of the line: real time, whatever
// tick the host or a test puts behind GetTickCount.
std::uint32_t Orologio()
{
    using namespace std::chrono;
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

bool Consegna(const TIODevInfo& d) { return d.attivo && d.abilitato; }

// One drain under the gate: read what the port holds and hand it on, until
// a read finds nothing or delivery stops (a target that stops from inside
// its notification). Returns the bytes read.
std::int32_t Drena(const TIODevInfo& d, TDigitLink& link)
{
    std::lock_guard<std::mutex> g(cancello);
    std::int32_t totale = 0;
    while (Consegna(d)) {  // held meanwhile: the bytes left go with the resume's purge
        link.numLetti = static_cast<std::int32_t>(IODevRead(link.bufLettura, dimBuffer));
        if (link.numLetti <= 0) break;
        totale += link.numLetti;
        ProcessaLettura(link, Orologio());
    }
    return totale;
}

// The line was found quiet: under the gate, as its decode notifies.
void Quiete(const TIODevInfo& d, TDigitLink& link)
{
    std::lock_guard<std::mutex> g(cancello);
    if (Consegna(d)) ProcessaQuiete(link, Orologio());
}

}  // namespace

std::uint32_t CicloLettore(TDigitLink& link, TAttesaLettore& attesa)
{
    TIODevInfo& d = *devInfo;
    idLettore = std::this_thread::get_id();
    while (d.attivo) {
        if (!d.abilitato) {
            attesa.AttendiSveglia(-1);
            continue;
        }
        const TAttesaLettore::TEsito esito = attesa.AttendiPorta(AttesaQuiete(link, Orologio()));
        const std::int32_t letti = esito == TAttesaLettore::byte ? Drena(d, link) : 0;
        if (esito == TAttesaLettore::guasto) d.persa = 1;
        if (letti > 0) {
            d.persa = 0;
            continue;
        }
        Quiete(d, link);
        // A port that woke the reader and then gave nothing, or reports a
        // fault, would have it spin: it pauses, unless woken meanwhile, and
        // no longer than the line has left to be found quiet.
        if (esito == TAttesaLettore::byte || esito == TAttesaLettore::guasto)
            attesa.AttendiSveglia(PausaVuota(AttesaQuiete(link, Orologio())));
    }
    idLettore = std::thread::id{};
    return 1;
}

// Under the gate, so that no drain reads a byte before the purge and gathers
// it after the resume has dropped the gather under way.
int IODevResume()
{
    if (!devInfo) return 0;
    TCancelloConsegna cancelloRipresa;
    SvuotaCode(*devInfo);
    SegnalaRipresa();
    IODevSetDtr();
    devInfo->abilitato = 1;
    SvegliaLettore(*devInfo);
    return 1;
}

int ChiudiDalLettore(TIODevInfo& d)
{
    d.abilitato = 0;
    d.attivo = 0;
    d.chiusaDalLettore = true;
    return 1;
}

void BoxGuastoLettore()
{
    MessageBoxA(nullptr, "Failed to create event for thread!", "IODev Error!", MB_OK | MB_ICONEXCLAMATION);
}

TStatoLinea IODevStatoLinea()
{
    if (!devInfo || !devInfo->attivo) return lineaChiusa;
    // A held reader does not watch the port: a line lost meanwhile (the
    // adapter pulled while no one listened) is found here.
    if (!devInfo->persa && !devInfo->abilitato && PortaGuasta(*devInfo)) devInfo->persa = 1;
    return devInfo->persa ? lineaPersa : lineaAperta;
}

bool IODevSulLettore() { return idLettore.load() == std::this_thread::get_id(); }

TCancelloConsegna::TCancelloConsegna() : preso(!IODevSulLettore())
{
    if (preso) cancello.lock();
}

TCancelloConsegna::~TCancelloConsegna()
{
    if (preso) cancello.unlock();
}
