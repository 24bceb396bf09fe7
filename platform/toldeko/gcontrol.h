// GControl: a control of a dialog, bound by id to an item of the dialog's
// template. Binding to an id that the template lacks, or to an item of
// another kind, is an error of the program and throws std::logic_error
// naming the template and the id: it shows when the dialog is built, not
// later. The dialog owns and deletes its controls.
#ifndef TOLDEKO_GCONTROL_H
#define TOLDEKO_GCONTROL_H

#include <initializer_list>
#include <string>

#include "platform/toldeko/gdlg.h"

class GControl : public GWnd {
public:
    int id() const { return idControllo; }
    GDlg* parentDlg() const { return dialogo; }
    // Text typed by the user; an edit filters it through its validator.
    virtual void InputTesto(const std::string& testo);

protected:
    GControl(GWnd* parent, int id, std::initializer_list<TTipoElemento> tipi, const char* classe);

private:
    GDlg* dialogo;
    int idControllo;
};

#endif
