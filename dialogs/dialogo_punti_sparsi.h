// CSelectPntSparsiDialog: the ground coordinates of one point of the
// sparse-point calibration, East and North, typed by the user.
#ifndef VELMARIN_DIALOGO_PUNTI_SPARSI_H
#define VELMARIN_DIALOGO_PUNTI_SPARSI_H

#include "platform/toldeko/toldeko.h"

constexpr unsigned modelloPuntiSparsi = 10040;

class CSelectPntSparsiDialog : public GDlg {
public:
    explicit CSelectPntSparsiDialog(GWnd* parent, GModule* module = nullptr, GThread* thread = nullptr);
    ~CSelectPntSparsiDialog() override;

    void setupWindow() override;
    // Accepts when both fields hold a real below 1.7e200; else beeps and
    // stays open with the texts as typed.
    void OnOK() override;

    GEdit* editEst;
    GEdit* editNord;
    double est = 0;   // read on OK
    double nord = 0;
};

#endif
