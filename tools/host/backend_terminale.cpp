#include "backend_terminale.h"

#include <algorithm>

namespace {

const char* const aiuto = "Tab: campo  frecce: nel gruppo  Spazio: scegli  Invio: conferma  Esc: annulla";

bool IsPulsante(TTipoElemento t) { return t == TTipoElemento::pulsante || t == TTipoElemento::predefinito; }

const TStatoElemento& El(const TStatoDialogo& s, int i) { return s.elementi[static_cast<std::size_t>(i)]; }

// The next control from `da` in direction `verso` that takes the focus; `da`
// itself when there is no other.
int Sposta(const TStatoDialogo& s, int da, int verso)
{
    const int n = static_cast<int>(s.elementi.size());
    for (int passo = 1; passo <= n; ++passo) {
        const int i = ((da + verso * passo) % n + n) % n;
        if (PrendeFuoco(El(s, i))) return i;
    }
    return da;
}

bool IsRadio(const TStatoDialogo& s, int i)
{
    return i >= 0 && i < static_cast<int>(s.elementi.size()) && El(s, i).tipo == TTipoElemento::radio;
}

bool StessoGruppo(const TStatoDialogo& s, int a, int b)
{
    return IsRadio(s, a) && IsRadio(s, b) && s.GruppoRadio(a).primo == s.GruppoRadio(b).primo;
}

// The radios of i's group that take the focus, in order.
std::vector<int> MembriGruppo(const TStatoDialogo& s, int i)
{
    std::vector<int> membri;
    const TStatoDialogo::TGruppo g = s.GruppoRadio(i);
    for (int j = g.primo; j <= g.ultimo; ++j)
        if (PrendeFuoco(El(s, j))) membri.push_back(j);
    return membri;
}

// Tab and Shift-Tab go from group to group, as in the dialogs of the
// platform: a radio group is one stop, entered at its checked radio (at its
// first enabled one when none is checked, as after a change of model).
int SpostaTab(const TStatoDialogo& s, int da, int verso)
{
    int i = Sposta(s, da, verso);
    while (i != da && StessoGruppo(s, i, da)) i = Sposta(s, i, verso);
    if (!IsRadio(s, i)) return i;
    const std::vector<int> membri = MembriGruppo(s, i);
    for (int j : membri)
        if (El(s, j).check == 1) return j;
    return membri.empty() ? i : membri.front();
}

// The arrows move within a radio group, round from its last radio to its
// first; they only move the focus, Space chooses.
int SpostaNelGruppo(const TStatoDialogo& s, int da, int verso)
{
    const std::vector<int> membri = MembriGruppo(s, da);
    const auto dove = std::find(membri.begin(), membri.end(), da);
    if (dove == membri.end()) return da;
    const int m = static_cast<int>(membri.size());
    const int k = static_cast<int>(dove - membri.begin());
    return membri[static_cast<std::size_t>(((k + verso) % m + m) % m)];
}

std::string Evidenzia(const std::string& riga, const TPosizione& p)
{
    std::vector<std::string> c = CelleTesto(riga);
    if (static_cast<int>(c.size()) < p.colonna + p.larghezza) c.resize(static_cast<std::size_t>(p.colonna + p.larghezza), " ");
    std::string r;
    for (int i = 0; i < static_cast<int>(c.size()); ++i) {
        if (i == p.colonna) r += "\x1b[7m";
        r += c[static_cast<std::size_t>(i)];
        if (i == p.colonna + p.larghezza - 1) r += "\x1b[0m";
    }
    return r;
}

}  // namespace

bool PrendeFuoco(const TStatoElemento& e)
{
    if (!e.abilitato) return false;
    return e.tipo == TTipoElemento::edit || IsPulsante(e.tipo) || e.tipo == TTipoElemento::radio ||
           e.tipo == TTipoElemento::combo;
}

bool InputPerTasto(const TStatoDialogo& s, const TLettura& t, int& fuoco, TInput& input)
{
    const int n = static_cast<int>(s.elementi.size());
    if (fuoco < 0 || fuoco >= n || !PrendeFuoco(s.elementi[static_cast<std::size_t>(fuoco)]))
        fuoco = Sposta(s, fuoco < 0 ? -1 : fuoco, 1);
    const TStatoElemento* e =
        fuoco >= 0 && fuoco < n && PrendeFuoco(s.elementi[static_cast<std::size_t>(fuoco)])
            ? &s.elementi[static_cast<std::size_t>(fuoco)]
            : nullptr;
    input = TInput{};
    if (e) input.id = e->id;
    const bool lista = e && e->tipo == TTipoElemento::combo;
    const int voci = lista ? static_cast<int>(e->voci.size()) : 0;
    switch (t.tasto) {
    case TTasto::tab:
    case TTasto::tabIndietro:
        if (n > 0) fuoco = SpostaTab(s, fuoco, t.tasto == TTasto::tab ? 1 : -1);
        return false;
    case TTasto::giu:
    case TTasto::su:
    case TTasto::sinistra:
    case TTasto::destra: {
        const int verso = t.tasto == TTasto::giu || t.tasto == TTasto::destra ? 1 : -1;
        const bool suLista = t.tasto == TTasto::sinistra || t.tasto == TTasto::destra;
        if (!suLista || !lista || voci == 0) {
            if (n > 0) fuoco = IsRadio(s, fuoco) ? SpostaNelGruppo(s, fuoco, verso) : SpostaTab(s, fuoco, verso);
            return false;
        }
        input.tipo = TTipoInput::scegli;
        input.indice = std::min(voci - 1, std::max(0, e->selezione + verso));
        return true;
    }
    case TTasto::spazio:
        if (!e) return false;
        if (lista) {
            if (voci == 0) return false;
            input.tipo = TTipoInput::scegli;
            input.indice = (e->selezione + 1) % voci;
            return true;
        }
        if (e->tipo == TTipoElemento::edit) break;
        input.tipo = TTipoInput::clic;
        return true;
    case TTasto::invio:
        if (e && e->tipo == TTipoElemento::pulsante) {
            input.tipo = TTipoInput::clic;
            return true;
        }
        input.tipo = TTipoInput::invio;
        return true;
    case TTasto::esc:
    case TTasto::fine:
        input.tipo = TTipoInput::esc;
        return true;
    case TTasto::cancella:
        if (!e || e->tipo != TTipoElemento::edit) return false;
        input.tipo = TTipoInput::digita;
        input.testo = "\b";
        return true;
    case TTasto::carattere:
    case TTasto::nessuno:
        break;
    }
    if (!e || e->tipo != TTipoElemento::edit || (t.tasto != TTasto::carattere && t.tasto != TTasto::spazio))
        return false;
    input.tipo = TTipoInput::digita;
    input.testo = std::string(1, t.carattere);
    return true;
}

TBackendTerminale::TBackendTerminale(TTerminale& t) : terminale(t) {}

// Lock order: the terminal's screen before the backend's mutex, as in
// Ridisegna; so the screen is switched outside the mutex.
void TBackendTerminale::Aperto(TFinestraDialogo& finestra)
{
    bool primo = false;
    std::function<void(unsigned)> chiama;
    {
        std::lock_guard<std::mutex> g(mutex);
        primo = aperti.empty();
    }
    if (primo) terminale.SchermoAlternativo(true);
    {
        std::lock_guard<std::mutex> g(mutex);
        aperti.push_back(&finestra);
        const TStatoDialogo s = finestra.Fotografia();
        fuoco[&finestra] = s.elementi.empty() ? -1 : Sposta(s, -1, 1);
        chiama = alAperto;
    }
    Ridisegna();
    if (chiama) chiama(finestra.Modello().id);
}

void TBackendTerminale::Chiuso(TFinestraDialogo& finestra)
{
    bool ultimo = false;
    {
        std::lock_guard<std::mutex> g(mutex);
        aperti.erase(std::remove(aperti.begin(), aperti.end(), &finestra), aperti.end());
        fuoco.erase(&finestra);
        avviso.clear();
        ultimo = aperti.empty();
    }
    if (ultimo) terminale.SchermoAlternativo(false);
    else Ridisegna();
}

void TBackendTerminale::Cambiato(TFinestraDialogo&) { Ridisegna(); }

void TBackendTerminale::AlAperto(std::function<void(unsigned)> f)
{
    std::lock_guard<std::mutex> g(mutex);
    alAperto = std::move(f);
}

void TBackendTerminale::Intestazione(const std::string& testo)
{
    std::lock_guard<std::mutex> g(mutex);
    intestazione = testo;
}

void TBackendTerminale::Avviso(const std::string& testo)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        avviso = testo;
    }
    Ridisegna();
}

std::chrono::milliseconds TBackendTerminale::Inattivo(TFinestraDialogo& finestra)
{
    // A short wait for a key, so that a dialog that the tablet ends (on the
    // reader thread) is noticed soon.
    const TLettura t = terminale.LeggiTasto(50);
    if (t.tasto == TTasto::nessuno) return std::chrono::milliseconds(1);
    TInput input;
    bool posta = false;
    {
        std::lock_guard<std::mutex> g(mutex);
        avviso.clear();
        int& f = fuoco[&finestra];
        posta = InputPerTasto(finestra.Fotografia(), t, f, input);
    }
    if (posta) finestra.Posta(input);
    Ridisegna();
    return std::chrono::milliseconds(1);
}

void TBackendTerminale::Ridisegna()
{
    std::lock_guard<std::recursive_mutex> schermo(terminale.Schermo());
    std::string out = "\x1b[H\x1b[2J";
    TStatoDialogo s;
    int f = -1;
    std::string nota, testa;
    {
        std::lock_guard<std::mutex> g(mutex);
        testa = intestazione;
        if (!aperti.empty()) {
            s = aperti.back()->Fotografia();
            f = fuoco[aperti.back()];
        }
        nota = avviso;
    }
    if (s.modello == 0) return;  // the main screen is the program's
    const std::vector<std::string> righe = DisegnaDialogo(s);
    const bool conFuoco = f >= 0 && f < static_cast<int>(s.elementi.size());
    const TPosizione p = conFuoco ? PosizioneControllo(s.elementi[static_cast<std::size_t>(f)]) : TPosizione{-1, 0, 0};
    out += "\x1b[?25l";
    if (!testa.empty()) out += "\x1b[1m" + testa + "\x1b[0m\r\n\r\n";
    const int primaRiga = testa.empty() ? 0 : 2;
    for (int r = 0; r < static_cast<int>(righe.size()); ++r) {
        out += "  " + (r == p.riga ? Evidenzia(righe[static_cast<std::size_t>(r)], p) : righe[static_cast<std::size_t>(r)]);
        out += "\r\n";
    }
    out += "\r\n  ";
    out += aiuto;
    out += "\r\n";
    if (!nota.empty()) out += "\r\n  \x1b[1m" + nota + "\x1b[0m\r\n";
    if (conFuoco && s.elementi[static_cast<std::size_t>(f)].tipo == TTipoElemento::edit) {
        const int lunghezza = static_cast<int>(CelleTesto(s.elementi[static_cast<std::size_t>(f)].testo).size());
        const int col = 3 + p.colonna + 1 + std::min(lunghezza, std::max(0, p.larghezza - 3));
        out += "\x1b[" +  std::to_string(primaRiga + p.riga + 1) + ";" + std::to_string(col) + "H\x1b[?25h";
    }
    terminale.Scrivi(out);
}
