// Every model's command sequences on the line, with their waits; the wait on the 32-bit tick.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "sim/tavoletta_pty.h"
#include "support/digit_accesso.h"
#include "support/prova_su_linea.h"

namespace {

using namespace std::chrono_literals;
constexpr int portaProva = 2;

// Ritarda on a scripted counter, then its highest value for ever (a wrong rule ends too).
std::vector<std::uint32_t> copione;
std::atomic<std::size_t> letture{0};

std::uint32_t LeggiCopione()
{
    const std::size_t i = letture.fetch_add(1);
    return i < copione.size() ? copione[i] : 0xFFFFFFFFu;
}

TEST(RitardaTest, ReadsTheCounterUntilTheWaitIsOver)
{
    const struct {
        const char* caso;
        std::int32_t ms;
        std::vector<std::uint32_t> tick;
        std::size_t lettureAttese;
    } casi[] = {
        {"zero", 0, {700, 700}, 2},
        {"plain", 5, {100, 101, 104, 105}, 4},
        {"standstill", 10, {500, 500, 505, 509, 510}, 5},
        // The counter wraps during the wait: it starts again at 5 and lasts to 105.
        {"wrap restarts", 100, {0xFFFFFF00u, 0xFFFFFF50u, 5, 90, 104, 105}, 6},
        // Begun so near the wrap that start + ms wraps: over at the next read.
        {"sum wraps", 100, {0xFFFFFFF0u, 0xFFFFFFF1u}, 2},
    };
    CDigit d;
    ImpostaSorgenteTick(&LeggiCopione);
    for (const auto& a : casi) {
        copione = a.tick;
        letture = 0;
        CDigitTestAccess::Ritarda(d, a.ms);
        EXPECT_EQ(letture.load(), a.lettureAttese) << a.caso;
    }
    ImpostaSorgenteTick(nullptr);
}

// The sequences on the line. Each model's pieces, written out byte for byte.

struct TPezzo {
    std::string byte;
    std::vector<int> attese;  // the waits of the piece, in ms
};

TPezzo Reset(int tipo)
{
    switch (tipo) {
    case 1: case 2: case 3: case 9: return {std::string(1, '\0'), {1000}};
    case 5: return {"\x1B" "Z", {1000}};
    case 6: return {"R;", {100}};
    case 7: return {"\x1B" "%VR\r", {1000}};
    case 8: return {":Z\r", {1000}};
    default: return {};
    }
}

TPezzo Avvio(int tipo, int ris)
{
    auto scegli = [&](const char* a, const char* b, const char* c) {
        return std::string(ris == 1 ? a : ris == 2 ? b : ris == 3 ? c : "");
    };
    const std::string summa = scegli("e", "h", "j");
    switch (tipo) {
    case 1: case 2: case 9: return {"@" + summa, {100}};
    case 3: return {"O" + summa, {100}};
    case 5: return {"\x1B" "MB" "\x1B" "M0" "\x1B" "C" + scegli("0", "2", "4"), {2000}};
    case 6:
        return {"I;" +
                    scegli("FLAG;KDOWN;KALPHA;XDEL ,;YDEL ,;SDEL M;MM;ROUND;DEC;INT;\r",
                           "FLAG;KDOWN;KALPHA;XDEL ,;YDEL ,;SDEL M;MM;FULL;DEC;INT;\r", "") +
                    "MC;H;V;",
                {100, 100, 500}};
    case 7: return {"\x1B" "%R\r", {1000}};
    default: return {};
    }
}

struct TSequenza {
    int tipo, reset, risoluzione;
    std::int32_t lenReport;  // -1: stays as it was
};
void PrintTo(const TSequenza& p, std::ostream* os) { *os << "tipo " << p.tipo << " reset " << p.reset << " risoluzione " << p.risoluzione; }

class SequenzaTest : public ::testing::TestWithParam<TSequenza> {
protected:
    void TearDown() override { AzzeraDigitLink(digitLink); }
};

TEST_P(SequenzaTest, BytesAndWaitsOnTheLine)
{
    const TSequenza& s = GetParam();
    TUtenteFinto ui;
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    TDataDigit dati = DatiModello(s.tipo, portaProva, s.reset);
    dati.risoluzione = static_cast<std::int16_t>(s.risoluzione);
    // The bytes expected, and the counter reads their waits cost on the injected tick: ms + 1 each.
    std::string attesi;
    std::uint32_t costo = s.tipo == 6 ? 1001 : 0;  // after the lines, whatever the reset
    for (const TPezzo& p : {s.reset != 1 ? Reset(s.tipo) : TPezzo{}, Avvio(s.tipo, s.risoluzione)}) {
        attesi += p.byte;
        for (int ms : p.attese) costo += static_cast<std::uint32_t>(ms) + 1;
    }
    {
        TTickFinto tick;  // also speeds up the destructor's purge and reset
        CDigit d(dati);
        ASSERT_TRUE(d.Init(nullptr));
        Scrivi(digitLink.lenReport, 77);  // to see whether the sequence sets it
        const std::uint32_t base = tick.Adesso();
        const HCURSOR prima = CursoreCorrente();
        d.SendInitString();
        EXPECT_EQ(CursoreCorrente(), prima) << "cursor restored";
        EXPECT_EQ(tick.Adesso() - base, costo) << "the waits of the sequence";
        EXPECT_TRUE(sim.AttendiByte(attesi.size(), 2s));
        EXPECT_TRUE(sim.AttendiQuiete(50ms, 2s));
        EXPECT_EQ(sim.ByteRicevuti(), attesi);
        EXPECT_EQ(std::make_pair(int(Leggi(digitLink.tipoReport)), int(Leggi(digitLink.lenReport))),
                  std::make_pair(int(static_cast<std::int8_t>(s.tipo & 0xFF)), s.lenReport < 0 ? 77 : s.lenReport));
        d.StopCommNotification();  // no reset from the destructor
    }
    EXPECT_TRUE(ui.Messaggi().empty());
}

std::vector<TSequenza> TutteLeSequenze()
{
    static const std::int32_t len[] = {-1, 15, 40, 40, 40, 20, 40, 40, 15};
    std::vector<TSequenza> v;
    for (int tipo = 1; tipo <= 8; ++tipo)
        for (int reset : {1, 2})
            for (int ris = 1; ris <= 3; ++ris) v.push_back({tipo, reset, ris, len[tipo]});
    return v;
}

INSTANTIATE_TEST_SUITE_P(Modelli, SequenzaTest, ::testing::ValuesIn(TutteLeSequenze()));

// The edges: no model, model 9 with model 1's commands, a resolution that
// names nothing, a reset of 0 from a record no dialog filled, a model number
// beyond every table.
INSTANTIATE_TEST_SUITE_P(Bordi, SequenzaTest,
                         ::testing::Values(TSequenza{0, 2, 1, -1}, TSequenza{9, 2, 3, 15},
                                           TSequenza{1, 2, 0, 15}, TSequenza{5, 1, 0, 20},
                                           TSequenza{6, 2, 0, 40}, TSequenza{8, 0, 1, 15},
                                           TSequenza{3, 0, 4, 40}, TSequenza{12, 2, 1, -1}));

// On the real tick the bytes either side of the reset's 1000 ms wait stand well apart.
TEST(CompletaTest, WaitsHappenWhereTheyStand)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    TDataDigit dati = DatiModello(5, portaProva, 2);
    dati.risoluzione = 2;
    std::optional<TTickFinto> veloce;  // for the destructor, once the sequence is measured
    CDigit d(dati);
    ASSERT_TRUE(d.Init(nullptr));
    d.SendInitString();
    const std::string prima = "\x1B" "Z", dopo = "\x1B" "MB" "\x1B" "M0" "\x1B" "C2";
    ASSERT_TRUE(sim.AttendiByte(prima.size() + dopo.size(), 2s));
    ASSERT_EQ(sim.ByteRicevuti(), prima + dopo);
    const std::vector<TByteRicevuto> r = sim.Ricevuti();
    EXPECT_GE(r[prima.size()].arrivo - r[prima.size() - 1].arrivo, 500ms);
    veloce.emplace();
}

}  // namespace
