// The terminal front end without a terminal: the keys as a terminal sends
// them, what each key does to a dialog, and Backspace in an entry field.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "backend_terminale.h"
#include "digit.h"
#include "support/utente_finto.h"
#include "terminale.h"

namespace {

// DEL, CR, Tab and plain characters are what the terminal session of the
// tool tests types; here the rest.
TEST(DecodificaTasto, NomeIlTasto)
{
    struct TCaso { std::string byte; TTasto tasto; char carattere; };
    const TCaso casi[] = {{"\x1b[A", TTasto::su, 0},          {"\x1bOB", TTasto::giu, 0},  // cursor and application keys
                          {"\x1b[C", TTasto::destra, 0},      {"\x1b[Z", TTasto::tabIndietro, 0},
                          {"\x1b", TTasto::esc, 0},           {"\x1b[5~", TTasto::nessuno, 0},
                          {"\x08", TTasto::cancella, 0},      {" ", TTasto::spazio, ' '},
                          {"\x04", TTasto::fine, 0},          {"\x01", TTasto::nessuno, 0}};
    for (const TCaso& c : casi) {
        const TLettura l =
            DecodificaTasto(reinterpret_cast<const unsigned char*>(c.byte.data()), static_cast<int>(c.byte.size()));
        EXPECT_EQ(l.tasto, c.tasto) << "case " << (&c - casi);
        EXPECT_EQ(l.carattere, c.carattere) << "case " << (&c - casi);
    }
}

// A dialog with one control of every kind that takes the focus, and a
// disabled entry that must be skipped.
TStatoDialogo Dialogo()
{
    auto el = [](int id, TTipoElemento tipo, bool abilitato = true) {
        TStatoElemento e;
        e.id = id;
        e.tipo = tipo;
        e.abilitato = abilitato;
        return e;
    };
    TStatoDialogo s;
    s.modello = 1;
    s.elementi = {el(idNessuno, TTipoElemento::statico), el(2000, TTipoElemento::edit),
                  el(2001, TTipoElemento::edit, false), el(1, TTipoElemento::predefinito),
                  el(2, TTipoElemento::pulsante), el(2120, TTipoElemento::combo), el(2122, TTipoElemento::radio)};
    s.elementi[5].voci = {{"a", 0}, {"b", 1}, {"c", 2}};
    s.elementi[5].selezione = 2;
    return s;
}

// What a key does to the control with the focus. Typing, Backspace, Enter
// and Escape in an entry field are what a person does in the terminal
// session of the tool tests.
TEST(InputPerTasto, AgisceSulControlloConIlFuoco)
{
    const TLettura tab{TTasto::tab, 0}, indietro{TTasto::tabIndietro, 0}, invio{TTasto::invio, 0},
        spazio{TTasto::spazio, ' '}, sette{TTasto::carattere, '7'}, sinistra{TTasto::sinistra, 0},
        destra{TTasto::destra, 0};
    struct TCaso {
        const char* nome;
        int fuoco;  // index in Dialogo().elementi
        TLettura tasto;
        int fuocoDopo;
        bool posta;
        TTipoInput tipo;
        int id;
        std::string testo;
        int indice;
    };
    const TCaso casi[] = {
        {"TabSaltaIlDisabilitato", 1, tab, 3, false, {}, 0, "", -1},
        {"IndietroDalPrimoVaAllUltimo", 1, indietro, 6, false, {}, 0, "", -1},
        {"FuocoSuUnDisabilitatoPassaOltre", 2, sette, 3, false, {}, 0, "", -1},
        {"SenzaFuocoIlPrimoControllo", -1, sette, 1, true, TTipoInput::digita, 2000, "7", -1},
        {"SpazioNellEntrata", 1, spazio, 1, true, TTipoInput::digita, 2000, " ", -1},
        {"CarattereSuUnPulsanteNonFaNulla", 4, sette, 4, false, {}, 0, "", -1},
        {"InvioSuUnPulsanteLoPreme", 4, invio, 4, true, TTipoInput::clic, 2, "", -1},
        {"SpazioSulRadio", 6, spazio, 6, true, TTipoInput::clic, 2122, "", -1},
        {"SpazioSullaListaRicomincia", 5, spazio, 5, true, TTipoInput::scegli, 2120, "", 0},
        {"DestraSullUltimaVoceResta", 5, destra, 5, true, TTipoInput::scegli, 2120, "", 2},
        {"SinistraSullaLista", 5, sinistra, 5, true, TTipoInput::scegli, 2120, "", 1},
        {"DestraFuoriListaSposta", 3, destra, 4, false, {}, 0, "", -1}};
    for (const TCaso& c : casi) {
        SCOPED_TRACE(c.nome);
        int fuoco = c.fuoco;
        TInput input;
        const bool posta = InputPerTasto(Dialogo(), c.tasto, fuoco, input);
        EXPECT_EQ(fuoco, c.fuocoDopo);
        ASSERT_EQ(posta, c.posta);
        if (!posta) continue;
        EXPECT_EQ(input.tipo, c.tipo);
        EXPECT_EQ(input.id, c.id);
        EXPECT_EQ(input.testo, c.testo);
        if (c.tipo == TTipoInput::scegli) {
            EXPECT_EQ(input.indice, c.indice);
        }
    }
}

// Keys that came in one read are handed out one by one: an escape sequence
// takes its own bytes and no more, and waits while it is cut short.
TEST(LunghezzaTasto, SeparaITastiArrivatiInsieme)
{
    struct TCaso { std::string byte; std::vector<TTasto> tasti; };
    const TCaso casi[] = {
        {"\x1b[Z\r", {TTasto::tabIndietro, TTasto::invio}},
        {"\x1b[A \x1b[B\x1b[B", {TTasto::su, TTasto::spazio, TTasto::giu, TTasto::giu}},
        {"\x1bOB\t7", {TTasto::giu, TTasto::tab, TTasto::carattere}},
        {"\x1b[1;5C\r", {TTasto::nessuno, TTasto::invio}},  // Ctrl-Right, not ours: dropped whole
        {"\x1bx\r", {TTasto::nessuno, TTasto::invio}},      // Alt-x likewise
    };
    for (const TCaso& c : casi) {
        const auto* b = reinterpret_cast<const unsigned char*>(c.byte.data());
        std::vector<TTasto> letti;
        for (int n = static_cast<int>(c.byte.size()), k = 0; n > 0; b += k, n -= k) {
            k = LunghezzaTasto(b, n);
            ASSERT_GT(k, 0) << "case " << (&c - casi);
            letti.push_back(DecodificaTasto(b, k).tasto);
        }
        EXPECT_EQ(letti, c.tasti) << "case " << (&c - casi);
    }
    for (const std::string cut : {"\x1b", "\x1b[", "\x1b[1;5", "\x1bO"})
        EXPECT_EQ(LunghezzaTasto(reinterpret_cast<const unsigned char*>(cut.data()), static_cast<int>(cut.size())), 0);
}

// Tab goes from group to group, entering a radio group at its checked radio;
// the arrows go round within a group. Two groups between an entry and a
// button, the second with its middle radio checked and its last disabled.
TEST(InputPerTasto, TabTraIGruppiFrecceNelGruppo)
{
    auto el = [](int id, TTipoElemento tipo, unsigned stile = 0, int check = 0, bool abilitato = true) {
        TStatoElemento e;
        std::tie(e.id, e.tipo, e.stile, e.check, e.abilitato) = std::make_tuple(id, tipo, stile, check, abilitato);
        return e;
    };
    const auto radio = TTipoElemento::radio;
    TStatoDialogo s;
    s.modello = 1;
    s.elementi = {el(2000, TTipoElemento::edit),       el(10, radio, stileInizioGruppo), el(11, radio),
                  el(12, radio),                       el(20, radio, stileInizioGruppo), el(21, radio, 0, 1),
                  el(22, radio, 0, 0, false),          el(1, TTipoElemento::predefinito)};
    const TLettura tab{TTasto::tab, 0}, indietro{TTasto::tabIndietro, 0}, giu{TTasto::giu, 0}, su{TTasto::su, 0};
    struct TCaso { int fuoco; TLettura tasto; int dopo; };
    const TCaso casi[] = {
        {0, tab, 1}, {1, tab, 5}, {2, tab, 5}, {5, tab, 7},  // none checked: the group's first radio
        {7, indietro, 5}, {5, indietro, 1},
        {1, giu, 2}, {3, giu, 1}, {1, su, 3}, {5, giu, 4}, {4, su, 5},  // round, past the disabled one
        {0, giu, 1},  // outside a group an arrow moves like Tab
    };
    for (const TCaso& c : casi) {
        int fuoco = c.fuoco;
        TInput input;
        EXPECT_FALSE(InputPerTasto(s, c.tasto, fuoco, input));
        EXPECT_EQ(fuoco, c.dopo) << "case " << (&c - casi);
    }
}

// Backspace reaches the field through the toolkit: it erases the last
// character, and on an empty field it erases nothing.
TEST(CancellaNellEntrata, CancellaLUltimoCarattere)
{
    TUtenteFinto utente;
    utente.script.Digita(2000, "12\b3");
    utente.script.Digita(2001, "\b\b-5");
    utente.script.Invio();
    double est = 0, nord = 0;
    ASSERT_EQ(dialogSelectPtiSparsi(nullptr, est, nord), 1);
    EXPECT_EQ(est, 13.0);
    EXPECT_EQ(nord, -5.0);
}

// A control's place in the drawing is where the renderer puts it.
TEST(PosizioneControllo, CoincideConIlDisegno)
{
    TStatoDialogo s;
    s.modello = 1;
    s.cx = 160;
    s.cy = 40;
    s.elementi.resize(1);
    TStatoElemento& e = s.elementi[0];
    std::tie(e.id, e.tipo, e.x, e.y, e.cx, e.cy, e.testo) = std::make_tuple(2000, TTipoElemento::edit, 20, 14, 40, 12, "42");
    const std::vector<std::string> righe = DisegnaDialogo(s);
    const TPosizione p = PosizioneControllo(e);
    ASSERT_LT(p.riga, static_cast<int>(righe.size()));
    const std::string riga = righe[static_cast<std::size_t>(p.riga)];
    ASSERT_GE(riga.size(), static_cast<std::size_t>(p.colonna + p.larghezza));
    EXPECT_EQ(riga.substr(static_cast<std::size_t>(p.colonna), static_cast<std::size_t>(p.larghezza)), "[42      ]");
}

}  // namespace
