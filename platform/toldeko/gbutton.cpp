#include "gbutton.h"

GButton::GButton(GWnd* parent, int id, int, int, int)
    : GButton(parent, id, {TTipoElemento::pulsante, TTipoElemento::predefinito}, "GButton")
{
}

GButton::GButton(GWnd* parent, int id, std::initializer_list<TTipoElemento> tipi, const char* classe)
    : GControl(parent, id, tipi, classe)
{
}

GCheckButton::GCheckButton(GWnd* parent, int id, int, int, int)
    : GButton(parent, id, {TTipoElemento::radio}, "GCheckButton")
{
}

int GCheckButton::getCheck() const { return finestra->Check(indice); }

void GCheckButton::setCheck(int value) { finestra->ImpostaCheck(indice, value); }
