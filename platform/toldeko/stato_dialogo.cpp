#include "stato_dialogo.h"

const TStatoElemento* TStatoDialogo::Elemento(int id) const
{
    if (id == idNessuno) return nullptr;
    for (const TStatoElemento& e : elementi)
        if (e.id == id) return &e;
    return nullptr;
}

std::string TStatoDialogo::Testo(int id) const
{
    const TStatoElemento* e = Elemento(id);
    return e ? e->testo : std::string();
}

int TStatoDialogo::Check(int id) const
{
    const TStatoElemento* e = Elemento(id);
    return e ? e->check : 0;
}

bool TStatoDialogo::Abilitato(int id) const
{
    const TStatoElemento* e = Elemento(id);
    return e && e->abilitato;
}

int TStatoDialogo::Selezione(int id) const
{
    const TStatoElemento* e = Elemento(id);
    return e ? e->selezione : -1;
}
