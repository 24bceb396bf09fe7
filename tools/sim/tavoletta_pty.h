// A simulated tablet on a pseudo-terminal. It opens a pty pair, maps a COM
// port number to the slave side (the library opens that), and plays a model
// on the master side: it sends that model's reports for given pointer states,
// answers the poll of the polled model when it has something to answer with,
// and records every byte the library sends, with its arrival time.
//
// With port 0 nothing is mapped: a standalone tool hands the slave's path to
// whoever opens it.
//
// The simulator never opens the slave itself, so the library's exclusive open
// succeeds. When the library closes its side the master reports a hang-up;
// the recorder then pauses and goes on, and a later open finds it ready.
#ifndef VELMARIN_TAVOLETTA_PTY_H
#define VELMARIN_TAVOLETTA_PTY_H

#include <termios.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "sim/stato_puntatore.h"

struct TByteRicevuto {
    std::uint8_t byte;
    std::chrono::steady_clock::time_point arrivo;
};

class TTavolettaPty {
public:
    // Opens the pair and maps COM<porta> to its slave (none for 0). Valida()
    // says whether that worked.
    explicit TTavolettaPty(int porta);
    // Stops the recorder, closes the master and restores the port's default.
    ~TTavolettaPty();
    TTavolettaPty(const TTavolettaPty&) = delete;
    TTavolettaPty& operator=(const TTavolettaPty&) = delete;

    bool Valida() const { return master >= 0; }
    int Porta() const { return porta; }
    const std::string& PercorsoSlave() const { return slave; }

    // The slave's line settings as the library left them (on Linux the
    // master answers with its slave's settings).
    bool LeggiImpostazioni(termios& t) const;
    // Puts the slave's line settings back to the raw ones it was made with.
    bool RipristinaImpostazioni();

    // Sends bytes as the tablet; false if they could not all go within 2 s.
    bool Invia(const std::string& byte);
    // The reports of model `tipo` for one pointer state, repeated and cut to
    // exactly `lunghezza` bytes: one gather's worth when that is the model's
    // report length.
    static std::string Raffica(int tipo, const TStatoPuntatore& stato, std::size_t lunghezza);
    bool InviaStato(int tipo, const TStatoPuntatore& stato, std::size_t lunghezza)
    {
        return Invia(Raffica(tipo, stato, lunghezza));
    }

    // From now on each poll "?\r\n" is answered with the report of model 4
    // for this state, as long as there is an encoding for it.
    void RispondiAlPoll(const TStatoPuntatore& stato);
    // Shows the pointer state as a tablet of model `tipo` does: a streaming
    // model sends one gather's worth of reports at once, the polled model
    // answers the next polls with it.
    bool Gioca(int tipo, const TStatoPuntatore& stato);
    // The number of bytes the library gathers for one report of model
    // `tipo` once it is programmed; 0 for no model.
    static std::size_t LunghezzaReport(int tipo);

    // Called on the recorder's thread with every chunk the library sends, as
    // it arrives; null stops it. Set it before the library starts to write.
    using TAscolto = std::function<void(const std::uint8_t* byte, std::size_t quanti)>;
    void Ascolta(TAscolto ascolto);
    int PollRicevuti() const;

    // What the library has sent so far.
    std::vector<TByteRicevuto> Ricevuti() const;
    std::string ByteRicevuti() const;
    void Dimentica();
    // Waits until at least `quanti` bytes have arrived, at most `limite`.
    bool AttendiByte(std::size_t quanti, std::chrono::milliseconds limite) const;
    // Waits until nothing has arrived for `quiete`, at most `limite`.
    bool AttendiQuiete(std::chrono::milliseconds quiete, std::chrono::milliseconds limite) const;

private:
    void Registra();
    void Riceve(const std::uint8_t* byte, std::size_t quanti);
    void Pausa(int ms) const;

    int porta;
    int master = -1;
    int sveglia = -1;
    std::string slave;
    std::thread registratore;

    mutable std::mutex mutex;
    mutable std::condition_variable arrivato;
    std::vector<TByteRicevuto> ricevuti;
    std::string codaPoll;  // the last bytes, to find a poll across two reads
    bool rispondi = false;
    TStatoPuntatore risposta{};
    int numPoll = 0;
    bool fine = false;
    TAscolto ascolto;

    std::mutex mutexScrittura;
};

#endif
