// configDigit with a simulated tablet on a pseudo-terminal behind the port:
// when the dialog initialises the tablet.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>

#include "digit.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_dialoghi.h"

namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;

// Model 1 on a simulated tablet behind COM1, no reset: each initialisation
// sends "@" and the resolution. Without parity, which a pseudo-terminal
// refuses once it has been reopened.
class SceltaLineaTest : public TProvaDialoghi {
protected:
    SceltaLineaTest() { dati.porta = static_cast<std::int16_t>(sim.Porta()); }
    std::size_t Inizializzazioni() const
    {
        sim.AttendiQuiete(300ms, 3s);
        const std::string b = sim.ByteRicevuti();
        return static_cast<std::size_t>(std::count(b.begin(), b.end(), '@'));
    }
    CDigit digit;
    TTavolettaPty sim{1};
    TDataDigit dati{1, 1, 9600, 'N', 8, 1, 1, 2, 4, {1, 2, 4, 8}, false, 0, 0, 0, 0};
};

struct TCasoInit {
    const char* nome;
    std::function<void(TBackendScript&)> azioni;
    std::size_t inizializzazioni;
};

std::ostream& operator<<(std::ostream& os, const TCasoInit& c) { return os << c.nome; }

class InitTest : public SceltaLineaTest, public ::testing::WithParamInterface<TCasoInit> {};

TEST_P(InitTest, InitialisesOnlyWhenSomethingThatMattersChanged)
{
    ASSERT_TRUE(sim.Valida());
    dati.limitiDefiniti = true;
    dati.xMax = 1000;
    dati.yMax = 1000;
    GetParam().azioni(script);
    script.Invio();
    EXPECT_EQ(configDigit(nullptr, &digit, dati), IDOK);
    EXPECT_EQ(Inizializzazioni(), GetParam().inizializzazioni) << sim.ByteRicevuti();
    EXPECT_THAT(utente.Messaggi(), IsEmpty()) << "every initialisation opened the port";
}

INSTANTIATE_TEST_SUITE_P(
    Casi, InitTest,
    ::testing::Values(TCasoInit{"ProvaDueVolte", [](TBackendScript& s) { s.Clic(2152); s.Esc(); s.Clic(2152); s.Esc(); }, 1},
                      TCasoInit{"LimitiDueVolte", [](TBackendScript& s) { s.Clic(2151); s.Esc(); s.Clic(2151); s.Esc(); }, 2},
                      TCasoInit{"BottoniMai", [](TBackendScript& s) { s.Clic(2150); s.Esc(); }, 0},
                      TCasoInit{"VelocitaCambiata",
                                [](TBackendScript& s) { s.Clic(2152); s.Esc(); s.Clic(2127); s.Clic(2152); s.Esc(); }, 2}),
    [](const ::testing::TestParamInfo<TCasoInit>& i) { return std::string(i.param.nome); });

}  // namespace
