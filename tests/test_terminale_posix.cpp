// The terminal front end without a terminal: the keys as a terminal sends
// them, what each key does to a dialog, how a screen is laid out.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "backend_terminale.h"
#include "configura.h"
#include "digit.h"
#include "guida.h"
#include "impaginazione.h"
#include "platform/toldeko/testo_reale.h"
#include "record_predefiniti.h"
#include "terminale.h"

namespace {

// Each key on a dialog with every kind of control, a disabled entry and two
// radio groups: Tab enters a group at its checked radio, arrows go round it.
TEST(InputPerTasto, AgisceSulControlloConIlFuoco)
{
    auto el = [](int id, TTipoElemento tipo, unsigned stile = 0, int check = 0, bool abilitato = true) {
        TStatoElemento e;
        std::tie(e.id, e.tipo, e.stile, e.check, e.abilitato) = std::make_tuple(id, tipo, stile, check, abilitato);
        return e;
    };
    const auto radio = TTipoElemento::radio;
    TStatoDialogo s;
    s.modello = 1;
    s.elementi = {el(idNessuno, TTipoElemento::statico), el(2000, TTipoElemento::edit),
                  el(2001, TTipoElemento::edit, 0, 0, false), el(1, TTipoElemento::predefinito),
                  el(2, TTipoElemento::pulsante), el(2120, TTipoElemento::combo),
                  el(10, radio, stileInizioGruppo), el(11, radio), el(12, radio),
                  el(20, radio, stileInizioGruppo), el(21, radio, 0, 1), el(22, radio, 0, 0, false)};
    s.elementi[5].voci = {{"a", 0}, {"b", 1}, {"c", 2}};
    s.elementi[5].selezione = 2;
    const TLettura tab{TTasto::tab, 0}, indietro{TTasto::tabIndietro, 0}, invio{TTasto::invio, 0},
        spazio{TTasto::spazio, ' '}, sette{TTasto::carattere, '7'}, sinistra{TTasto::sinistra, 0},
        destra{TTasto::destra, 0}, giu{TTasto::giu, 0}, su{TTasto::su, 0}, cancella{TTasto::cancella, 0};
    struct TCaso {
        int fuoco;  // index in s.elementi
        TLettura tasto;
        int fuocoDopo;
        bool posta = false;
        TTipoInput tipo = {};
        int id = 0;
        std::string testo = "";
        int indice = -1;
    };
    const TCaso casi[] = {
        {1, tab, 3},       // past the disabled entry
        {2, sette, 3},     // a focus on a disabled control moves on
        {-1, sette, -1},   // no focus takes no typing
        {-1, tab, 1},      // until Tab gives one
        {-1, invio, -1, true, TTipoInput::invio},  // Enter: the default button
        {1, spazio, 1, true, TTipoInput::digita, 2000, " "},
        {1, cancella, 1, true, TTipoInput::digita, 2000, "\b"},
        {4, cancella, 4},  // Backspace on a button does nothing
        {4, sette, 4},     // a character on a button does nothing
        {4, invio, 4, true, TTipoInput::clic, 2},
        {6, spazio, 6, true, TTipoInput::clic, 10},
        {5, spazio, 5, true, TTipoInput::scegli, 2120, "", 0},  // Space on a list starts it again
        {5, destra, 5, true, TTipoInput::scegli, 2120, "", 2},  // Right on the last entry stays
        {5, sinistra, 5, true, TTipoInput::scegli, 2120, "", 1},
        {3, destra, 4},    // off a list Right moves
        {5, tab, 6}, {6, tab, 10}, {7, tab, 10}, {10, tab, 1},  // none checked: the group's first
        {1, indietro, 10}, {10, indietro, 6},
        {6, giu, 7}, {8, giu, 6}, {6, su, 8}, {10, giu, 9}, {9, su, 10},  // round, past the disabled one
        {1, giu, 3},       // outside a group an arrow moves like Tab
    };
    for (const TCaso& c : casi) {
        SCOPED_TRACE("case " + std::to_string(&c - casi));
        int fuoco = c.fuoco;
        TInput input;
        const bool posta = InputPerTasto(s, c.tasto, fuoco, input);
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
    EXPECT_EQ(PrimoFuoco(s), 1);
}

// Keys read together are handed out one by one; a cut escape sequence waits.
TEST(LunghezzaTasto, SeparaITastiArrivatiInsieme)
{
    struct TCaso { std::string byte; std::vector<TTasto> tasti; };
    const TCaso casi[] = {
        {"\x1b[Z\r", {TTasto::tabIndietro, TTasto::invio}},
        {"\x1b[A \x1b[B\x1b[B", {TTasto::su, TTasto::spazio, TTasto::giu, TTasto::giu}},
        {"\x1bOB\t7", {TTasto::giu, TTasto::tab, TTasto::carattere}},
        {"\x1b[1;5C\r", {TTasto::nessuno, TTasto::invio}},  // Ctrl-Right, not ours: dropped whole
        {"\x1bx\r", {TTasto::nessuno, TTasto::invio}},      // Alt-x likewise
        {"\x1b[C\x08\x04\x01\x1b[5~", {TTasto::destra, TTasto::cancella, TTasto::fine, TTasto::nessuno, TTasto::nessuno}},
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
    EXPECT_EQ(DecodificaTasto(reinterpret_cast<const unsigned char*>("\x1b"), 1).tasto, TTasto::esc);
}

// Every dialog with the tablet's line, help and a notice fits 80 by 24 uncut;
// a message box over it shows whole and takes the focus.
TEST(Impagina, OgniDialogoSta80Per24)
{
    for (unsigned modello = 10040; modello <= 10046; ++modello) {
        SCOPED_TRACE(modello);
        TContenutoSchermo c;
        c.intestazione = "velmarin-host: Summa MicroGrid 3 on COM1 (simulated, /dev/pts/12)";
        c.stato = TFinestraDialogo(*ModelloDialogo(modello)).Fotografia();
        c.fuoco = static_cast<int>(c.stato.elementi.size()) - 1;
        c.aiuto = {TastiDelControllo(c.stato, c.fuoco), "Press tablet button 1 (Conferma) on the point; Esc gives up."};
        c.avviso = "Refused: East and North both need a number.";
        const TSchermata s = Impagina(c, 80, 24);
        ASSERT_LE(s.righe.size(), 24u);
        EXPECT_EQ(s.righe.front(), c.intestazione);
        EXPECT_EQ(s.righe.back(), " " + c.avviso);
        std::string tutto;
        for (const std::string& r : s.righe) {
            EXPECT_LE(CelleTesto(r).size(), 80u) << r;
            tutto += r + "\n";
        }
        EXPECT_EQ(tutto.find("more lines"), std::string::npos) << tutto;
        EXPECT_NE(tutto.find("+=" + (c.stato.titolo.empty() ? "" : " " + c.stato.titolo)), std::string::npos) << tutto;
        EXPECT_GE(s.rigaFuoco, 1);
        TContenutoSchermo primo = c;  // the first control focused: the caret stands in it if an entry
        primo.fuoco = PrimoFuoco(c.stato);
        const TSchermata p = Impagina(primo, 80, 24);
        const bool entrata =  // none takes it in the dialog that only waits for a press
            primo.fuoco >= 0 && c.stato.elementi[static_cast<std::size_t>(primo.fuoco)].tipo == TTipoElemento::edit;
        EXPECT_EQ(p.rigaCursore, entrata ? p.rigaFuoco : -1);

        c.riquadro = {"+= Scelta Tavoletta =============================================+",
                      "| Modificando alcuni parametri si annulla la calibrazione ! |",
                      "+----------------------------------------------------------+"};
        const TSchermata b = Impagina(c, 80, 24);
        ASSERT_EQ(b.righe.size(), s.righe.size());
        std::string sopra;
        for (const std::string& r : b.righe) sopra += r + "\n";
        EXPECT_NE(sopra.find(c.riquadro[1]), std::string::npos) << sopra;
        EXPECT_EQ(b.rigaFuoco, -1);
    }
}

// A dialog cut to a short screen scrolls to its focus and fills every row,
// with a marker on each side that is cut.
TEST(Impagina, UnDialogoTagliatoScorreAlFuocoERiempieLoSchermo)
{
    TContenutoSchermo c;
    c.intestazione = "velmarin-host";
    c.stato = TFinestraDialogo(*ModelloDialogo(10043)).Fotografia();
    const int ultimo = static_cast<int>(c.stato.elementi.size()) - 1;
    for (const auto& [fuoco, sopra, sotto] : {std::tuple{PrimoFuoco(c.stato), false, true},
                                              std::tuple{ultimo / 2, true, true}, std::tuple{ultimo, true, false}}) {
        SCOPED_TRACE(fuoco);
        c.fuoco = fuoco;
        const TSchermata s = Impagina(c, 80, 12);
        std::string tutto;
        for (const std::string& r : s.righe) tutto += r + "\n";
        EXPECT_EQ(s.righe.size(), 12u) << tutto;
        EXPECT_EQ(tutto.find("more lines above") != std::string::npos, sopra) << tutto;
        EXPECT_EQ(tutto.find("more lines below") != std::string::npos, sotto) << tutto;
        EXPECT_GE(s.rigaFuoco, 1) << tutto;
    }
}

// A text goes to a new line at a space only where the next word would not fit.
TEST(Impagina, UnTestoVaACapoSoloDoveNonSta)
{
    EXPECT_EQ(APiuRighe("abc de", 6), (std::vector<std::string>{"abc de"}));
    EXPECT_EQ(APiuRighe("abc def gh", 6), (std::vector<std::string>{"abc", "def gh"}));
}

TEST(TestoReale, LeCifreCheServono)
{
    const std::pair<double, const char*> casi[] = {{1.23e-5, "1.23e-05"}, {-0.0, "0"},          {127.5, "127.5"},
                                                   {-40, "-40"},         {0.1 + 0.2, "0.3"},     {1234567.125, "1234567.125"},
                                                   {1e300, "1e+300"},    {-2.5e-300, "-2.5e-300"}};
    for (const auto& c : casi) EXPECT_EQ(TestoReale(c.first), c.second) << c.first;
}

// Changes from the reader thread are noted there and drawn once by the loop.

TEST(BackendTerminale, DisegnaUnaVoltaDalCicloDelDialogo)
{
    TTerminale terminale;
    if (terminale.Attivo()) GTEST_SKIP() << "run on a terminal: this test wants none";
    TBackendTerminale backend(terminale);
    TFinestraDialogo prova(*ModelloDialogo(10046));
    backend.Aperto(prova);
    const int dopoApertura = backend.Disegni();
    std::thread lettore([&] {
        for (int i = 0; i < 1000; ++i) backend.Cambiato(prova);
    });
    lettore.join();
    EXPECT_EQ(backend.Disegni(), dopoApertura);
    for (int i = 0; i < 100 && backend.Disegni() == dopoApertura; ++i) backend.Inattivo(prova);
    EXPECT_EQ(backend.Disegni(), dopoApertura + 1);
    for (int i = 0; i < 3; ++i) backend.Inattivo(prova);
    EXPECT_EQ(backend.Disegni(), dopoApertura + 1) << "nothing changed: nothing drawn";
    backend.Chiuso(prova);
}

// The set-up printed after the selection warns when no button confirms.
TEST(DescriviImpostazione, AvvisaSenzaConferma)
{
    TDataDigit d = RecordPredefinito(5, 3);
    EXPECT_EQ(DescriviImpostazione(d).find("warning"), std::string::npos);
    d.funzBott[0] = funzNessuna;
    d.funzBott[4] = funzConferma;  // beyond the four buttons: reached by no press
    d.numBottoni = 4;
    const std::string t = DescriviImpostazione(d);
    EXPECT_NE(t.find("warning: no button is Conferma"), std::string::npos) << t;
}

}  // namespace
