// The record's line settings on a POSIX port, through termios. Only the POSIX
// side of the link sees this header: the record itself stays free of termios.
#ifndef VELMARIN_LINEA_POSIX_H
#define VELMARIN_LINEA_POSIX_H

#include <termios.h>

#include "link/iodev_info.h"

// The record's settings on a termios as read from the port: binary transfer
// with no processing of any kind, the record's rate, size, parity and stop
// bits, and flow control by its flags; what is not named stays as the port
// had it. False for a data size that no port takes: the port refuses the
// settings as a whole.
bool TermiosDelRecord(const TIODevInfo& d, termios& t);
// Sets a termios on the port; false when the port refuses it.
bool ImpostaLinea(int fd, const termios& t);

#endif
