// A port that misreports as Wine has been seen to: ClearCommError says its
// queue is empty and WaitCommEvent gives a blank mask, whatever waits.
// Windows only (coda_muta_win32.cpp).
#ifndef VELMARIN_CODA_MUTA_H
#define VELMARIN_CODA_MUTA_H

// Puts the misreporting calls in the reader's place of the system's own,
// before a port opens; they still do the system's work.
void RendiCodaMuta();

#endif
