// GButton: a push button. GCheckButton: a radio button, checked or not.
#ifndef TOLDEKO_GBUTTON_H
#define TOLDEKO_GBUTTON_H

#include "platform/toldeko/gcontrol.h"

class GButton : public GControl {
public:
    // The last three arguments keep the toolkit's call shape and are not used.
    GButton(GWnd* parent, int id, int = 0, int = 0, int = 0);

protected:
    GButton(GWnd* parent, int id, std::initializer_list<TTipoElemento> tipi, const char* classe);
};

class GCheckButton : public GButton {
public:
    GCheckButton(GWnd* parent, int id, int = 0, int = 0, int = 0);
    int getCheck() const;  // 1: checked
    void setCheck(int value);
};

#endif
