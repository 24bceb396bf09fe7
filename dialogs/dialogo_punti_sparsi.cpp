#include "dialogo_punti_sparsi.h"

#include "digit.h"
#include "dialogs/lettura_numeri.h"
#include "tablet/modulo.h"

namespace {

constexpr int idEst = 2000;
constexpr int idNord = 2001;
constexpr int lunghezzaCampo = 50;

double LeggiCampo(const GEdit& edit)
{
    char buf[lunghezzaCampo + 1];
    edit.getText(buf, sizeof buf);
    return LeggiReale(buf);
}

}  // namespace

CSelectPntSparsiDialog::CSelectPntSparsiDialog(GWnd* parent, GModule* module, GThread* thread)
    : GDlg(parent, modelloPuntiSparsi, module, thread),
      editEst(new GEdit(this, idEst, new GDoubleValidator(), 0, 0, 0)),
      editNord(new GEdit(this, idNord, new GDoubleValidator(), 0, 0, 0))
{
}

CSelectPntSparsiDialog::~CSelectPntSparsiDialog() = default;

void CSelectPntSparsiDialog::setupWindow()
{
    GDlg::setupWindow();
    editEst->clear();
    editNord->clear();
}

void CSelectPntSparsiDialog::OnOK()
{
    est = LeggiCampo(*editEst);
    nord = LeggiCampo(*editNord);
    if (IsRealeAccettabile(est) && IsRealeAccettabile(nord))
        GDlg::OnOK();
    else
        MessageBeep(MB_ICONEXCLAMATION);
}

int dialogSelectPtiSparsi(GWnd* parent, double& est, double& nord)
{
    CSelectPntSparsiDialog dialogo(parent, &ModuloLibreria(), nullptr);
    const int risultato = dialogo.doModal();
    if (risultato == IDOK) {
        est = dialogo.est;
        nord = dialogo.nord;
    }
    return risultato;
}
