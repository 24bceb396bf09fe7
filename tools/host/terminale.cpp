#include "terminale.h"

#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace {

termios originale{};
std::atomic<bool> modificato{false};
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

}  // namespace

TTerminale::TTerminale()
{
    if (!isatty(STDIN_FILENO) || !isatty(STDOUT_FILENO) || tcgetattr(STDIN_FILENO, &originale) != 0) return;
    termios grezzo = originale;
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

void TTerminale::Scrivi(const std::string& testo)
{
    std::lock_guard<std::recursive_mutex> g(schermo);
    std::size_t fatti = 0;
    while (fatti < testo.size()) {
        const ssize_t n = write(STDOUT_FILENO, testo.data() + fatti, testo.size() - fatti);
        if (n <= 0) return;
        fatti += static_cast<std::size_t>(n);
    }
}

TLettura TTerminale::LeggiTasto(int ms)
{
    std::lock_guard<std::mutex> g(tastiera);
    pollfd p{STDIN_FILENO, POLLIN, 0};
    if (poll(&p, 1, ms) <= 0) return {};
    if (p.revents & (POLLHUP | POLLERR)) return {TTasto::fine, 0};
    unsigned char byte[8];
    ssize_t n = read(STDIN_FILENO, byte, 1);
    if (n <= 0) return {TTasto::fine, 0};
    // An escape sequence arrives at once; a lone ESC is the Escape key.
    if (byte[0] == 0x1b && poll(&p, 1, 30) > 0) {
        const ssize_t resto = read(STDIN_FILENO, byte + 1, sizeof byte - 1);
        if (resto > 0) n += resto;
    }
    return DecodificaTasto(byte, static_cast<int>(n));
}

TLettura DecodificaTasto(const unsigned char* b, int n)
{
    if (n <= 0) return {};
    if (b[0] == 0x1b) {
        if (n == 1) return {TTasto::esc, 0};
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
