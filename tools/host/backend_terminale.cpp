#include "backend_terminale.h"

#include <algorithm>

#include "guida.h"
#include "impaginazione.h"
#include "platform/winui.h"

namespace {

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

// The screen as the terminal draws it: each line over the last one, the
// focus in reverse video, the notice in bold, the caret in an entry field.
std::string Sequenze(const TSchermata& sc)
{
    std::string out = "\x1b[?25l\x1b[H";
    for (int r = 0; r < static_cast<int>(sc.righe.size()); ++r) {
        const std::string& riga = sc.righe[static_cast<std::size_t>(r)];
        if (r > 0) out += "\r\n";
        if (r >= sc.rigaAvviso && sc.rigaAvviso >= 0) out += "\x1b[1m";
        if (r != sc.rigaFuoco) {
            out += riga;
        } else {
            std::vector<std::string> c = CelleTesto(riga);
            const int fine = sc.colonnaFuoco + sc.larghezzaFuoco;
            if (static_cast<int>(c.size()) < fine) c.resize(static_cast<std::size_t>(fine), " ");
            for (int i = 0; i < static_cast<int>(c.size()); ++i) {
                if (i == sc.colonnaFuoco) out += "\x1b[7m";
                out += c[static_cast<std::size_t>(i)];
                if (i == fine - 1) out += "\x1b[0m";
            }
        }
        out += "\x1b[0m\x1b[K";
    }
    out += "\x1b[J";
    if (sc.rigaCursore >= 0)
        out += "\x1b[" + std::to_string(sc.rigaCursore + 1) + ";" + std::to_string(sc.colonnaCursore + 1) + "H\x1b[?25h";
    return out;
}

// The whole entry of a focused list that is too narrow to show it, where
// the keys are named: "[Inizia Polilinea - Dis. Lib.]  ".
std::string EtichettaIntera(const TStatoDialogo& s, int fuoco, int colonne)
{
    if (fuoco < 0 || fuoco >= static_cast<int>(s.elementi.size())) return {};
    const TStatoElemento& e = El(s, fuoco);
    if (e.tipo != TTipoElemento::combo || e.selezione < 0 || e.selezione >= static_cast<int>(e.voci.size())) return {};
    const std::string& voce = e.voci[static_cast<std::size_t>(e.selezione)].testo;
    const int posto = PosizioneControllo(e, MisuraPer(s, colonne)).larghezza - 3;
    return static_cast<int>(CelleTesto(voce).size()) > posto ? "[" + voce + "]  " : "";
}

}  // namespace

bool PrendeFuoco(const TStatoElemento& e)
{
    if (!e.abilitato) return false;
    return e.tipo == TTipoElemento::edit || IsPulsante(e.tipo) || e.tipo == TTipoElemento::radio ||
           e.tipo == TTipoElemento::combo;
}

int PrimoFuoco(const TStatoDialogo& s)
{
    for (std::size_t i = 0; i < s.elementi.size(); ++i)
        if (PrendeFuoco(s.elementi[i]) && s.elementi[i].id != IDCANCEL) return static_cast<int>(i);
    return -1;
}

bool InputPerTasto(const TStatoDialogo& s, const TLettura& t, int& fuoco, TInput& input)
{
    const int n = static_cast<int>(s.elementi.size());
    // No focus stays none until Tab or an arrow gives one.
    if (fuoco >= n || (fuoco >= 0 && !PrendeFuoco(s.elementi[static_cast<std::size_t>(fuoco)])))
        fuoco = Sposta(s, fuoco, 1);
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
        // Enter presses the highlighted button, else the default one; a
        // dialog with neither (the one that waits for a press of the
        // tablet, whose only button is Annulla) takes no Enter at all.
        if (e && e->tipo == TTipoElemento::pulsante) {
            input.tipo = TTipoInput::clic;
            return true;
        }
        if (IndicePredefinito(s) < 0) return false;
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
        fuoco[&finestra] = PrimoFuoco(s);
        chiama = alAperto;
    }
    if (chiama) chiama(finestra.Modello().id);
    Ridisegna();
}

// The dialog under a nested one gets the focus on its default button: the
// button that opened the nested dialog would open it again on Enter.
void TBackendTerminale::Chiuso(TFinestraDialogo& finestra)
{
    bool ultimo = false;
    {
        std::lock_guard<std::mutex> g(mutex);
        aperti.erase(std::remove(aperti.begin(), aperti.end(), &finestra), aperti.end());
        fuoco.erase(&finestra);
        avviso.clear();
        ultimoChiuso = finestra.Modello().id;
        quandoChiuso = std::chrono::steady_clock::now();
        ultimo = aperti.empty();
        if (!ultimo) {
            const int p = IndicePredefinito(aperti.back()->Fotografia());
            if (p >= 0) fuoco[aperti.back()] = p;
        }
    }
    if (ultimo) terminale.SchermoAlternativo(false);
    else Ridisegna();
}

void TBackendTerminale::Cambiato(TFinestraDialogo&) { sporco = true; }

void TBackendTerminale::AlAperto(std::function<void(unsigned)> f)
{
    std::lock_guard<std::mutex> g(mutex);
    alAperto = std::move(f);
}

void TBackendTerminale::Suggerimento(std::function<std::string(unsigned)> f)
{
    std::lock_guard<std::mutex> g(mutex);
    suggerimento = std::move(f);
}

void TBackendTerminale::ConfermaAnnulla(std::function<std::string(unsigned)> f)
{
    std::lock_guard<std::mutex> g(mutex);
    confermaAnnulla = std::move(f);
}

// Asks in a box over the dialog; only y gives up.
bool TBackendTerminale::Conferma(const std::string& domanda)
{
    Riquadro({domanda}, "y: give up   n, Escape: go on");
    for (;;) {
        RidisegnaSeCambiato();
        const TLettura t = terminale.LeggiTasto(50);
        const char c = t.tasto == TTasto::carattere ? static_cast<char>(t.carattere | 0x20) : 0;
        if (c == 'y' || c == 'n' || t.tasto == TTasto::esc || t.tasto == TTasto::fine) {
            Riquadro({}, "");
            return c == 'y';
        }
    }
}

void TBackendTerminale::Intestazione(const std::string& testo)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        intestazione = testo;
    }
    sporco = true;
}

unsigned TBackendTerminale::Modello()
{
    std::lock_guard<std::mutex> g(mutex);
    return aperti.empty() ? 0 : aperti.back()->Modello().id;
}

unsigned TBackendTerminale::ModelloRecente()
{
    std::lock_guard<std::mutex> g(mutex);
    if (!aperti.empty()) return aperti.back()->Modello().id;
    return std::chrono::steady_clock::now() - quandoChiuso < std::chrono::seconds(1) ? ultimoChiuso : 0;
}

void TBackendTerminale::Avviso(const std::string& testo)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        avviso = testo;
    }
    Ridisegna();
}

void TBackendTerminale::Occupato(const std::string& testo)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        occupato = testo;
    }
    Ridisegna();
}

void TBackendTerminale::Riquadro(const std::vector<std::string>& righe, const std::string& tasti)
{
    {
        std::lock_guard<std::mutex> g(mutex);
        riquadro = righe;
        tastiRiquadro = tasti;
        avviso.clear();  // the box says what the beep before it was about
    }
    Ridisegna();
}

std::chrono::milliseconds TBackendTerminale::Inattivo(TFinestraDialogo& finestra)
{
    if (TTerminale::DaRidisegnare()) sporco = true;
    RidisegnaSeCambiato();
    // A short wait for a key, so that what the tablet changed, or a dialog
    // that it ended, is seen soon.
    const TLettura t = terminale.LeggiTasto(20);
    if (t.tasto == TTasto::nessuno) return std::chrono::milliseconds(1);
    TInput input;
    bool posta = false;
    std::function<std::string(unsigned)> domanda;
    {
        std::lock_guard<std::mutex> g(mutex);
        avviso.clear();
        int& f = fuoco[&finestra];
        const TStatoDialogo s = finestra.Fotografia();
        posta = InputPerTasto(s, t, f, input);
        if (!posta && t.tasto == TTasto::invio)
            avviso = "Enter: no button is highlighted here (Tab reaches them).";
        domanda = confermaAnnulla;
    }
    sporco = true;
    const bool annulla = input.tipo == TTipoInput::esc || (input.tipo == TTipoInput::clic && input.id == IDCANCEL);
    if (posta && annulla && domanda) {
        const std::string d = domanda(finestra.Modello().id);
        if (!d.empty() && !Conferma(d)) return std::chrono::milliseconds(1);
    }
    if (posta) finestra.Posta(input);
    return std::chrono::milliseconds(1);
}

// At most one screen in twice the time the last one took to write: a slow
// terminal sets the pace, and the keys are read in between.
void TBackendTerminale::RidisegnaSeCambiato()
{
    std::lock_guard<std::recursive_mutex> schermo(terminale.Schermo());
    const auto adesso = std::chrono::steady_clock::now();
    if (!sporco || adesso - ultimoDisegno < std::max<std::chrono::steady_clock::duration>(
                                                 std::chrono::milliseconds(15), 2 * durataDisegno))
        return;
    Ridisegna();
}

void TBackendTerminale::Ridisegna()
{
    std::lock_guard<std::recursive_mutex> schermo(terminale.Schermo());
    sporco = false;
    TContenutoSchermo c;
    std::function<std::string(unsigned)> perDialogo;
    std::string tastiBox;
    {
        std::lock_guard<std::mutex> g(mutex);
        c.intestazione = intestazione;
        if (!aperti.empty()) {
            c.stato = aperti.back()->Fotografia();
            c.fuoco = fuoco[aperti.back()];
        }
        c.avviso = occupato.empty() ? avviso : occupato;
        c.riquadro = riquadro;
        tastiBox = tastiRiquadro;
        perDialogo = suggerimento;
    }
    if (c.stato.modello == 0) return;  // the main screen is the program's
    if (c.fuoco >= static_cast<int>(c.stato.elementi.size()) ||
        (c.fuoco >= 0 && !PrendeFuoco(c.stato.elementi[static_cast<std::size_t>(c.fuoco)])))
        c.fuoco = Sposta(c.stato, c.fuoco, 1);
    c.aiuto.push_back(c.riquadro.empty() ? EtichettaIntera(c.stato, c.fuoco, terminale.Colonne()) +
                                               TastiDelControllo(c.stato, c.fuoco)
                                         : tastiBox);
    if (perDialogo) {
        const std::string s = perDialogo(c.stato.modello);
        if (!s.empty()) c.aiuto.push_back(s);
    }
    const auto inizio = std::chrono::steady_clock::now();
    terminale.Scrivi(Sequenze(Impagina(c, terminale.Colonne(), terminale.Righe())));
    ultimoDisegno = std::chrono::steady_clock::now();
    durataDisegno = ultimoDisegno - inizio;
    ++disegni;
}
