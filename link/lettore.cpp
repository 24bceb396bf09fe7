// The reader's loop, the delivery gate and the resume of delivery, the same
// on every platform: only the waits, the purge, the lines and the wake-up
// belong to the platform's layer.
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

// One drain under the gate: read what the port holds and hand it on, until
// a read finds nothing or the gather has no room. Returns the bytes read.
std::int32_t Drena(const TIODevInfo& d, TDigitLink& link)
{
    std::lock_guard<std::mutex> g(cancello);
    if (!d.attivo || !d.abilitato) return 0;  // held meanwhile: these bytes go with the resume's purge
    std::int32_t totale = 0;
    do {
        link.numLetti = static_cast<std::int32_t>(IODevRead(link.bufLettura, dimBuffer));
        if (link.numLetti > 0) {
            totale += link.numLetti;
            ProcessaLettura(link, GetTickCount());
        }
    } while (link.numLetti > 0);
    return totale;
}

}  // namespace

std::uint32_t CicloLettore(TDigitLink& link, TAttesaLettore& attesa)
{
    const TIODevInfo& d = *devInfo;
    idLettore = std::this_thread::get_id();
    while (d.attivo) {
        if (!d.abilitato) {
            attesa.AttendiSveglia(-1);
            continue;
        }
        const TAttesaLettore::TEsito esito = attesa.AttendiPorta();
        if (esito == TAttesaLettore::svegliato) continue;
        // A port that woke the reader and then gave nothing, or reports a
        // fault, would have it spin: it pauses, unless woken meanwhile.
        const std::int32_t letti = esito == TAttesaLettore::byte ? Drena(d, link) : 0;
        if (letti == 0) attesa.AttendiSveglia(pausaGuasto);
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

void BoxGuastoLettore()
{
    MessageBoxA(nullptr, "Failed to create event for thread!", "IODev Error!", MB_OK | MB_ICONEXCLAMATION);
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
