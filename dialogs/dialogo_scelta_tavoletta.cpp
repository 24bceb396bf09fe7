#include "dialogo_scelta_tavoletta.h"

#include <string>

#include "dialogs/dialogo_funzioni_bottoni.h"
#include "dialogs/dialogo_limiti.h"
#include "dialogs/dialogo_prova.h"
#include "tablet/modulo.h"

namespace {

constexpr int idTipo = 2120;
constexpr int idBottoni = 2150;
constexpr int idLimiti = 2151;
constexpr int idProva = 2152;
constexpr unsigned idsTitolo = 10052;
constexpr unsigned idsPerLaProva = 10053;
constexpr unsigned idsGiaCalibrata = 10056;

constexpr int idOpzioni[numOpzioni] = {
    2122, 2123, 2124, 2125,  // porta 1..4
    2127, 2128, 2129,        // velocita
    2131, 2132, 2133,        // parita
    2135, 2136,              // bitDati
    2138, 2139,              // bitStop
    2141, 2142,              // reset
    2144, 2145, 2146,        // risoluzione
    2148, 2149,              // numBottoni
};

// A group's radios with the value each stands for.
struct TValoreRadio {
    int id;
    int valore;
};

constexpr TValoreRadio radioVelocita[] = {{2127, 4800}, {2128, 9600}, {2129, 19200}};
constexpr TValoreRadio radioParita[] = {{2131, 'N'}, {2132, 'E'}, {2133, 'O'}};
constexpr TValoreRadio radioRisoluzione[] = {{2144, 1}, {2145, 2}, {2146, 3}};
constexpr int primaPorta = 2122;
constexpr int numPorte = 4;

constexpr GFC_MSGMAP_ENTRY righe[] = {
    {WM_COMMAND, CBN_CLOSEUP, idTipo, idTipo, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnTipo)},
    {WM_COMMAND, CBN_SELCHANGE, idTipo, idTipo, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnTipo)},
    {WM_COMMAND, BN_CLICKED, idBottoni, idBottoni, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnBottoni)},
    {WM_COMMAND, BN_CLICKED, idLimiti, idLimiti, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnLimiti)},
    {WM_COMMAND, BN_CLICKED, idProva, idProva, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnProva)},
    {WM_COMMAND, BN_CLICKED, 2122, 2122, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnPorta)},
    {WM_COMMAND, BN_CLICKED, 2123, 2123, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnPorta)},
    {WM_COMMAND, BN_CLICKED, 2124, 2124, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnPorta)},
    {WM_COMMAND, BN_CLICKED, 2125, 2125, GfcSig_vv, GFC_HANDLER(&GChooseDigitDlg::OnPorta)},
    {0, 0, 0, 0, 0, nullptr},
};

const GFC_MSGMAP* MappaBase() { return &GDlg::messageMap; }

}  // namespace

const GFC_MSGMAP GChooseDigitDlg::messageMap = {&MappaBase, righe};

const GFC_MSGMAP* GChooseDigitDlg::GetMessageMap() const { return &messageMap; }

GChooseDigitDlg::GChooseDigitDlg(GWnd* parent, GModule* module, GThread* thread)
    : GDlg(parent, modelloSceltaTavoletta, module, thread)
{
    for (int i = 0; i < numOpzioni; ++i) opzioni[i] = new GCheckButton(this, idOpzioni[i], 0, 0, 0);
    comboTipo = new GComboBox(this, idTipo, 0, 0, 0);
}

GChooseDigitDlg::~GChooseDigitDlg() = default;

GCheckButton* GChooseDigitDlg::Opzione(int id) const
{
    for (int i = 0; i < numOpzioni; ++i)
        if (idOpzioni[i] == id) return opzioni[i];
    return nullptr;
}

bool GChooseDigitDlg::Checked(int id) const { return Opzione(id)->getCheck() == 1; }

bool GChooseDigitDlg::NessunaTavoletta() const { return dati.tipo == 0 || !TipoInCatalogo(dati.tipo); }

const TTipoDigit& GChooseDigitDlg::Riga() const { return catalogoDigit[TipoInCatalogo(dati.tipo) ? dati.tipo : 0]; }

void GChooseDigitDlg::setupWindow()
{
    GDlg::setupWindow();
    for (int riga = 0; riga < numTipiDigit; ++riga)
        comboTipo->setItemData(comboTipo->addString(catalogoDigit[riga].nome), riga);
    SelezionaTipo();
    if (dati.porta < 1 || dati.porta > numPorte) dati.porta = 1;
    MostraDati();
}

void GChooseDigitDlg::SelezionaTipo()
{
    comboTipo->setSelIndex(-1);
    for (int voce = 0; voce < comboTipo->getCount(); ++voce) {
        if (comboTipo->getItemData(voce) != dati.tipo) continue;
        comboTipo->setSelIndex(voce);
        return;
    }
}

namespace {

void CheckValore(GCheckButton* const* opzioni, const int* ids, const TValoreRadio* radio, std::size_t n, int valore)
{
    for (std::size_t r = 0; r < n; ++r) {
        if (radio[r].valore != valore) continue;
        for (int i = 0; i < numOpzioni; ++i)
            if (ids[i] == radio[r].id) opzioni[i]->setCheck(1);
    }
}

}  // namespace

void GChooseDigitDlg::MostraDati()
{
    const TTipoDigit& riga = Riga();
    Opzione(2144)->setWindowText(riga.etichRisoluzione[0]);
    Opzione(2145)->setWindowText(riga.numRisoluzioni == 1 ? "" : riga.etichRisoluzione[1]);
    Opzione(2146)->setWindowText(riga.numRisoluzioni < 3 ? "" : riga.etichRisoluzione[2]);
    if (NessunaTavoletta()) {
        AbilitaOpzioni(false);
        return;
    }
    AbilitaOpzioni(true);
    if (riga.numRisoluzioni == 1) Opzione(2145)->enableWindow(false);
    if (riga.numRisoluzioni < 3) Opzione(2146)->enableWindow(false);

    if (dati.porta >= 1 && dati.porta <= numPorte) Opzione(primaPorta + dati.porta - 1)->setCheck(1);
    CheckValore(opzioni, idOpzioni, radioVelocita, 3, dati.velocita);
    CheckValore(opzioni, idOpzioni, radioParita, 3, dati.parita);
    Opzione(dati.bitDati == 7 ? 2135 : 2136)->setCheck(1);
    Opzione(dati.bitStop == 1 ? 2138 : 2139)->setCheck(1);
    if (riga.numReset == 1) Opzione(2142)->enableWindow(false);
    Opzione(dati.reset == 1 ? 2141 : 2142)->setCheck(1);
    CheckValore(opzioni, idOpzioni, radioRisoluzione, 3, dati.risoluzione);
    Opzione(dati.numBottoni == 4 ? 2148 : 2149)->setCheck(1);
}

// Every radio alike, so all end up unchecked.
void GChooseDigitDlg::AbilitaOpzioni(bool flag)
{
    for (GCheckButton* o : opzioni) {
        o->setCheck(0);
        o->enableWindow(flag);
    }
}

// Runs on both the close and the change of the list, so the row's settings
// are applied again even on the same row.
void GChooseDigitDlg::OnTipo()
{
    const int voce = comboTipo->getSelIndex();
    if (voce < 0) return;
    const std::intptr_t tipo = comboTipo->getItemData(voce);
    if (!TipoInCatalogo(static_cast<int>(tipo))) return;
    ImpostaDaCatalogo(dati, static_cast<int>(tipo));
    MostraDati();
}

void GChooseDigitDlg::OnPorta()
{
    for (int p = 0; p < numPorte; ++p) {
        if (!Checked(primaPorta + p)) continue;
        dati.porta = static_cast<std::int16_t>(p + 1);
        return;
    }
}

// A group's last radio is its default.
void GChooseDigitDlg::LeggiOpzioni()
{
    dati.velocita = Checked(2127) ? 4800 : Checked(2128) ? 9600 : 19200;
    dati.parita = Checked(2131) ? 'N' : Checked(2132) ? 'E' : 'O';
    dati.bitDati = Checked(2135) ? 7 : 8;
    dati.bitStop = Checked(2138) ? 1 : 2;
    dati.reset = Checked(2141) ? 1 : 2;
    dati.risoluzione = Checked(2144) ? 1 : Checked(2145) ? 2 : 3;
    dati.numBottoni = Checked(2148) ? 4 : 16;
}

void GChooseDigitDlg::ConfrontaDati()
{
    const TDataDigit& s = datiSalvati;
    if (dati.tipo != s.tipo || dati.risoluzione != s.risoluzione) {
        dati.limitiDefiniti = false;
        inizializzata = false;
    }
    if (dati.porta != s.porta || dati.velocita != s.velocita || dati.parita != s.parita ||
        dati.bitDati != s.bitDati || dati.bitStop != s.bitStop || dati.reset != s.reset)
        inizializzata = false;
}

// A failing Init shows its own boxes; the flow goes on all the same, and the
// nested dialog then hears nothing and is left by its button.
void GChooseDigitDlg::ApplicaDati()
{
    digit->SetDataDigit(dati);
    if (inizializzata) return;
    digit->Init(this);
    digit->SendInitString();
    inizializzata = true;
    datiSalvati = dati;
}

bool GChooseDigitDlg::Prepara()
{
    if (NessunaTavoletta()) {
        MessageBeep(MB_ICONQUESTION);
        return false;
    }
    LeggiOpzioni();
    ConfrontaDati();
    return true;
}

void GChooseDigitDlg::OnBottoni()
{
    if (!Prepara()) return;
    GDigitFunzBottDlg funzioni(this, &dati);
    funzioni.doModal();
}

void GChooseDigitDlg::OnLimiti()
{
    if (!Prepara()) return;
    inizializzata = false;
    ApplicaDati();
    GDigitMinMaxDlg limiti(this, digit);
    if (limiti.doModal() != IDOK) return;
    if (limiti.LimitiConfermati(dati.xMin, dati.yMin, dati.xMax, dati.yMax)) dati.limitiDefiniti = true;
}

void GChooseDigitDlg::OnProva()
{
    if (!Prepara()) return;
    if (!dati.limitiDefiniti) {
        const std::string titolo = module()->loadString(idsTitolo);
        const std::string testo = module()->loadString(idsPerLaProva);
        MessageBeep(MB_ICONEXCLAMATION);
        messageBox(testo.c_str(), titolo.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    ApplicaDati();
    GDigitProvaDlg prova(this, digit);
    prova.doModal();
}

// With no CDigit there is no tablet to set up: nothing opens and the result
// is 2, the record untouched.
int configDigit(GWnd* parent, CDigit* digit, TDataDigit& dati)
{
    if (!digit) return IDCANCEL;
    if (digit->IsCalibrato()) {
        const std::string titolo = LoadResString(idsTitolo);
        const std::string testo = LoadResString(idsGiaCalibrata);
        MessageBeep(MB_ICONQUESTION);
        const int risposta = MessageBoxA(HandleDi(parent), testo.c_str(), titolo.c_str(), MB_YESNO | MB_ICONQUESTION);
        if (risposta == IDNO) return IDNO;
    }
    GChooseDigitDlg dialogo(parent, &ModuloLibreria(), nullptr);
    dialogo.dati = dati;
    dialogo.datiSalvati = dati;
    dialogo.digit = digit;
    const int risultato = dialogo.doModal();
    if (risultato == IDOK) dati = dialogo.dati;
    return risultato;
}
