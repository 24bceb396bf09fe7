#include "terminale.h"

#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

termios originale{};
termios grezzo{};
std::atomic<bool> modificato{false};
std::atomic<bool> sospeso{false};  // stopped with the terminal given back
std::atomic<bool> ridisegna{false};
const char entra[] = "\x1b[?1049h\x1b[H\x1b[2J";  // alternate screen, cleared
const char esce[] = "\x1b[0m\x1b[?25h\x1b[?1049l";  // plain text, cursor shown, main screen
const char visibile[] = "\x1b[0m\x1b[?25h";  // plain text, cursor shown
std::atomic<bool> inAlternativo{false};

// Safe in a signal handler: write(2) and tcsetattr(3) only.
void Ripristina()
{
    if (!modificato.exchange(false)) return;
    const char* testo = inAlternativo.exchange(false) ? esce : visibile;
    if (write(STDOUT_FILENO, testo, std::strlen(testo)) < 0) {
        // nothing more can be done on a terminal that went away
    }
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &originale);
}

void AllaFine(int segnale)
{
    Ripristina();
    std::signal(segnale, SIG_DFL);
    raise(segnale);
}

// Ctrl-Z: the terminal goes back to the shell as it found it, then the
// program stops with the default action, unblocked for the purpose.
void AlloStop(int)
{
    const int e = errno;
    const bool alternativo = inAlternativo.load();
    if (modificato.load()) {
        Ripristina();
        inAlternativo = alternativo;  // to enter again on continuing
        sospeso = true;
    }
    std::signal(SIGTSTP, SIG_DFL);
    sigset_t s;
    sigemptyset(&s);
    sigaddset(&s, SIGTSTP);
    sigprocmask(SIG_UNBLOCK, &s, nullptr);
    raise(SIGTSTP);
    std::signal(SIGTSTP, AlloStop);
    errno = e;
}

// Continued after a stop: raw mode and the alternate screen again.
void AlSeguito(int)
{
    const int e = errno;
    if (sospeso.exchange(false)) {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &grezzo);
        modificato = true;
        if (inAlternativo.load() && write(STDOUT_FILENO, entra, std::strlen(entra)) < 0) {
            // the redraw that follows tries again
        }
    }
    ridisegna = true;
    errno = e;
}

void AlCambioDimensione(int) { ridisegna = true; }

}  // namespace

TTerminale::TTerminale()
{
    if (!isatty(STDIN_FILENO) || !isatty(STDOUT_FILENO) || tcgetattr(STDIN_FILENO, &originale) != 0) return;
    grezzo = originale;
    cfmakeraw(&grezzo);
    grezzo.c_oflag |= OPOST | ONLCR;  // "\n" still starts a new line
    grezzo.c_lflag |= ISIG;           // Ctrl-C still interrupts
    if (tcsetattr(STDIN_FILENO, TCSAFLUSH, &grezzo) != 0) return;
    modificato = true;
    attivo = true;
    static bool registrato = false;
    if (!registrato) {
        registrato = true;
        std::atexit(Ripristina);
        for (int s : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGSEGV}) std::signal(s, AllaFine);
        std::signal(SIGTSTP, AlloStop);
        std::signal(SIGCONT, AlSeguito);
        std::signal(SIGWINCH, AlCambioDimensione);
    }
}

void TTerminale::SchermoAlternativo(bool si)
{
    std::lock_guard<std::recursive_mutex> g(schermo);
    if (!attivo || si == alternativo) return;
    alternativo = si;
    inAlternativo = si;
    Scrivi(si ? entra : esce);  // leaving shows the cursor again too
}

TTerminale::~TTerminale() { Ripristina(); }

namespace {
winsize Dimensione()
{
    winsize w{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &w) != 0 || w.ws_col == 0 || w.ws_row == 0) {
        w.ws_col = 80;
        w.ws_row = 24;
    }
    return w;
}
}  // namespace

int TTerminale::Colonne() const { return Dimensione().ws_col; }
int TTerminale::Righe() const { return Dimensione().ws_row; }
bool TTerminale::DaRidisegnare() { return ridisegna.exchange(false); }

void TTerminale::Scrivi(const std::string& testo)
{
    if (!attivo) return;
    std::lock_guard<std::recursive_mutex> g(schermo);
    std::size_t fatti = 0;
    while (fatti < testo.size()) {
        const ssize_t n = write(STDOUT_FILENO, testo.data() + fatti, testo.size() - fatti);
        if (n <= 0) return;
        fatti += static_cast<std::size_t>(n);
    }
}

TTerminale::TRicezione TTerminale::Ricevi(int ms)
{
    pollfd p{STDIN_FILENO, POLLIN, 0};
    if (poll(&p, 1, ms) <= 0) return TRicezione::niente;
    if ((p.revents & (POLLHUP | POLLERR)) && !(p.revents & POLLIN)) return TRicezione::fine;
    unsigned char byte[64];
    const ssize_t n = read(STDIN_FILENO, byte, sizeof byte);
    if (n <= 0) return TRicezione::fine;
    ricevuti.append(reinterpret_cast<const char*>(byte), static_cast<std::size_t>(n));
    return TRicezione::dati;
}

// Bytes that came together (keys typed fast, or pasted) are kept and handed
// out one key at a time. An escape sequence cut by a read is waited for
// 30 ms; an ESC with nothing after it is the Escape key.
TLettura TTerminale::LeggiTasto(int ms)
{
    if (!attivo) {
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
        return {};
    }
    std::lock_guard<std::mutex> g(tastiera);
    if (ricevuti.empty()) {
        const TRicezione r = Ricevi(ms);
        if (r != TRicezione::dati) return r == TRicezione::fine ? TLettura{TTasto::fine, 0} : TLettura{};
    }
    auto dati = [this] { return reinterpret_cast<const unsigned char*>(ricevuti.data()); };
    int n = static_cast<int>(ricevuti.size());
    while (LunghezzaTasto(dati(), n) == 0 && Ricevi(30) == TRicezione::dati) n = static_cast<int>(ricevuti.size());
    int k = LunghezzaTasto(dati(), n);
    if (k == 0) k = n;  // a sequence that never ended: dropped whole
    const TLettura t = DecodificaTasto(dati(), k);
    ricevuti.erase(0, static_cast<std::size_t>(k));
    return t;
}

int LunghezzaTasto(const unsigned char* b, int n)
{
    if (n <= 0) return 0;
    if (b[0] != 0x1b) return 1;
    if (n == 1) return 0;  // Escape, or the start of a sequence
    if (b[1] == 'O') return n >= 3 ? 3 : 0;
    if (b[1] != '[') return 2;  // Alt with a key: not one of ours
    // Parameters and intermediates up to the final byte, '@' to '~'.
    for (int i = 2; i < n; ++i)
        if (b[i] >= 0x40 && b[i] <= 0x7e) return i + 1;
    return 0;
}

TLettura DecodificaTasto(const unsigned char* b, int n)
{
    if (n <= 0) return {};
    if (b[0] == 0x1b) {
        if (n == 1) return {TTasto::esc, 0};
        if (n != LunghezzaTasto(b, n)) return {};  // more, or less, than one sequence
        if (n >= 3 && (b[1] == '[' || b[1] == 'O')) {
            switch (b[2]) {
            case 'A': return {TTasto::su, 0};
            case 'B': return {TTasto::giu, 0};
            case 'C': return {TTasto::destra, 0};
            case 'D': return {TTasto::sinistra, 0};
            case 'Z': return {TTasto::tabIndietro, 0};
            default: break;
            }
        }
        return {};  // a sequence we do not use
    }
    switch (b[0]) {
    case '\t': return {TTasto::tab, 0};
    case '\r':
    case '\n': return {TTasto::invio, 0};
    case 0x7f:
    case 0x08: return {TTasto::cancella, 0};
    case ' ': return {TTasto::spazio, ' '};
    case 0x04: return {TTasto::fine, 0};  // Ctrl-D
    default: break;
    }
    if (b[0] >= 0x21 && b[0] < 0x7f) return {TTasto::carattere, static_cast<char>(b[0])};
    return {};
}
