#include "dialogo_griglia.h"

#include <string>

#include "digit.h"
#include "dialogs/lettura_numeri.h"
#include "tablet/modulo.h"

namespace {

constexpr int primoId = 2040;
constexpr int numEdit = 6;
constexpr int numConteggi = 2;  // 2040, 2041 count squares; the rest are reals
constexpr int lunghezzaCampo = 50;

}  // namespace

CCalibraGrigliaDialog::CCalibraGrigliaDialog(GWnd* parent, GModule* module, GThread* thread)
    : GDlg(parent, modelloGriglia, module, thread)
{
    for (int i = 0; i < numEdit; ++i) {
        GValidator* v = i < numConteggi ? static_cast<GValidator*>(new GFilterValidator(GCharSet("0-9")))
                                        : new GDoubleValidator();
        edit[i] = new GEdit(this, primoId + i, v, 0, 0, 0);
    }
}

CCalibraGrigliaDialog::~CCalibraGrigliaDialog() = default;

void CCalibraGrigliaDialog::setupWindow()
{
    GDlg::setupWindow();
    for (GEdit* e : edit) e->clear();
}

void CCalibraGrigliaDialog::OnOK()
{
    // All six are read before any test.
    char testi[numEdit][lunghezzaCampo + 1];
    for (int i = 0; i < numEdit; ++i) edit[i]->getText(testi[i], lunghezzaCampo + 1);
    numQuadEst = LeggiIntero(testi[0]);
    numQuadNord = LeggiIntero(testi[1]);
    iniEst = LeggiReale(testi[2]);
    iniNord = LeggiReale(testi[3]);
    passoEst = LeggiReale(testi[4]);
    passoNord = LeggiReale(testi[5]);
    const bool accettato = numQuadEst > 0 && numQuadNord > 0 && IsRealeAccettabile(iniEst) &&
                           IsRealeAccettabile(iniNord) && IsRealeAccettabile(passoEst) &&
                           IsRealeAccettabile(passoNord);
    if (accettato)
        GDlg::OnOK();
    else
        MessageBeep(MB_ICONEXCLAMATION);
}

int dialogCalibraGriglia(GWnd* parent, int& numQuadEst, int& numQuadNord, double& iniEst, double& iniNord,
                         double& passoEst, double& passoNord)
{
    CCalibraGrigliaDialog dialogo(parent, &ModuloLibreria(), nullptr);
    const int risultato = dialogo.doModal();
    if (risultato == IDOK) {
        numQuadEst = dialogo.numQuadEst;
        numQuadNord = dialogo.numQuadNord;
        iniEst = dialogo.iniEst;
        iniNord = dialogo.iniNord;
        passoEst = dialogo.passoEst;
        passoNord = dialogo.passoNord;
    }
    return risultato;
}
