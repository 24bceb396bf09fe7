// GDigitFunzBottDlg: the function of each cursor button, chosen from a list
// per button and written into funzBott of the caller's working record on OK.
// Lists beyond the record's button count are greyed and never read.
//
// Choices:
// - A list left without a selection at OK (its stored code was none the
//   list offers, 3 or 7 say, and the user chose nothing) keeps that
//   button's code as it was.
// - A button count outside 0 to 16 in the record is held to that range, so
//   that no list beyond the sixteen is reached.
#ifndef VELMARIN_DIALOGO_FUNZIONI_BOTTONI_H
#define VELMARIN_DIALOGO_FUNZIONI_BOTTONI_H

#include "digit.h"
#include "platform/toldeko/toldeko.h"

constexpr unsigned modelloFunzioniBottoni = 10044;
constexpr int maxBottoni = 16;

// The string table entry of the label of function `codice`, as the lists
// show it; 0 for a code that names no function.
unsigned IdsEtichettaFunzione(int codice);

class GDigitFunzBottDlg : public GDlg {
public:
    GDigitFunzBottDlg(GWnd* parent, TDataDigit* dati, GModule* module = nullptr, GThread* thread = nullptr);
    ~GDigitFunzBottDlg() override;

    void setupWindow() override;
    void OnOK() override;

    TDataDigit* dati;
    GComboBox* combo[maxBottoni] = {};  // entry i serves button i + 1; the first numBottoni only

private:
    int NumBottoni() const;
};

#endif
