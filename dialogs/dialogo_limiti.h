// GDigitMinMaxDlg: the tablet's working limits, taken from two digitized
// corners, lower left first. While it is open it is the tablet's
// notification target. Each press stores its counts as the corner awaited;
// a press of a button with the function funzConferma takes that corner (the
// first moves the prompt on, the second ends the dialog with 1), one with
// funzAnnulla ends it with 2 at either step, any other press only replaces
// the stored corner. The corners are taken as they come, in any order.
//
// Threads. NotifyButton runs on the reader thread: it sets the prompt, waits
// 500 ms after the first corner (holding up the reading of the port, not the
// dialog) and ends the dialog from there. The corners are kept under the
// dialog's own lock. Once a press has ended the dialog (the second confirm,
// or a cancel), or the owner has taken them (LimitiConfermati), later
// presses change nothing. The destructor calls StopCommNotification,
// which waits for a notification under way when called on the host's
// thread, where the dialog is always torn down; so the dialog outlives every
// notification that reached it.
#ifndef VELMARIN_DIALOGO_LIMITI_H
#define VELMARIN_DIALOGO_LIMITI_H

#include <cstdint>
#include <mutex>

#include "digit.h"
#include "platform/toldeko/toldeko.h"

constexpr unsigned modelloLimiti = 10045;

class GDigitMinMaxDlg : public GDlg, public CDigitNtfy {
public:
    GDigitMinMaxDlg(GWnd* parent, CDigit* digit, GModule* module = nullptr, GThread* thread = nullptr);
    ~GDigitMinMaxDlg() override;

    void setupWindow() override;
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;

    // For the owner after doModal: closes the dialog to further presses and
    // gives the two corners when the second was confirmed. False otherwise,
    // also after a result of 1 that came from Enter (the template has no OK
    // button, but the platform raises id 1 all the same): then no corner is
    // handed out and the arguments are left alone.
    bool LimitiConfermati(std::int32_t& x1, std::int32_t& y1, std::int32_t& x2, std::int32_t& y2);

    // Under `mutexAngoli` once the dialog is open.
    std::int32_t xMin = 0;
    std::int32_t yMin = 0;
    std::int32_t xMax = 0;
    std::int32_t yMax = 0;
    bool completo = false;
    std::int32_t angolo = 0;  // 0: first corner awaited, 1: the second
    CDigit* digit;

private:
    std::mutex mutexAngoli;
    bool chiuso = false;  // a press ended the dialog, or the owner took the corners
};

#endif
