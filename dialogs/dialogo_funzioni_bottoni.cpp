#include "dialogo_funzioni_bottoni.h"

#include <algorithm>
#include <string>

namespace {

constexpr int primoNumero = 2180;
constexpr int primaLista = 2196;

// The entries of each list, in the order shown: labels of the string table
// and the codes they stand for.
struct TVoceFunzione {
    unsigned ids;
    int codice;
};

constexpr TVoceFunzione voci[] = {
    {10062, funzNessuna},        {10063, funzConferma},        {10064, funzAnnulla},
    {10065, funzLineaDisLib},    {10066, funzLineaFineEnt},    {10067, funzPolilineaDisLib},
    {10068, funzPolilineaFineEnt},
};
constexpr int numVoci = static_cast<int>(sizeof voci / sizeof voci[0]);

}  // namespace

unsigned IdsEtichettaFunzione(int codice)
{
    for (const TVoceFunzione& v : voci)
        if (v.codice == codice) return v.ids;
    return 0;
}

GDigitFunzBottDlg::GDigitFunzBottDlg(GWnd* parent, TDataDigit* record, GModule* module, GThread* thread)
    : GDlg(parent, modelloFunzioniBottoni, module, thread), dati(record)
{
    for (int i = 0; i < NumBottoni(); ++i) combo[i] = new GComboBox(this, primaLista + i, 0, 0, 0);
}

GDigitFunzBottDlg::~GDigitFunzBottDlg() = default;

int GDigitFunzBottDlg::NumBottoni() const { return dati ? std::clamp<int>(dati->numBottoni, 0, maxBottoni) : 0; }

void GDigitFunzBottDlg::setupWindow()
{
    GDlg::setupWindow();
    std::string etichette[numVoci];
    for (int v = 0; v < numVoci; ++v) etichette[v] = module()->loadString(voci[v].ids);

    const int n = NumBottoni();
    for (int i = 0; i < n; ++i) {
        for (int v = 0; v < numVoci; ++v) combo[i]->setItemData(combo[i]->addString(etichette[v].c_str()), voci[v].codice);
        const int codice = dati->funzBott[i];
        for (int voce = 0; voce < combo[i]->getCount(); ++voce) {
            if (combo[i]->getItemData(voce) != codice) continue;
            combo[i]->setSelIndex(voce);
            break;
        }
    }
    // The rows beyond the count have no control object: reached by id.
    for (int i = n; i < maxBottoni; ++i) {
        EnableWindow(GetDlgItem(handle(), primoNumero + i), 0);
        EnableWindow(GetDlgItem(handle(), primaLista + i), 0);
    }
}

// The lists are read after the toolkit's OK has ended the dialog; they stay
// readable until this handler returns.
void GDigitFunzBottDlg::OnOK()
{
    GDlg::OnOK();
    for (int i = 0; i < NumBottoni(); ++i) {
        const int scelta = combo[i]->getSelIndex();
        if (scelta < 0) continue;  // no selection: the code stays
        dati->funzBott[i] = static_cast<std::uint8_t>(combo[i]->getItemData(scelta) & 0xFF);
    }
}
