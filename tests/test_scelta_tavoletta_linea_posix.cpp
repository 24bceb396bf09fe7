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

struct TCasoInit {
    const char* nome;
    std::function<void(TBackendScript&)> azioni;
    std::size_t inizializzazioni;
};

std::ostream& operator<<(std::ostream& os, const TCasoInit& c) { return os << c.nome; }

// Model 1 with limits on a simulated tablet, no reset: each initialisation
// sends "@" and the resolution. Without parity, which a pseudo-terminal
// refuses once it has been reopened.
class InitTest : public TProvaDialoghi, public ::testing::WithParamInterface<TCasoInit> {
protected:
    CDigit digit;
    TTavolettaPty sim{1};
    TDataDigit dati{1, static_cast<std::int16_t>(sim.Porta()), 9600, 'N', 8, 1, 1, 2, 4, {1, 2, 4, 8}, true, 0, 0,
                    1000, 1000};
};

TEST_P(InitTest, InitialisesOnlyWhenSomethingThatMattersChanged)
{
    ASSERT_TRUE(sim.Valida());
    GetParam().azioni(script);
    script.Invio();
    EXPECT_EQ(configDigit(nullptr, &digit, dati), IDOK);
    sim.AttendiQuiete(300ms, 3s);
    const std::string b = sim.ByteRicevuti();
    EXPECT_EQ(static_cast<std::size_t>(std::count(b.begin(), b.end(), '@')), GetParam().inizializzazioni) << b;
    EXPECT_THAT(utente.Messaggi(), IsEmpty()) << "every initialisation opened the port";
}

INSTANTIATE_TEST_SUITE_P(
    Casi, InitTest,
    ::testing::Values(TCasoInit{"ProvaDueVolte", [](TBackendScript& s) { s.Clic(2152); s.Esc(); s.Clic(2152); s.Esc(); }, 1},
                      TCasoInit{"LimitiDueVolte", [](TBackendScript& s) { s.Clic(2151); s.Esc(); s.Clic(2151); s.Esc(); }, 2},
                      TCasoInit{"BottoniMai", [](TBackendScript& s) { s.Clic(2150); s.Esc(); }, 0},
                      TCasoInit{"VelocitaCambiata",
                                [](TBackendScript& s) { s.Clic(2152); s.Esc(); s.Clic(2127); s.Clic(2152); s.Esc(); }, 2},
                      TCasoInit{"ResetCambiato",
                                [](TBackendScript& s) { s.Clic(2152); s.Esc(); s.Clic(2142); s.Clic(2152); s.Esc(); }, 2}),
    [](const ::testing::TestParamInfo<TCasoInit>& i) { return std::string(i.param.nome); });

}  // namespace
