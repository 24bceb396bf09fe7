#include "stato_dialogo.h"

TStatoDialogo::TGruppo TStatoDialogo::GruppoRadio(int indice) const
{
    auto radio = [&](int i) { return elementi[static_cast<std::size_t>(i)].tipo == TTipoElemento::radio; };
    auto inizio = [&](int i) { return (elementi[static_cast<std::size_t>(i)].stile & stileInizioGruppo) != 0; };
    TGruppo g{indice, indice};
    while (!inizio(g.primo) && g.primo > 0 && radio(g.primo - 1)) --g.primo;
    const int n = static_cast<int>(elementi.size());
    while (g.ultimo + 1 < n && radio(g.ultimo + 1) && !inizio(g.ultimo + 1)) ++g.ultimo;
    return g;
}

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
