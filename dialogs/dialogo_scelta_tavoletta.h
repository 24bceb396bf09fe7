// GChooseDigitDlg: the choice of the tablet. It edits a working copy of the
// host's record: the model from the catalogue, the port, the line settings,
// the reset, the resolution and the button count, and from it the user
// reaches the button functions, the limits and the live test. "&Limiti" and
// "&Prova" set up the CDigit with the working copy and drive the real
// tablet; nothing undoes that when the dialog is cancelled.
//
// Only the model list and the port radios reach the working copy at once;
// the other radios are read when one of the three buttons is pressed, and
// "&OK" stores the copy as it stands without reading them.
//
// Choices:
// - A model number outside the catalogue in the host's record is shown as
//   no tablet (blank labels, every option off, the list without a
//   selection, the three buttons only beep), and kept as it is until the
//   user picks a model: the catalogue is never read beyond its rows.
// - The model list closed with nothing selected changes nothing.
// - A result of 1 from the limits dialog without a confirmed second corner
//   (Enter raises id 1 although that dialog has no OK button) is taken as a
//   give-up: the working copy keeps its limits.
#ifndef VELMARIN_DIALOGO_SCELTA_TAVOLETTA_H
#define VELMARIN_DIALOGO_SCELTA_TAVOLETTA_H

#include "digit.h"
#include "platform/toldeko/toldeko.h"
#include "tablet/catalogo.h"

constexpr unsigned modelloSceltaTavoletta = 10043;
constexpr int numOpzioni = 21;

class GChooseDigitDlg : public GDlg {
public:
    GChooseDigitDlg(GWnd* parent, GModule* module = nullptr, GThread* thread = nullptr);
    ~GChooseDigitDlg() override;

    const GFC_MSGMAP* GetMessageMap() const override;
    static const GFC_MSGMAP messageMap;
    void setupWindow() override;

    void SelezionaTipo();
    void MostraDati();
    void AbilitaOpzioni(bool flag);
    void OnTipo();
    void OnPorta();
    void LeggiOpzioni();
    void ConfrontaDati();
    void ApplicaDati();
    void OnBottoni();
    void OnLimiti();
    void OnProva();

    TDataDigit dati{};         // the working copy
    TDataDigit datiSalvati{};  // what the tablet was last initialised with here
    CDigit* digit = nullptr;
    bool inizializzata = false;
    GCheckButton* opzioni[numOpzioni];  // the radios, in id order
    GComboBox* comboTipo;

private:
    GCheckButton* Opzione(int id) const;
    bool Checked(int id) const;
    // The catalogue row of the working model; row 0 for a number outside it.
    const TTipoDigit& Riga() const;
    bool NessunaTavoletta() const;
    // The start shared by the three buttons: false (with the beep) when
    // there is no tablet to act on.
    bool Prepara();
};

#endif
