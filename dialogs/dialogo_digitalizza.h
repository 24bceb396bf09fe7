// CDigitGetPntDialog: shows the ground coordinates of a point and waits until
// the user digitizes it on the tablet. While it is open it is the tablet's
// notification target: a press of a button with the function funzConferma
// takes the counts of the press and ends it with 1, one with funzAnnulla
// ends it with 2, any other press only replaces the stored counts.
//
// Threads. NotifyButton runs on the tablet's reader thread and ends the
// dialog from there, while the modal loop runs on the host's. The counts of
// the last press are kept under the dialog's own lock. Once a press has ended
// the dialog (confirm or cancel), or the owner has taken the counts
// (PuntoDigitalizzato), later presses are ignored: a press that arrives
// between the end and the destructor can change nothing.
// The destructor calls StopCommNotification, which waits for a notification
// already running on the reader thread before it returns (it cannot wait
// when called on the reader thread itself, but this dialog is always torn
// down on the host's thread). So the dialog outlives every notification that
// reached it.
#ifndef VELMARIN_DIALOGO_DIGITALIZZA_H
#define VELMARIN_DIALOGO_DIGITALIZZA_H

#include <cstdint>
#include <mutex>

#include "digit.h"
#include "platform/toldeko/toldeko.h"

constexpr unsigned modelloDigitalizza = 10042;

class CDigitGetPntDialog : public GDlg, public CDigitNtfy {
public:
    // `titolo` (the calling procedure's name) is shown as the caption; the
    // dialog keeps the pointer, which must outlive it.
    CDigitGetPntDialog(GWnd* parent, const char* titolo, CDigit* digit, double est, double nord,
                       GModule* module = nullptr, GThread* thread = nullptr);
    ~CDigitGetPntDialog() override;

    void setupWindow() override;
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;

    // For the owner after doModal: closes the dialog to further presses and
    // gives the counts of the last press; false when no press came (the
    // dialog was ended by Enter, say), and then x and y are left alone.
    bool PuntoDigitalizzato(std::int32_t& xPunto, std::int32_t& yPunto);

    GStatic* valEst;
    GStatic* valNord;
    double est;
    double nord;
    std::int32_t x = 0;  // counts of the last press, under `mutexPunto`
    std::int32_t y = 0;
    CDigit* digit;
    const char* titolo;

private:
    std::mutex mutexPunto;
    bool premuto = false;     // a press stored x and y
    bool chiuso = false;      // a press ended the dialog, or the owner took the counts
};

#endif
