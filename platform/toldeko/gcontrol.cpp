#include "gcontrol.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace {

GDlg* DialogoDi(GWnd* parent, int id, const char* classe)
{
    GDlg* d = dynamic_cast<GDlg*>(parent);
    if (!d)
        throw std::logic_error(std::string(classe) + " " + std::to_string(id) +
                               ": il genitore non è un dialogo");
    return d;
}

int Vincola(GDlg& d, int id, std::initializer_list<TTipoElemento> tipi, const char* classe)
{
    TFinestraDialogo& f = d.Finestra();
    const std::string dove = "dialogo " + std::to_string(f.Modello().id) + ", controllo " + std::to_string(id);
    const int i = f.Indice(id);
    if (i < 0) throw std::logic_error(dove + ": il modello non ha questo id");
    if (std::find(tipi.begin(), tipi.end(), f.Tipo(i)) == tipi.end())
        throw std::logic_error(dove + ": il modello non ha qui un controllo adatto a " + classe);
    return i;
}

}  // namespace

GControl::GControl(GWnd* parent, int id, std::initializer_list<TTipoElemento> tipi, const char* classe)
    : dialogo(DialogoDi(parent, id, classe)), idControllo(id)
{
    const int i = Vincola(*dialogo, id, tipi, classe);
    Lega(&dialogo->Finestra(), i, dialogo->module());
    dialogo->AggiungiControllo(this);  // last: nothing may throw after it
}

void GControl::InputTesto(const std::string& testo) { finestra->ImpostaTesto(indice, finestra->Testo(indice) + testo); }
