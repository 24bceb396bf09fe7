// The terminal as the host's front end uses it: raw mode for single keys,
// the alternate screen while dialogs are shown (so that what the program
// printed before and after stays on the main screen), and the keys read back
// as named keys. The terminal is
// restored on every way out: the destructor, exit(), and the signals that
// end a program (which are then raised again with their default action).
// Ctrl-Z gives the terminal back as it was before the program stops; on
// continuing the program takes it again and asks for a redraw, as it does
// when the window changes size.
#ifndef VELMARIN_HOST_TERMINALE_H
#define VELMARIN_HOST_TERMINALE_H

#include <mutex>
#include <string>

enum class TTasto {
    nessuno,   // nothing within the wait
    carattere, // a printable character, in TLettura::carattere
    tab,
    tabIndietro,
    su,
    giu,
    sinistra,
    destra,
    invio,
    esc,
    cancella,  // backspace
    spazio,
    fine,      // end of input: the terminal went away
};

struct TLettura {
    TTasto tasto = TTasto::nessuno;
    char carattere = 0;
};

class TTerminale {
public:
    // Takes standard input and output; Attivo() is false when they are not
    // both a terminal, and then nothing is changed: nothing is written, and
    // no key comes.
    TTerminale();
    ~TTerminale();
    TTerminale(const TTerminale&) = delete;
    TTerminale& operator=(const TTerminale&) = delete;

    bool Attivo() const { return attivo; }
    // Waits at most `ms` for a key. One thread reads at a time.
    TLettura LeggiTasto(int ms);
    // Writes the text at once, whole, under the screen's lock.
    void Scrivi(const std::string& testo);
    // The lock to hold while drawing a whole screen from several calls.
    std::recursive_mutex& Schermo() { return schermo; }
    // Enters the alternate screen, cleared, or goes back to the main one.
    void SchermoAlternativo(bool si);
    // The size in cells; 80 by 24 when the terminal does not say.
    int Colonne() const;
    int Righe() const;
    // True once after the window changed size or the program continued
    // after a stop: what was drawn must be drawn again.
    static bool DaRidisegnare();

private:
    // Waits at most `ms` and appends what came to `ricevuti`.
    enum class TRicezione { dati, niente, fine };
    TRicezione Ricevi(int ms);

    bool attivo = false;
    bool alternativo = false;
    std::recursive_mutex schermo;
    std::mutex tastiera;
    std::string ricevuti;  // read but not yet handed out, under `tastiera`
};

// How many of the `n` bytes the first key takes: one, or a whole escape
// sequence; 0 while they are an escape sequence not yet complete (a lone
// ESC among them: it stands for Escape only when nothing follows it).
int LunghezzaTasto(const unsigned char* byte, int n);

// Translates the bytes of one key as a terminal sends them; `n` is their
// count. Exposed for the tests.
TLettura DecodificaTasto(const unsigned char* byte, int n);

#endif
