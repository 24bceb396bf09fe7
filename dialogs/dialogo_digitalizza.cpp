#include "dialogo_digitalizza.h"

#include "tablet/modulo.h"

namespace {

constexpr int idEst = 2080;
constexpr int idNord = 2081;

}  // namespace

CDigitGetPntDialog::CDigitGetPntDialog(GWnd* parent, const char* titoloDialogo, CDigit* tavoletta, double e,
                                       double n, GModule* module, GThread* thread)
    : GDlg(parent, modelloDigitalizza, module, thread),
      valEst(new GStatic(this, idEst, 0, 0)),
      valNord(new GStatic(this, idNord, 0, 0)),
      est(e),
      nord(n),
      digit(tavoletta),
      titolo(titoloDialogo)
{
}

// On every way out; see the header for why the dialog outlives a running
// notification.
CDigitGetPntDialog::~CDigitGetPntDialog()
{
    if (digit) digit->StopCommNotification();
}

void CDigitGetPntDialog::setupWindow()
{
    GDlg::setupWindow();
    if (titolo) setWindowText(titolo);
    valEst->setValue(est);
    valNord->setValue(nord);
    if (digit) digit->SetCommNotificationTo(static_cast<CDigitNtfy*>(this));
}

void CDigitGetPntDialog::NotifyMove(std::int32_t, std::int32_t) {}

void CDigitGetPntDialog::NotifyButton(std::int32_t button, std::int32_t xPress, std::int32_t yPress)
{
    const int funzione = digit ? digit->GetFunzButt(button) : funzNessuna;
    {
        std::lock_guard<std::mutex> g(mutexPunto);
        if (chiuso) return;
        x = xPress;
        y = yPress;
        premuto = true;
        chiuso = funzione == funzConferma || funzione == funzAnnulla;
    }
    switch (funzione) {
    case funzConferma:
        OnOK();
        break;
    case funzAnnulla:
        OnCancel();
        break;
    default:
        break;  // waits for the next press
    }
}

bool CDigitGetPntDialog::PuntoDigitalizzato(std::int32_t& xPunto, std::int32_t& yPunto)
{
    std::lock_guard<std::mutex> g(mutexPunto);
    chiuso = true;
    if (!premuto) return false;
    xPunto = x;
    yPunto = y;
    return true;
}

// A null CDigit has no tablet to digitize with: nothing opens and the result
// is 2, as if the user gave up. A result of 1 with no press before it (Enter
// raises id 1 although the dialog has no OK button) has no counts to give and
// is reported as 2 as well, with x and y untouched.
int dialogGetPnt(GWnd* parent, const char* titolo, CDigit* digit, double est, double nord, int& x, int& y)
{
    if (!digit) return IDCANCEL;
    CDigitGetPntDialog dialogo(parent, titolo, digit, est, nord, &ModuloLibreria(), nullptr);
    int risultato = dialogo.doModal();
    std::int32_t xPunto = 0, yPunto = 0;
    const bool premuto = dialogo.PuntoDigitalizzato(xPunto, yPunto);
    if (risultato == IDOK && !premuto) risultato = IDCANCEL;
    if (risultato == IDOK) {
        x = xPunto;
        y = yPunto;
    }
    return risultato;
}
