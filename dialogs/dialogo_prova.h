// GDigitProvaDlg: the live test of the tablet. A frame stands for the working
// limits, lower left (xMin, yMin) on its inner lower-left pixel and upper
// right (xMax, yMax) on its inner upper-right one; the pointer shows there as
// a cross drawn in XOR, so that drawing it again wipes it. Beside the frame
// stand the raw counts and the button. Tablet buttons do nothing to the
// dialog: only "&Fine" or the platform's close ends it.
//
// Choices:
// - Limits with no width or no height map that axis with a scale of 0: the
//   cross stays on the frame's left or bottom line, and no division by zero
//   reaches the drawing. The differences are taken in 64 bits, so that
//   limits far apart cannot overflow.
// - A position beyond the frame is drawn beyond it (cut by the canvas), as
//   far as 1e9 pixels either way; farther positions are held there, so that
//   neither the truncation nor the arms of the cross can overflow.
//
// Threads. The notifications run on the reader thread and draw on the
// frame's device context from there; the host's thread touches the context
// and the pen only in setupWindow, before the dialog becomes the target, and
// in the destructor, after StopCommNotification has waited out a
// notification under way.
#ifndef VELMARIN_DIALOGO_PROVA_H
#define VELMARIN_DIALOGO_PROVA_H

#include <cstdint>

#include "digit.h"
#include "platform/disegno.h"
#include "platform/toldeko/toldeko.h"

constexpr unsigned modelloProva = 10046;

class GDigitProvaDlg : public GDlg, public CDigitNtfy {
public:
    GDigitProvaDlg(GWnd* parent, CDigit* digit, GModule* module = nullptr, GThread* thread = nullptr);
    ~GDigitProvaDlg() override;

    void setupWindow() override;
    void OnCancel() override;
    void NotifyMove(std::int32_t x, std::int32_t y) override;
    void NotifyButton(std::int32_t button, std::int32_t x, std::int32_t y) override;

    std::int32_t xMin;
    std::int32_t yMin;
    std::int32_t xMax;
    std::int32_t yMax;
    std::int32_t cursoreX;  // where the cross stands in the frame; -1000 before the first
    std::int32_t cursoreY;
    double offX = 0;
    double offY = 0;
    double scalaX = 0;
    double scalaY = 0;
    CDigit* digit;
    GStatic* cornice;
    HDC dc = nullptr;
    HPEN penna = nullptr;

private:
    void Croce(std::int32_t cx, std::int32_t cy);
};

#endif
