// The line settings of the record on a termios, and setting them on a port.
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <cerrno>

#include "link/linea_posix.h"

namespace {

constexpr unsigned char carXon = 0x11;
constexpr unsigned char carXoff = 0x13;

speed_t Velocita(std::int32_t velocita)
{
    switch (velocita) {
    case 4800: return B4800;
    case 19200: return B19200;
    default: return B9600;
    }
}

// The character size of termios for a count of data bits; false for a count
// that no port takes, which the port refuses as a whole.
bool Dimensione(int bitDati, tcflag_t& cs)
{
    switch (bitDati) {
    case 5: cs = CS5; return true;
    case 6: cs = CS6; return true;
    case 7: cs = CS7; return true;
    case 8: cs = CS8; return true;
    default: return false;
    }
}

// A pseudo-terminal slave (the Unix 98 majors 136 to 143).
bool PseudoTerminale(int fd)
{
    struct stat st{};
    if (fstat(fd, &st) != 0 || !S_ISCHR(st.st_mode)) return false;
    const unsigned maggiore = major(st.st_rdev);
    return maggiore >= 136 && maggiore <= 143;
}

}  // namespace

bool TermiosDelRecord(const TIODevInfo& d, termios& t)
{
    tcflag_t cs;
    if (!Dimensione(d.bitDati, cs)) return false;
    t.c_iflag &= ~(IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL | IXANY | IXON | IXOFF);
    t.c_oflag &= ~OPOST;
    t.c_lflag &= ~(ECHO | ECHONL | ICANON | ISIG | IEXTEN);
    t.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS);
    t.c_cflag |= cs | CREAD | CLOCAL;
    if (d.codiceParita != 0) {
        t.c_cflag |= PARENB | (d.codiceParita == 1 ? PARODD : 0);
        t.c_iflag |= INPCK;
    } else {
        t.c_iflag &= ~INPCK;
    }
    if (d.codiceStop == 2) t.c_cflag |= CSTOPB;
    if (d.controlloFlusso & 0x02) t.c_cflag |= CRTSCTS;
    if (d.controlloFlusso & 0x04) t.c_iflag |= IXON | IXOFF;
    t.c_cc[VSTART] = carXon;
    t.c_cc[VSTOP] = carXoff;
    t.c_cc[VMIN] = 1;
    t.c_cc[VTIME] = 0;
    return cfsetispeed(&t, Velocita(d.velocita)) == 0 && cfsetospeed(&t, Velocita(d.velocita)) == 0;
}


// A pseudo-terminal keeps no parity and no character size but 8 bits: the
// kernel drops them without a word, and the C library, which reads the
// settings back, then calls the whole change refused. On such a line the settings count as made when all the rest of
// them took, so that a simulated tablet serves every model, again and again.
bool ImpostaLinea(int fd, const termios& t)
{
    if (tcsetattr(fd, TCSANOW, &t) == 0) return true;
    if (errno != EINVAL || !PseudoTerminale(fd)) return false;
    termios letto{};
    if (tcgetattr(fd, &letto) != 0) return false;
    constexpr tcflag_t tolti = PARENB | CSIZE;
    return (letto.c_cflag & ~tolti) == (t.c_cflag & ~tolti) && letto.c_iflag == t.c_iflag &&
           letto.c_lflag == t.c_lflag && cfgetospeed(&letto) == cfgetospeed(&t);
}
