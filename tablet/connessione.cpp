// How a CDigit reaches its tablet: Init opens the one connection of the
// process, the destructor ends it, and three operations manage the one
// notification target.
//
// Choices where the design leaves room:
// - Notifications run on the reader thread. StopCommNotification holds
//   delivery and then passes the delivery gate, so that when it returns no
//   notification is running and none will start: a target may go away right
//   after it. Called from inside a notification (a target that stops) it does
//   not wait, since the notification under way is its caller.
// - Init on an object while another object's connection is open refuses:
//   it beeps, shows the open-failure box and returns false, and the running
//   connection, its target and its link record stay as they are. Such an
//   object leaves that connection alone afterwards too: its sequences send
//   nothing, and SetCommNotificationTo (which returns 0) and
//   StopCommNotification change nothing (connessione_altrui.h).
// - A port record that survives a failed open is rebuilt by the next Init, so
//   a retry takes the settings it is given, not those of the failed attempt.
// - The destructor of a connected object ends the connection (reset, close
//   with the reader joined, destroy) before it frees the tables, so no
//   notification can reach a calibration of a half-destroyed object. Run
//   from inside a notification (a target that owns its tablet and drops it
//   there) it cannot wait for the reader, its caller: it stops delivery, and
//   the reader ends and closes the port once the notification returns.
#include "digit.h"

#include "calibration/calibrazione_in_vigore.h"
#include "link/iodev.h"
#include "link/ultimo_errore.h"
#include "platform/toldeko/gwnd.h"
#include "platform/winui.h"
#include "reports/digit_link.h"
#include "resources/stringhe.h"
#include "tablet/connessione_altrui.h"
#include "tablet/modulo.h"
#include "tablet/tabelle.h"

namespace {

constexpr unsigned idsErrore = 10070;
constexpr unsigned idsPortaSeriale = 10058;
constexpr unsigned idsDisconnessione = 10069;
constexpr unsigned idsDeallocazione = 10071;
constexpr unsigned idsCreazione = 10072;

void BoxPortaNonConfigurata(GWnd* owner)
{
    MessageBeep(MB_ICONEXCLAMATION);
    const std::string titolo = ModuloLibreria().loadString(idsPortaSeriale);
    const std::string testo = ModuloLibreria().loadString(idsPortaNonConfigurata);
    MessageBoxA(HandleDi(owner), testo.c_str(), titolo.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void BoxErrore(HWND owner, unsigned idTesto)
{
    const std::string titolo = LoadResString(idsErrore);
    const std::string testo = LoadResString(idTesto);
    MessageBoxA(owner, testo.c_str(), titolo.c_str(), MB_OK);
}

// Copies the settings of the configuration into the cleared link record.
void ImpostazioniLink(const TDataDigit& dati, TDigitLink& link)
{
    link.porta = static_cast<std::uint8_t>(dati.porta & 0xFF);
    link.parita = static_cast<char>(dati.parita & 0xFF);
    link.bitDati = static_cast<std::uint8_t>(dati.bitDati & 0xFF);
    link.bitStop = static_cast<std::uint8_t>(dati.bitStop & 0xFF);
    link.velocita = dati.velocita;  // widened with its sign
    link.controlloFlusso = dati.tipo == 6 ? 4 : 0;
}

}  // namespace

CDigit::~CDigit()
{
    if (hPorta != 0 && IODevSulLettore()) {
        // From inside a notification: nothing more is delivered, the reader
        // ends when the notification returns and closes the port, and the
        // next Init frees the record.
        StopCommNotification();
        IODevClose();
    } else if (hPorta != 0) {
        SendResetSeScelto();
        if (IODevClose() != 1) BoxErrore(nullptr, idsDisconnessione);
        if (IODevDestroy() != 1) BoxErrore(nullptr, idsDeallocazione);
    }
    TCalibrazioneInVigore::Dimentica(*this);
    LiberaTabella(coefCelle);
    LiberaTabella(angoliX);
    LiberaTabella(angoliY);
}

bool CDigit::Init(GWnd* owner)
{
    if (ConnessioneAltrui(hPorta)) {
        RegistraErrore("the connection belongs to another tablet object, which opened it since this one did");
        BoxPortaNonConfigurata(owner);
        return false;
    }
    if (hPorta != 0) {
        const HCURSOR precedente = SetCursor(LoadCursorA(nullptr, IDC_WAIT));
        IODevClose();
        IODevDestroy();
        SetCursor(precedente);
    }
    IODevDestroy();  // a record left by a failed open keeps no stale settings

    AzzeraDigitLink(digitLink);  // no reader runs here
    ImpostazioniLink(dati, digitLink);

    if (IODevCreate(digitLink) != 1) {
        RegistraErrore("no memory for the connection's record");
        BoxErrore(HandleDi(owner), idsCreazione);
    }
    if (IODevOpen(digitLink) != 1) {
        BoxPortaNonConfigurata(owner);
        return false;
    }
    hPorta = Leggi(digitLink.hPorta);
    return true;
}

int CDigit::SetCommNotificationTo(CDigitNtfy* target)
{
    if (ConnessioneAltrui(hPorta)) return 0;  // not this object's to steer
    // Released, and acquired by the reader: a target made just before this
    // call, while delivery is on, is whole when the reader calls it.
    digitLink.ntfy.store(target, std::memory_order_release);
    // Read before delivery resumes: its first notification may drop this
    // very object.
    const bool interrogata = dati.tipo == 4;
    const int esito = IODevResume();
    if (esito != 0 && interrogata) IODevWrite("?\r\n", 3);
    return esito;
}

void CDigit::StopCommNotification()
{
    if (ConnessioneAltrui(hPorta)) return;
    IODevHold();
    { TCancelloConsegna attesa; }  // waits out a notification under way
    Scrivi(digitLink.ntfy, nullptr);
}

CDigitNtfy* CDigit::GetCommNotification() const { return Leggi(digitLink.ntfy); }
