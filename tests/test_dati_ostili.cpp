// A host's bad configuration record: models, ports and line settings outside
// their ranges, port paths that are no terminal. Each gets its safe behaviour: settings fall back where the
// line has a fallback, the open fails with its box where it has none, and an
// unknown model programs and decodes nothing.
#include <gtest/gtest.h>

#include <ostream>

#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>

#include "digit.h"
#include "link/iodev.h"
#include "reports/digit_link.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/registratore.h"

namespace {

using namespace std::chrono_literals;
constexpr int portaProva = 4;

class DatiOstiliTest : public TProvaSuLinea {
protected:
    DatiOstiliTest() : TProvaSuLinea(portaProva) {}
};

// A model number beyond the catalogue: the connection opens on the record's
// line settings, but no report format is known, so a tablet is never heard.
TEST_F(DatiOstiliTest, AnUnknownModelDecodesNothing)
{
    for (int tipo : {9, 10, 300, -5}) {
        TTavolettaPty sim(portaProva);
        ASSERT_TRUE(sim.Valida());
        TDataDigit dati = Dati(5);
        dati.tipo = static_cast<std::int16_t>(tipo);
        CDigit d(dati);
        ASSERT_TRUE(d.Init(nullptr)) << tipo;
        d.SendInitString();
        TRegistratore reg;
        d.SetCommNotificationTo(&reg);
        for (int modello : {1, 5, 8}) sim.InviaStato(modello, {10, 20, 1}, 40);
        std::this_thread::sleep_for(100ms);
        d.StopCommNotification();
        EXPECT_TRUE(reg.Notifiche().empty()) << tipo;
    }
}

// Ports with no device (number 0, a number whose low byte is a port with no
// device, a mapping cleared by an empty path) and paths that are no terminal
// (a file, a directory): the open fails with its box, and nothing else
// happens.
TEST_F(DatiOstiliTest, PortsWithoutADeviceOrATerminalFailTheOpenWithTheBox)
{
    const std::filesystem::path cartella = std::filesystem::temp_directory_path();
    const std::filesystem::path file = cartella / ("velmarin_non_porta_" + std::to_string(getpid()));
    std::fclose(std::fopen(file.c_str(), "w"));
    const std::pair<int, std::string> casi[] = {{0, ""}, {300, ""}, {portaProva, ""}, {portaProva, file}, {portaProva, cartella}};
    for (const auto& [porta, percorso] : casi) {
        ASSERT_EQ(IODevMapPort(portaProva, percorso.c_str()), 1);
        TDataDigit dati = Dati(5);
        dati.porta = static_cast<std::int16_t>(porta);
        const std::size_t box = ui.Messaggi().size();
        CDigit d(dati);
        EXPECT_FALSE(d.Init(nullptr)) << porta << " " << percorso;
        EXPECT_EQ(ui.Messaggi().size(), box + 1) << porta << " " << percorso;
        EXPECT_EQ(Leggi(digitLink.hPorta), 0) << porta << " " << percorso;
        IODevDestroy();
    }
    std::filesystem::remove(file);
}

struct TLineaStrana {
    std::int16_t velocita, bitDati, bitStop;
    bool apre;
    speed_t velocitaLetta;
    bool dueStop;
};
void PrintTo(const TLineaStrana& p, std::ostream* os) { *os << p.velocita << " baud, " << p.bitDati << " data bits, " << p.bitStop << " stop bits"; }

class LineaStranaTest : public DatiOstiliTest, public ::testing::WithParamInterface<TLineaStrana> {};

// A rate the line does not know falls back to 9600, a stop count other than
// 2 to one stop bit; a data size no port takes refuses the settings, and so
// the open.
TEST_P(LineaStranaTest, SettingsFallBackOrTheOpenFails)
{
    const TLineaStrana& c = GetParam();
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    TDataDigit dati = Dati(5);
    dati.velocita = c.velocita;
    dati.bitDati = c.bitDati;
    dati.bitStop = c.bitStop;
    CDigit d(dati);
    ASSERT_EQ(d.Init(nullptr), c.apre);
    if (!c.apre) return;
    termios t{};
    ASSERT_TRUE(sim.LeggiImpostazioni(t));
    EXPECT_EQ(cfgetispeed(&t), c.velocitaLetta);
    EXPECT_EQ((t.c_cflag & CSTOPB) != 0, c.dueStop);
}

INSTANTIATE_TEST_SUITE_P(Valori, LineaStranaTest,
                         ::testing::Values(TLineaStrana{-1, 7, 2, true, B9600, true},
                                           TLineaStrana{4800, 7, -2, true, B4800, false},
                                           TLineaStrana{9600, 9, 1, false, B0, false}));

}  // namespace
