// The serial layer on POSIX termios.
//
// How the operations of the original design map to this platform:
// - The port opens with open(2), O_NONBLOCK and close-on-exec, then takes
//   flock and TIOCEXCL; a port that refuses either counts as one that cannot
//   be opened. That keeps out a second open by the library, by any program
//   that locks the device the same way, and any later open by a process
//   without CAP_SYS_ADMIN. It does not keep out a process that held the
//   device open before: a terminal program or a modem manager goes on
//   reading and takes bytes meant for the tablet's reader. A terminal that
//   is no line to a tablet (the multiplexer /dev/ptmx, a pseudo-terminal's
//   master, a console) is refused: it opens, and stays silent.
// - The port never stays on descriptor 0, 1 or 2: with standard input or
//   output closed, open(2) would give it one of those, and whatever the
//   program prints would go down the tablet's line.
// - Line settings go through tcgetattr/tcsetattr; the record's handshake bits
//   become CRTSCTS (bit 1) and IXON/IXOFF with VSTART 0x11 and VSTOP 0x13
//   (bit 2). POSIX has no DSR/DTR handshake, so bit 0 has no effect, and no
//   queue size or XON/XOFF limit settings: the driver's own stand.
// - DTR and RTS are raised and dropped with TIOCMBIS/TIOCMBIC; the purges are
//   tcflush. As in the original, their results are not looked at: on a
//   pseudo-terminal these ioctls fail and nothing else changes.
// - A write is bounded by the write time limit, 19200 / rate milliseconds per
//   byte. A write that runs out of time ends short and still counts as handed
//   over, as a timed-out overlapped write completes with a short count that
//   nobody compares; only a failure of the port itself gives 0.
// - The reader blocks in poll(2) on the port and on a wake descriptor, so a
//   stop, a hold or a resume reaches it at once on a quiet line. While
//   delivery is held it waits on the wake descriptor alone instead of
//   spinning, and a port that reports a hang-up or an error but no bytes
//   (a pseudo-terminal whose other side went away) makes it pause briefly.
#include "link/iodev.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>

#include "link/iodev_info.h"
#include "link/linea_posix.h"
#include "link/ultimo_errore.h"
#include "reports/digit_link.h"

namespace {

constexpr int attesaLettura = 1000;  // ms a read of queued bytes may wait to complete

// The line's settings as this open found them, put back at close, so that
// the next program finds the line as it was.
termios termiosOriginale{};
bool originaleLetto = false;

int Fd(std::intptr_t oggetto) { return static_cast<int>(oggetto); }

void ConsumaSveglia(int fd)
{
    std::uint64_t v;
    const ssize_t r = read(fd, &v, sizeof v);
    (void)r;
}

int InCoda(int fd)
{
    int coda = 0;
    return ioctl(fd, FIONREAD, &coda) == 0 ? coda : 0;
}

// The reader blocks in poll(2) on the port and on the wake descriptor.
class TAttesaPoll : public TAttesaLettore {
public:
    explicit TAttesaPoll(const TIODevInfo& d) : porta(Fd(d.hCom)), sveglia(Fd(d.sveglia)) {}

    TEsito AttendiPorta(int ms) override
    {
        pollfd p[2] = {{porta, POLLIN, 0}, {sveglia, POLLIN, 0}};
        const int pronti = poll(p, 2, ms);
        if (pronti == 0) return scaduto;
        if (pronti < 0) return svegliato;
        if (p[1].revents & POLLIN) ConsumaSveglia(sveglia);
        // A hung-up port reports itself readable too; it is a fault once
        // what it still held has been read.
        if (p[0].revents & (POLLHUP | POLLERR | POLLNVAL)) return InCoda(porta) > 0 ? byte : guasto;
        return (p[0].revents & POLLIN) ? byte : svegliato;
    }

    void AttendiSveglia(int ms) override
    {
        pollfd p{sveglia, POLLIN, 0};
        if (poll(&p, 1, ms) > 0 && (p.revents & POLLIN)) ConsumaSveglia(sveglia);
    }

private:
    int porta, sveglia;
};

void Linea(int fd, int bit, bool alza)
{
    int bits = bit;
    (void)ioctl(fd, alza ? TIOCMBIS : TIOCMBIC, &bits);
}

void Svuota(int fd, int code) { (void)tcflush(fd, code); }

void ChiudiPorta(TIODevInfo& d)
{
    (void)ioctl(Fd(d.hCom), TIOCNXCL);
    close(Fd(d.hCom));
    d.hCom = nessunOggetto;
}

void ChiudiSveglia(TIODevInfo& d)
{
    if (d.sveglia >= 0) close(Fd(d.sveglia));
    d.sveglia = nessunOggetto;
}

// A descriptor moved above the three standard ones, close-on-exec; -1 when
// it cannot be moved (the one given is closed then) or was -1.
int FuoriDaiFlussiStandard(int fd)
{
    if (fd < 0 || fd > STDERR_FILENO) return fd;
    const int alto = fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(fd);
    return alto;
}

// Closes a descriptor that cannot serve and records why; -1.
int Rifiuta(int fd, int porta, const char* perche, int codice)
{
    close(fd);
    RegistraErroreSistema(PortaEDispositivo(porta) + ": " + perche, static_cast<unsigned long>(codice));
    return -1;
}

// A terminal that is no line to a tablet: the pseudo-terminal multiplexer,
// which hands out a new master at each open, a master itself, the console
// and the controlling terminal (major 5), or a virtual console (major 4
// below 64, where the serial ports begin).
bool LineaVera(int fd)
{
    unsigned numero = 0;
    struct stat st {};
    if (ioctl(fd, TIOCGPTN, &numero) == 0 || fstat(fd, &st) != 0) return false;
    const unsigned maggiore = major(st.st_rdev), minore = minor(st.st_rdev);
    return maggiore != 5 && !(maggiore == 4 && minore < 64);
}

// Opens the port exclusively; -1 when it cannot be had, with the reason
// recorded.
int ApriEsclusivo(int porta)
{
    const std::string percorso = PercorsoPorta(porta);
    if (percorso.empty()) {
        RegistraErrore(NomePorta(porta) + ": no such port; the ports are COM1 to COM255");
        return -1;
    }
    const int fd = FuoriDaiFlussiStandard(open(percorso.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (fd < 0) {
        RegistraErroreSistema(PortaEDispositivo(porta) + ": cannot be opened", CodiceSistema());
        return -1;
    }
    if (!isatty(fd)) return Rifiuta(fd, porta, "not a serial line", ENOTTY);
    if (!LineaVera(fd))
        return Rifiuta(fd, porta, "not a serial line (a pseudo-terminal's master side, or a console)", ENOTTY);
    if (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int codice = errno;
        return Rifiuta(fd, porta, "another process holds it (flock)", codice);
    }
    if (ioctl(fd, TIOCEXCL) != 0) {
        const int codice = errno;
        return Rifiuta(fd, porta, "cannot be had exclusively (TIOCEXCL)", codice);
    }
    return fd;
}

}  // namespace

void SvuotaCode(const TIODevInfo& d) { Svuota(Fd(d.hCom), TCIOFLUSH); }

bool PortaGuasta(const TIODevInfo& d)
{
    pollfd p{Fd(d.hCom), 0, 0};  // no events asked: the faults come all the same
    return poll(&p, 1, 0) > 0 && (p.revents & (POLLHUP | POLLERR | POLLNVAL)) && InCoda(p.fd) == 0;
}

void SvegliaLettore(const TIODevInfo& d)
{
    if (d.sveglia < 0) return;
    const std::uint64_t uno = 1;
    const ssize_t r = write(Fd(d.sveglia), &uno, sizeof uno);
    (void)r;  // a full counter already wakes the reader
}

int AvviaConnessione(TIODevInfo& d, TDigitLink& link)
{
    if (d.hCom >= 0) {  // already open: the exclusive open fails
        RegistraErrore(NomePorta(d.porta) + ": a connection of this process is open already");
        return 0;
    }
    const int fd = ApriEsclusivo(d.porta);
    if (fd < 0) return 0;
    d.hCom = fd;
    originaleLetto = tcgetattr(fd, &termiosOriginale) == 0;
    Svuota(fd, TCIOFLUSH);
    if (IODevConfigure() == 0) {
        d.attivo = 0;
        ChiudiLinea(d);
        return 0;
    }
    // The reader's wake object. If it cannot be made the reader ends at its
    // start, with its box, and the port stays open until IODevClose.
    d.sveglia = FuoriDaiFlussiStandard(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
    d.attivo = 1;  // before the thread exists, so that it finds it set
    try {
        d.hThread = std::thread(IODevThread, &link);
    } catch (const std::system_error& e) {
        RegistraErroreSistema(NomePorta(d.porta) + ": the reader thread cannot start",
                              static_cast<unsigned long>(e.code().value()));
        d.attivo = 0;
        ChiudiSveglia(d);
        ChiudiPorta(d);
        return 0;
    }
    d.handle = NuovoHandle();
    Linea(fd, TIOCM_DTR, true);
    Linea(fd, TIOCM_RTS, true);
    return 1;
}

const unsigned long codicePortaOccupata = EBUSY;

int ProvaPorta(int porta)
{
    const int fd = ApriEsclusivo(porta);
    if (fd < 0) return 0;
    (void)ioctl(fd, TIOCNXCL);
    close(fd);  // the lock goes with it
    return 1;
}

int IODevCreate(TDigitLink& link)
{
    if (devInfo) return 1;
    devInfo = NuovoRecord(link);
    return devInfo ? 1 : -1;
}

int IODevConfigure()
{
    if (!devInfo) return 0;
    termios t{};
    const int fd = Fd(devInfo->hCom);
    const bool letto = tcgetattr(fd, &t) == 0;
    const bool preso = letto && TermiosDelRecord(*devInfo, t);
    const int esito = preso && ImpostaLinea(fd, t);
    if (!esito) {
        const std::string rifiuto = PortaEDispositivo(devInfo->porta) + ": the line refused " + DescrizioneLinea(*devInfo);
        if (letto && !preso) RegistraErrore(rifiuto + ": a port takes 5 to 8 data bits", EINVAL);
        else RegistraErroreSistema(rifiuto, CodiceSistema());
    }
    devInfo->abilitato = 1;  // whatever the port answered
    return esito;
}

void ChiudiLinea(TIODevInfo& d)
{
    if (d.hCom < 0) return;
    Linea(Fd(d.hCom), TIOCM_DTR, false);
    Linea(Fd(d.hCom), TIOCM_RTS, false);
    Svuota(Fd(d.hCom), TCIOFLUSH);
    if (originaleLetto) (void)tcsetattr(Fd(d.hCom), TCSANOW, &termiosOriginale);
    originaleLetto = false;
    ChiudiPorta(d);
}

int IODevClose()
{
    if (!devInfo) return 0;
    TIODevInfo& d = *devInfo;
    if (IODevSulLettore()) return ChiudiDalLettore(d);
    d.attivo = 0;
    SvegliaLettore(d);
    if (d.hThread.joinable()) d.hThread.join();
    ChiudiSveglia(d);
    ChiudiLinea(d);
    d.handle = 0;
    return 1;
}

int IODevDestroy()
{
    if (!devInfo || IODevSulLettore()) return 0;
    if (devInfo->attivo || devInfo->hThread.joinable() || devInfo->hCom >= 0) IODevClose();
    delete devInfo;
    devInfo = nullptr;
    return 1;
}

std::uint32_t IODevRead(std::uint8_t* buffer, std::uint32_t massimo)
{
    if (!devInfo) return 0;
    const int fd = Fd(devInfo->hCom);
    const int coda = InCoda(fd);
    if (coda <= 0) return 0;
    const std::uint32_t quanti = std::min(massimo, static_cast<std::uint32_t>(coda));
    if (quanti == 0) return 0;
    ssize_t letti = read(fd, buffer, quanti);
    if (letti < 0 && errno == EAGAIN) {
        pollfd p{fd, POLLIN, 0};
        if (poll(&p, 1, attesaLettura) > 0) letti = read(fd, buffer, quanti);
    }
    return letti > 0 ? static_cast<std::uint32_t>(letti) : 0;
}

int IODevWrite(const void* buffer, std::uint32_t quanti)
{
    if (!devInfo || !devInfo->abilitato || devInfo->hCom < 0) return 0;
    using orologio = std::chrono::steady_clock;
    const int fd = Fd(devInfo->hCom);
    const auto scadenza = orologio::now() +
        std::chrono::milliseconds(static_cast<std::int64_t>(quanti) * MoltiplicatoreScrittura(devInfo->velocita));
    const auto* p = static_cast<const std::uint8_t*>(buffer);
    std::uint32_t resto = quanti;
    while (resto > 0) {
        const ssize_t scritti = write(fd, p, resto);
        if (scritti > 0) {
            p += scritti;
            resto -= static_cast<std::uint32_t>(scritti);
            continue;
        }
        if (scritti < 0 && errno == EINTR) continue;
        if (scritti < 0 && errno != EAGAIN) return 0;  // the port failed: the bytes are lost
        const auto mancano = std::chrono::duration_cast<std::chrono::milliseconds>(scadenza - orologio::now());
        if (mancano.count() <= 0) break;  // time limit: the transfer ends short
        pollfd pf{fd, POLLOUT, 0};
        (void)poll(&pf, 1, static_cast<int>(mancano.count()));
    }
    return 1;
}

std::uint32_t IODevThread(TDigitLink* link)
{
    if (!devInfo) return 0;
    if (devInfo->sveglia < 0) {
        BoxGuastoLettore();
        return 0;
    }
    TAttesaPoll attesa(*devInfo);
    const std::uint32_t esito = CicloLettore(*link, attesa);
    if (devInfo->chiusaDalLettore) ChiudiLinea(*devInfo);
    return esito;
}

int IODevHold()
{
    if (!devInfo) return 0;
    Linea(Fd(devInfo->hCom), TIOCM_DTR, false);
    devInfo->abilitato = 0;
    SvegliaLettore(*devInfo);
    return 1;
}

void IODevSetDtr()
{
    if (devInfo) Linea(Fd(devInfo->hCom), TIOCM_DTR, true);
}

void IODevSetRts()
{
    if (devInfo) Linea(Fd(devInfo->hCom), TIOCM_RTS, true);
}

void IODevPurgeTx()
{
    if (devInfo) Svuota(Fd(devInfo->hCom), TCOFLUSH);
}

void IODevPurgeRx()
{
    if (devInfo) Svuota(Fd(devInfo->hCom), TCIFLUSH);
}


std::string PercorsoPredefinito(int porta) { return "/dev/ttyS" + std::to_string(porta - 1); }
