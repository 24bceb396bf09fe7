// CCalibraGrigliaDialog: the parameters of a calibration grid, typed by the
// user: squares along East and North, the first node, the step.
#ifndef VELMARIN_DIALOGO_GRIGLIA_H
#define VELMARIN_DIALOGO_GRIGLIA_H

#include <cstdint>

#include "platform/toldeko/toldeko.h"

constexpr unsigned modelloGriglia = 10041;

class CCalibraGrigliaDialog : public GDlg {
public:
    explicit CCalibraGrigliaDialog(GWnd* parent, GModule* module = nullptr, GThread* thread = nullptr);
    ~CCalibraGrigliaDialog() override;

    void setupWindow() override;
    // Accepts when both counts are above 0 and the four reals lie below
    // 1.7e200; else beeps and stays open. No upper limit on the counts here:
    // the calibration enforces its own.
    void OnOK() override;

    GEdit* edit[6];  // 2040 to 2045
    double iniEst = 0;
    double iniNord = 0;
    double passoEst = 0;
    double passoNord = 0;
    std::int32_t numQuadEst = 0;
    std::int32_t numQuadNord = 0;
};

#endif
