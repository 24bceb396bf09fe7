#include "tavoletta_pty.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>

#include "digit.h"
#include "sim/codifica_report.h"

namespace {

constexpr int pausaHangup = 10;  // ms between reads while the slave side is closed
const std::string poll4 = "?\r\n";

}  // namespace

TTavolettaPty::TTavolettaPty(int porta_) : porta(porta_)
{
    const int m = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m < 0) return;
    char nome[128];
    termios t{};
    if (grantpt(m) != 0 || unlockpt(m) != 0 || ptsname_r(m, nome, sizeof nome) != 0 || tcgetattr(m, &t) != 0) {
        close(m);
        return;
    }
    cfmakeraw(&t);
    tcsetattr(m, TCSANOW, &t);
    fcntl(m, F_SETFL, fcntl(m, F_GETFL) | O_NONBLOCK);
    sveglia = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (sveglia < 0 || (porta != 0 && IODevMapPort(porta, nome) != 1)) {
        close(m);
        if (sveglia >= 0) close(sveglia);
        sveglia = -1;
        return;
    }
    master = m;
    slave = nome;
    registratore = std::thread([this] { Registra(); });
}

TTavolettaPty::~TTavolettaPty()
{
    if (master < 0) return;
    {
        std::lock_guard<std::mutex> g(mutex);
        fine = true;
    }
    const std::uint64_t uno = 1;
    if (write(sveglia, &uno, sizeof uno) < 0) {
        // the counter is already set: the recorder wakes all the same
    }
    registratore.join();
    if (porta != 0) IODevMapPort(porta, nullptr);
    close(master);
    close(sveglia);
}

bool TTavolettaPty::LeggiImpostazioni(termios& t) const { return master >= 0 && tcgetattr(master, &t) == 0; }

bool TTavolettaPty::RipristinaImpostazioni()
{
    termios t{};
    if (!LeggiImpostazioni(t)) return false;
    cfmakeraw(&t);
    return tcsetattr(master, TCSANOW, &t) == 0;
}

bool TTavolettaPty::Invia(const std::string& byte)
{
    if (master < 0) return false;
    std::lock_guard<std::mutex> g(mutexScrittura);
    const auto limite = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    std::size_t fatti = 0;
    while (fatti < byte.size()) {
        const ssize_t n = write(master, byte.data() + fatti, byte.size() - fatti);
        if (n > 0) {
            fatti += static_cast<std::size_t>(n);
            continue;
        }
        if (n < 0 && errno != EAGAIN && errno != EINTR) return false;
        if (std::chrono::steady_clock::now() > limite) return false;
        pollfd p{master, POLLOUT, 0};
        poll(&p, 1, 10);
    }
    return true;
}

std::string TTavolettaPty::Raffica(int tipo, const TStatoPuntatore& stato, std::size_t lunghezza)
{
    const std::string report = CodificaReport(tipo, stato.x, stato.y, stato.bottone);
    if (report.empty()) return {};
    std::string r;
    while (r.size() < lunghezza) r += report;
    r.resize(lunghezza);
    return r;
}

void TTavolettaPty::RispondiAlPoll(const TStatoPuntatore& stato)
{
    std::lock_guard<std::mutex> g(mutex);
    rispondi = true;
    risposta = stato;
}

bool TTavolettaPty::Gioca(int tipo, const TStatoPuntatore& stato)
{
    if (tipo == 4) {
        RispondiAlPoll(stato);
        return true;
    }
    return InviaStato(tipo, stato, LunghezzaReport(tipo));
}

std::size_t TTavolettaPty::LunghezzaReport(int tipo)
{
    static const std::size_t lunghezze[] = {0, 15, 40, 40, 40, 20, 40, 40, 15};
    return tipo >= 1 && tipo <= 8 ? lunghezze[tipo] : 0;
}

void TTavolettaPty::Ascolta(TAscolto a)
{
    std::lock_guard<std::mutex> g(mutex);
    ascolto = std::move(a);
}

int TTavolettaPty::PollRicevuti() const
{
    std::lock_guard<std::mutex> g(mutex);
    return numPoll;
}

std::vector<TByteRicevuto> TTavolettaPty::Ricevuti() const
{
    std::lock_guard<std::mutex> g(mutex);
    return ricevuti;
}

std::string TTavolettaPty::ByteRicevuti() const
{
    std::lock_guard<std::mutex> g(mutex);
    std::string s;
    for (const TByteRicevuto& b : ricevuti) s += static_cast<char>(b.byte);
    return s;
}

void TTavolettaPty::Dimentica()
{
    std::lock_guard<std::mutex> g(mutex);
    ricevuti.clear();
    codaPoll.clear();
    numPoll = 0;
}

bool TTavolettaPty::AttendiByte(std::size_t quanti, std::chrono::milliseconds limite) const
{
    std::unique_lock<std::mutex> g(mutex);
    return arrivato.wait_for(g, limite, [&] { return ricevuti.size() >= quanti; });
}

bool TTavolettaPty::AttendiQuiete(std::chrono::milliseconds quiete, std::chrono::milliseconds limite) const
{
    const auto fine_ = std::chrono::steady_clock::now() + limite;
    std::unique_lock<std::mutex> g(mutex);
    for (;;) {
        const std::size_t prima = ricevuti.size();
        if (!arrivato.wait_for(g, quiete, [&] { return ricevuti.size() != prima; })) return true;
        if (std::chrono::steady_clock::now() > fine_) return false;
    }
}

void TTavolettaPty::Pausa(int ms) const
{
    pollfd p{sveglia, POLLIN, 0};
    poll(&p, 1, ms);
}

void TTavolettaPty::Registra()
{
    std::uint8_t buf[4096];
    for (;;) {
        {
            std::lock_guard<std::mutex> g(mutex);
            if (fine) return;
        }
        pollfd p[2] = {{master, POLLIN, 0}, {sveglia, POLLIN, 0}};
        if (poll(p, 2, -1) < 0) continue;
        if (p[1].revents & POLLIN) continue;  // the end: tested above
        if (!(p[0].revents & POLLIN)) {
            Pausa(pausaHangup);  // no slave open: the master reports a hang-up
            continue;
        }
        const ssize_t n = read(master, buf, sizeof buf);
        if (n > 0)
            Riceve(buf, static_cast<std::size_t>(n));
        else if (n < 0 && errno != EAGAIN && errno != EINTR)
            Pausa(pausaHangup);  // EIO: the library closed its side
    }
}

void TTavolettaPty::Riceve(const std::uint8_t* byte, std::size_t quanti)
{
    const auto adesso = std::chrono::steady_clock::now();
    int risposte = 0;
    TStatoPuntatore stato{};
    TAscolto chi;
    {
        std::lock_guard<std::mutex> g(mutex);
        chi = ascolto;
        for (std::size_t i = 0; i < quanti; ++i) {
            ricevuti.push_back({byte[i], adesso});
            codaPoll += static_cast<char>(byte[i]);
            if (codaPoll.size() > poll4.size()) codaPoll.erase(0, codaPoll.size() - poll4.size());
            if (codaPoll == poll4) {
                ++numPoll;
                if (rispondi) ++risposte;
            }
        }
        stato = risposta;
    }
    arrivato.notify_all();
    if (chi) chi(byte, quanti);
    const std::string report = CodificaReport(4, stato.x, stato.y, stato.bottone);
    for (int i = 0; i < risposte && !report.empty(); ++i) Invia(report);
}
