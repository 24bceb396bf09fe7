#include "gstatic.h"

#include "platform/toldeko/testo_reale.h"

GStatic::GStatic(GWnd* parent, int id, int, int)
    : GControl(parent, id, {TTipoElemento::statico, TTipoElemento::cornice}, "GStatic")
{
}

void GStatic::setValue(double value) { setWindowText(TestoReale(value).c_str()); }
