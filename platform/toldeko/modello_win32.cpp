#include "platform/toldeko/modello_win32.h"

#include "platform/testo_win32.h"

namespace {

// The system's atoms of its control classes.
constexpr WORD classeButton = 0x0080;
constexpr WORD classeEdit = 0x0081;
constexpr WORD classeStatic = 0x0082;
constexpr WORD classeCombo = 0x0085;

// A drop-down list's height in a template counts its open list too: room
// for ten entries under the closed box.
constexpr short altezzaListaAperta = 100;

class TScrittore {
public:
    void Parola(WORD w) { dati.push_back(w); }
    void Doppia(DWORD d)
    {
        Parola(LOWORD(d));
        Parola(HIWORD(d));
    }
    void Testo(const char* testo)
    {
        for (wchar_t c : Largo(testo ? testo : "")) Parola(static_cast<WORD>(c));
        Parola(0);
    }
    void AllineaDoppia()
    {
        if (dati.size() % 2) Parola(0);
    }
    std::vector<WORD> dati;
};

DWORD StileTesto(unsigned stile)
{
    if (stile & stileCentrato) return SS_CENTER;
    if (stile & stileADestra) return SS_RIGHT;
    return SS_LEFT;
}

struct TControlloSistema {
    WORD classe;
    DWORD stile;
    DWORD stileEsteso;
};

TControlloSistema Controllo(const TElementoModello& e)
{
    const DWORD gruppo = WS_GROUP;
    switch (e.tipo) {
    case TTipoElemento::statico:
        return {classeStatic, StileTesto(e.stile) | gruppo, 0};
    case TTipoElemento::cornice:
        return {classeStatic, static_cast<DWORD>((e.stile & stileInciso) ? SS_ETCHEDFRAME : SS_BLACKFRAME) | gruppo, 0};
    case TTipoElemento::edit:
        return {classeEdit, ES_LEFT | ES_AUTOHSCROLL | WS_TABSTOP | gruppo, WS_EX_CLIENTEDGE};
    case TTipoElemento::pulsante:
        return {classeButton, BS_PUSHBUTTON | WS_TABSTOP | gruppo, 0};
    case TTipoElemento::predefinito:
        return {classeButton, BS_DEFPUSHBUTTON | WS_TABSTOP | gruppo, 0};
    case TTipoElemento::radio:
        return {classeButton,
                BS_AUTORADIOBUTTON | ((e.stile & stileInizioGruppo) ? WS_GROUP | WS_TABSTOP : 0u), 0};
    case TTipoElemento::gruppo:
        return {classeButton, BS_GROUPBOX | gruppo, 0};
    case TTipoElemento::combo:
        return {classeCombo, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP | gruppo, 0};
    }
    return {classeStatic, SS_LEFT | gruppo, 0};
}

}  // namespace

std::vector<WORD> ModelloDiSistema(const TModelloDialogo& m)
{
    TScrittore w;
    w.Doppia(DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    w.Doppia(0);
    w.Parola(static_cast<WORD>(m.numElementi));
    w.Parola(0);
    w.Parola(0);
    w.Parola(static_cast<WORD>(m.cx));
    w.Parola(static_cast<WORD>(m.cy));
    w.Parola(0);  // no menu
    w.Parola(0);  // the system's dialog class
    w.Testo(m.titolo);
    w.Parola(static_cast<WORD>(m.dimensioneFont));
    w.Testo(m.font);
    for (std::size_t i = 0; i < m.numElementi; ++i) {
        const TElementoModello& e = m.elementi[i];
        const TControlloSistema c = Controllo(e);
        w.AllineaDoppia();
        w.Doppia(c.stile | WS_CHILD | WS_VISIBLE);
        w.Doppia(c.stileEsteso);
        w.Parola(static_cast<WORD>(e.x));
        w.Parola(static_cast<WORD>(e.y));
        w.Parola(static_cast<WORD>(e.cx));
        w.Parola(static_cast<WORD>(e.tipo == TTipoElemento::combo ? e.cy + altezzaListaAperta : e.cy));
        w.Parola(static_cast<WORD>(e.id));  // idNessuno is 0xFFFF, as the system's own labels
        w.Parola(0xFFFF);
        w.Parola(c.classe);
        w.Testo(e.tipo == TTipoElemento::cornice || e.tipo == TTipoElemento::combo ? "" : e.testo);
        w.Parola(0);  // no creation data
    }
    return w.dati;
}
