// GStatic: a text or a frame of a dialog.
#ifndef TOLDEKO_GSTATIC_H
#define TOLDEKO_GSTATIC_H

#include "platform/toldeko/gcontrol.h"

class GStatic : public GControl {
public:
    // The last two arguments keep the toolkit's call shape and are not used.
    GStatic(GWnd* parent, int id, int = 0, int = 0);
    // Shows the number with three decimals, "%.3f": ground coordinates to
    // the millimetre.
    void setValue(double value);
};

#endif
