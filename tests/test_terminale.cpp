// The terminal front end without a terminal: the keys as a terminal sends
// them, what each key does to a dialog, and Backspace in an entry field.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "backend_terminale.h"
#include "digit.h"
#include "support/utente_finto.h"
#include "terminale.h"

namespace {

TEST(DecodificaTasto, NomeIlTasto)
{
    struct TCaso { std::string byte; TTasto tasto; char carattere; };
    const TCaso casi[] = {{"\x1b[A", TTasto::su, 0},          {"\x1bOB", TTasto::giu, 0},  // cursor and application keys
                          {"\x1b[C", TTasto::destra, 0},      {"\x1b[Z", TTasto::tabIndietro, 0},
                          {"\x1b", TTasto::esc, 0},           {"\x1b[5~", TTasto::nessuno, 0},
                          {"\x7f", TTasto::cancella, 0},      {"\x08", TTasto::cancella, 0},
                          {"\r", TTasto::invio, 0},           {"\t", TTasto::tab, 0},
                          {" ", TTasto::spazio, ' '},         {"-", TTasto::carattere, '-'},
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

struct TCasoInput {
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

class InputPerTastoTest : public ::testing::TestWithParam<TCasoInput> {};

TEST_P(InputPerTastoTest, AgisceSulControlloConIlFuoco)
{
    const TCasoInput& c = GetParam();
    int fuoco = c.fuoco;
    TInput input;
    const bool posta = InputPerTasto(Dialogo(), c.tasto, fuoco, input);
    EXPECT_EQ(fuoco, c.fuocoDopo);
    ASSERT_EQ(posta, c.posta);
    if (!posta) return;
    EXPECT_EQ(input.tipo, c.tipo);
    if (c.tipo != TTipoInput::invio && c.tipo != TTipoInput::esc) {
        EXPECT_EQ(input.id, c.id);
    }
    EXPECT_EQ(input.testo, c.testo);
    if (c.tipo == TTipoInput::scegli) {
        EXPECT_EQ(input.indice, c.indice);
    }
}

const TLettura tab{TTasto::tab, 0}, indietro{TTasto::tabIndietro, 0}, invio{TTasto::invio, 0},
    spazio{TTasto::spazio, ' '}, esc{TTasto::esc, 0}, canc{TTasto::cancella, 0}, sette{TTasto::carattere, '7'},
    sinistra{TTasto::sinistra, 0}, destra{TTasto::destra, 0};

INSTANTIATE_TEST_SUITE_P(
    Tasti, InputPerTastoTest,
    ::testing::Values(
        TCasoInput{"TabSaltaIlDisabilitato", 1, tab, 3, false, {}, 0, "", -1},
        TCasoInput{"IndietroDalPrimoVaAllUltimo", 1, indietro, 6, false, {}, 0, "", -1},
        TCasoInput{"FuocoSuUnDisabilitatoPassaOltre", 2, sette, 3, false, {}, 0, "", -1},
        TCasoInput{"SenzaFuocoIlPrimoControllo", -1, sette, 1, true, TTipoInput::digita, 2000, "7", -1},
        TCasoInput{"CarattereNellEntrata", 1, sette, 1, true, TTipoInput::digita, 2000, "7", -1},
        TCasoInput{"SpazioNellEntrata", 1, spazio, 1, true, TTipoInput::digita, 2000, " ", -1},
        TCasoInput{"CancNellEntrata", 1, canc, 1, true, TTipoInput::digita, 2000, "\b", -1},
        TCasoInput{"CarattereSuUnPulsanteNonFaNulla", 4, sette, 4, false, {}, 0, "", -1},
        TCasoInput{"InvioNellEntrataEIlPredefinito", 1, invio, 1, true, TTipoInput::invio, 0, "", -1},
        TCasoInput{"InvioSuUnPulsanteLoPreme", 4, invio, 4, true, TTipoInput::clic, 2, "", -1},
        TCasoInput{"SpazioSulRadio", 6, spazio, 6, true, TTipoInput::clic, 2122, "", -1},
        TCasoInput{"SpazioSullaListaRicomincia", 5, spazio, 5, true, TTipoInput::scegli, 2120, "", 0},
        TCasoInput{"DestraSullUltimaVoceResta", 5, destra, 5, true, TTipoInput::scegli, 2120, "", 2},
        TCasoInput{"SinistraSullaLista", 5, sinistra, 5, true, TTipoInput::scegli, 2120, "", 1},
        TCasoInput{"DestraFuoriListaSposta", 3, destra, 4, false, {}, 0, "", -1},
        TCasoInput{"EscAnnulla", 4, esc, 4, true, TTipoInput::esc, 0, "", -1}),
    [](const ::testing::TestParamInfo<TCasoInput>& i) { return std::string(i.param.nome); });

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
