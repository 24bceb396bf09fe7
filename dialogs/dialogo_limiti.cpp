#include "dialogo_limiti.h"

namespace {

constexpr int idRichiesta = 2240;
constexpr unsigned idsInferioreSinistra = 10050;
constexpr unsigned idsSuperioreDestra = 10051;
constexpr std::uint32_t attesaDopoPrimo = 500;  // ms

}  // namespace

GDigitMinMaxDlg::GDigitMinMaxDlg(GWnd* parent, CDigit* tavoletta, GModule* module, GThread* thread)
    : GDlg(parent, modelloLimiti, module, thread), digit(tavoletta)
{
}

GDigitMinMaxDlg::~GDigitMinMaxDlg()
{
    if (digit) digit->StopCommNotification();
}

void GDigitMinMaxDlg::setupWindow()
{
    GDlg::setupWindow();
    setDlgItemText(idRichiesta, module()->loadString(idsInferioreSinistra).c_str());
    {
        std::lock_guard<std::mutex> g(mutexAngoli);
        angolo = 0;
        completo = false;
    }
    if (digit) digit->SetCommNotificationTo(static_cast<CDigitNtfy*>(this));
}

void GDigitMinMaxDlg::NotifyMove(std::int32_t, std::int32_t) {}

void GDigitMinMaxDlg::NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y)
{
    const int funzione = digit ? digit->GetFunzButt(button) : funzNessuna;
    bool primoPreso = false, finito = false;
    {
        std::lock_guard<std::mutex> g(mutexAngoli);
        if (chiuso) return;
        if (angolo == 0) {
            xMin = x;
            yMin = y;
            primoPreso = funzione == funzConferma;
            if (primoPreso) ++angolo;
        } else {
            xMax = x;
            yMax = y;
            finito = funzione == funzConferma;
            if (finito) completo = true;
        }
        chiuso = finito || funzione == funzAnnulla;
    }
    if (primoPreso) {
        setDlgItemText(idRichiesta, module()->loadString(idsSuperioreDestra).c_str());
        Sleep(attesaDopoPrimo);
    } else if (finito) {
        EndDialog(IDOK);
    } else if (funzione == funzAnnulla) {
        EndDialog(IDCANCEL);
    }
}

bool GDigitMinMaxDlg::LimitiConfermati(std::int32_t& x1, std::int32_t& y1, std::int32_t& x2, std::int32_t& y2)
{
    std::lock_guard<std::mutex> g(mutexAngoli);
    chiuso = true;
    if (!completo) return false;
    x1 = xMin;
    y1 = yMin;
    x2 = xMax;
    y2 = yMax;
    return true;
}
