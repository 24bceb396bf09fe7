// Init and its boxes, the destructor's reset, the one shared target, the delivery gate.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <tuple>

#include "link/raccolta_interrotta.h"
#include "platform/toldeko/gwnd.h"
#include "reports/inquadratura.h"
#include "velmarin.h"
#include "sim/tavoletta_pty.h"
#include "support/digit_accesso.h"
#include "support/prova_su_linea.h"
#include "support/suona.h"

namespace {

using namespace std::chrono_literals;
using A = CDigitTestAccess;
constexpr int portaProva = 4;
GWnd proprietaria(reinterpret_cast<HWND>(0x1234));  // the boxes must be owned by its handle

class ConnessioneTest : public TProvaSuLinea {
protected:
    ConnessioneTest() : TProvaSuLinea(portaProva) {}
    void SetUp() override { ASSERT_TRUE(sim.Valida()); }
    TDataDigit Dati(int tipo, int reset = 2) const { return TProvaSuLinea::Dati(tipo, reset); }
    TTavolettaPty sim{portaProva};
};

TEST_F(ConnessioneTest, InitOnAPortThatDoesNotExistShowsTheBoxAndARetryTakesTheNewSettings)
{
    CDigit d(Dati(8)), altro(Dati(1));
    TRegistratore reg;
    EXPECT_EQ(d.SetCommNotificationTo(&reg), 0) << "no record yet";
    EXPECT_EQ(altro.GetCommNotification(), &reg) << "one target for all objects";
    altro.StopCommNotification();
    EXPECT_EQ(d.GetCommNotification(), nullptr);

    for (const char* percorso : {"/nonexistent/velmarin-tty", "/dev/null"}) {  // nothing there; no terminal
        SCOPED_TRACE(percorso);
        IODevMapPort(portaProva, percorso);
        const std::size_t prima = ui.Messaggi().size();
        const HCURSOR cursore = CursoreCorrente();
        EXPECT_FALSE(d.Init(&proprietaria));
        EXPECT_EQ(CursoreCorrente(), cursore);
        EXPECT_EQ(A::HPorta(d), 0);
        ASSERT_EQ(ui.Messaggi().size(), prima + 1) << "the record was made: only the open fails";
        EXPECT_EQ(ui.Messaggi().back(), (TMessaggio{proprietaria.handle(), "ERRORE\nPorta non configurata", "Porta Seriale",
                                                     MB_OK | MB_ICONEXCLAMATION}));
        EXPECT_EQ(ui.Beep(), std::vector<unsigned>(prima + 1, MB_ICONEXCLAMATION));
        EXPECT_EQ(d.SetCommNotificationTo(&reg), 1) << "a record exists, though no port";
        d.StopCommNotification();
    }

    // A retry once the port is there takes the new settings, not the old record's.
    IODevMapPort(portaProva, sim.PercorsoSlave().c_str());
    TDataDigit dati = Dati(5);  // two stop bits
    dati.velocita = 19200;
    d.SetDataDigit(dati);
    ASSERT_TRUE(d.Init(nullptr));
    termios t{};
    ASSERT_TRUE(sim.LeggiImpostazioni(t));
    EXPECT_EQ(cfgetospeed(&t), B19200);
    EXPECT_NE(t.c_cflag & CSTOPB, 0u);
    // and the reader reckons its pause from them, from its first read on
    EXPECT_EQ(std::make_pair(guardiaRaccolta.velocita, guardiaRaccolta.bitCarattere), std::make_pair(19200u, 11u))
        << "7E2: start, 7 data, parity, 2 stop";
}

// A refused open, and a host's check of the port, say why and leave errno as
// the failure set it; a port this process has connected no longer passes.
TEST_F(ConnessioneTest, ARefusedOpenSaysWhyAndKeepsErrno)
{
    const std::string pty = sim.PercorsoSlave();
    const int tenuto = open(pty.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(tenuto, 0);
    struct TCaso {
        std::string dispositivo;
        int bitDati;
        std::string perche;
        int codice;
    };
    const TCaso casi[] = {
        {"/nonexistent/velmarin-tty", 8, "COM4 (/nonexistent/velmarin-tty): cannot be opened: No such file or directory", ENOENT},
        {"/dev/null", 8, "COM4 (/dev/null): not a serial line", ENOTTY},
        {pty, 8, "COM4 (" + pty + "): another process holds it (flock)", EWOULDBLOCK},
        {"/dev/ptmx", 8, "COM4 (/dev/ptmx): not a serial line (a pseudo-terminal's master side, or a console)", ENOTTY},
        {pty, 9, "COM4 (" + pty + "): the line refused 9600 baud, 9 data bits, parity odd, 1 stop bit: a port takes 5 to 8 data bits", EINVAL},
    };
    for (const TCaso& c : casi) {
        SCOPED_TRACE(c.perche);
        IODevMapPort(portaProva, c.dispositivo.c_str());
        ASSERT_EQ(flock(tenuto, c.codice == EWOULDBLOCK ? LOCK_EX : LOCK_UN), 0);
        TDataDigit dati = Dati(1);
        dati.bitDati = c.bitDati;
        if (c.codice != EINVAL) {  // the line's settings are the connection's, not the port's
            errno = 0;
            EXPECT_EQ(velmarin_check_port(portaProva), 0);
            EXPECT_EQ(errno, c.codice);
            EXPECT_EQ(std::string(velmarin_last_error()).substr(0, c.perche.size()), c.perche);
        }
        velmarin_tablet* t = velmarin_open(&dati);
        errno = 0;
        EXPECT_EQ(velmarin_connect(t), 0);
        EXPECT_EQ(errno, c.codice);
        EXPECT_EQ(std::string(velmarin_last_error()).substr(0, c.perche.size()), c.perche);
        velmarin_close(t);
    }
    close(tenuto);
    EXPECT_EQ(ui.Messaggi().size(), std::size(casi)) << "each with the user's box too";

    EXPECT_EQ(velmarin_check_port(portaProva), 1) << velmarin_last_error();
    const TDataDigit dati = Dati(1);
    velmarin_tablet* t = velmarin_open(&dati);
    ASSERT_EQ(velmarin_connect(t), 1) << "the check let the port go";
    EXPECT_EQ(velmarin_check_port(portaProva), 0);
    EXPECT_STREQ(velmarin_last_error(), "COM4: a connection of this process is open on it");
    velmarin_close(t);
}

// A listener set before the connection is refused, kept, and hears it.
TEST_F(ConnessioneTest, AListenerSetBeforeConnectHearsTheConnection)
{
    std::atomic<int> mosse{0};
    const TDataDigit dati = Dati(5);
    velmarin_tablet* t = velmarin_open(&dati);
    const auto Mossa = [](void* u, std::int32_t, std::int32_t) { ++*static_cast<std::atomic<int>*>(u); };
    EXPECT_EQ(velmarin_listen(t, Mossa, nullptr, &mosse), 0);
    EXPECT_STREQ(velmarin_last_error(), "velmarin_listen: no port of this tablet is open; the functions hear a later connection");
    ASSERT_EQ(velmarin_connect(t), 1);
    EXPECT_TRUE(RipetiFinche([&] { return mosse > 0; }, [&] { sim.InviaStato(5, {321, 654, 0}, 20); }));
    EXPECT_EQ(velmarin_line_state(t), VELMARIN_LINE_OPEN);
    // A connect that fails closes the port it had: its line is closed.
    IODevMapPort(portaProva, "/nonexistent/velmarin-tty");
    EXPECT_EQ(velmarin_connect(t), 0);
    EXPECT_EQ(velmarin_line_state(t), VELMARIN_LINE_CLOSED);
    velmarin_close(t);
}

// Model 4 is polled: a target, even null, sends the first poll, each answer
// the next; a hold stops the chain and a new target starts it again.
TEST_F(ConnessioneTest, Model4PollChainStartsWithATargetAndStopsOnHold)
{
    const auto PollDopo = [&](int quanti) { return AttendiFinche([&] { return sim.PollRicevuti() >= quanti; }); };
    CDigit d(Dati(4, 1));
    ASSERT_TRUE(d.Init(nullptr));
    d.SendInitString();
    sim.RispondiAlPoll({100, 200, 0});
    EXPECT_EQ(d.SetCommNotificationTo(nullptr), 1);
    ASSERT_TRUE(PollDopo(10)) << "the chain runs by itself";
    d.StopCommNotification();
    EXPECT_TRUE(sim.AttendiQuiete(300ms, 2s)) << "no poll goes out while held";
    const int fermo = sim.PollRicevuti();

    TRegistratore reg;
    sim.RispondiAlPoll({300, 400, 0});
    ASSERT_EQ(d.SetCommNotificationTo(&reg), 1);
    EXPECT_TRUE(PollDopo(fermo + 10)) << "a new target restarts the chain";
    d.StopCommNotification();
    ASSERT_FALSE(reg.Notifiche().empty());
    EXPECT_EQ(reg.Notifiche().front(), Mossa(300, 400));
}

// Init again reconnects without a reset and drops the target; the destructor
// resets only while delivery is on, and closes and frees without a box.
TEST_F(ConnessioneTest, AResetGoesOutFromTheDestructorOnlyWhileDeliveryIsOn)
{
    for (bool consegna : {false, true}) {
        {
            std::optional<TTickFinto> veloce(std::in_place);
            CDigit d(Dati(8, 2));
            ASSERT_TRUE(d.Init(nullptr));
            const std::intptr_t primo = A::HPorta(d);
            TRegistratore reg;
            d.SetCommNotificationTo(&reg);
            ASSERT_TRUE(d.Init(nullptr));
            EXPECT_NE(A::HPorta(d), primo);
            EXPECT_EQ(A::HPorta(d), IODevHandleAperto());
            EXPECT_EQ(d.GetCommNotification(), nullptr);
            EXPECT_TRUE(sim.AttendiQuiete(50ms, 2s));
            EXPECT_EQ(sim.ByteRicevuti(), "") << "no reset command on a reconnection";

            d.SendInitString();
            ASSERT_TRUE(sim.AttendiByte(3, 2s));
            EXPECT_TRUE(sim.AttendiQuiete(50ms, 2s));
            sim.Dimentica();
            if (!consegna) d.StopCommNotification();
            veloce.reset();  // the reset's wait in real time, or the close would drop what is on its way
        }
        EXPECT_TRUE(sim.AttendiQuiete(50ms, 2s));
        EXPECT_EQ(sim.ByteRicevuti(), consegna ? ":Z\r" : "");
        EXPECT_TRUE(devInfo == nullptr && IODevHandleAperto() == 0);
        sim.Dimentica();
    }
    EXPECT_TRUE(ui.Messaggi().empty());
}

// With no descriptor left for the reader's wake-up, the reader ends at its
// start with its box; the next Init, with descriptors again, serves.
TEST_F(ConnessioneTest, AReaderWithoutItsWakeUpEndsWithItsBox)
{
    {  // UBSan checks a type's first virtual call through a pipe: made here, with descriptors
        CDigit caldo(Dati(8));
        ASSERT_TRUE(caldo.Init(nullptr));
    }
    CDigit d(Dati(8));
    rlimit limite{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limite), 0);
    const int libero = dup(0);  // the lowest free descriptor: the port's
    close(libero);
    rlimit stretto = limite;
    stretto.rlim_cur = static_cast<rlim_t>(libero) + 1;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &stretto), 0);
    const bool aperta = d.Init(nullptr);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limite), 0);
    EXPECT_TRUE(aperta);
    ASSERT_TRUE(AttendiFinche([&] { return !ui.Messaggi().empty(); }));
    EXPECT_EQ(ui.Messaggi()[0], (TMessaggio{nullptr, "Failed to create event for thread!", "IODev Error!", MB_OK | MB_ICONEXCLAMATION}));
    ASSERT_TRUE(d.Init(nullptr));
    TRegistratore reg;
    ASSERT_TRUE(Collega(d, &reg));
    EXPECT_TRUE(SuonaFinoA(sim, 8, {5, 6, 0}, 15, reg, 1));
    d.StopCommNotification();
    EXPECT_EQ(ui.Messaggi().size(), 1u);
}

// A second object is refused the running connection's port, with the box,
// and then leaves it alone: no bytes, no format, no target taken or dropped.
TEST_F(ConnessioneTest, ASecondObjectIsRefusedAndLeavesTheRunningConnectionAlone)
{
    CDigit primo(Dati(5, 1)), secondo(Dati(1, 2));
    TRegistratore reg, altro;
    ASSERT_TRUE(Collega(primo, &reg));
    ASSERT_TRUE(sim.AttendiQuiete(50ms, 2s));
    sim.Dimentica();

    EXPECT_FALSE(secondo.Init(&proprietaria));
    ASSERT_EQ(ui.Messaggi().size(), 1u);
    EXPECT_EQ(ui.Messaggi()[0].testo, "ERRORE\nPorta non configurata");
    EXPECT_EQ(A::HPorta(secondo), 0);
    EXPECT_EQ(std::string(velmarin_last_error()).rfind("the connection belongs to another tablet object", 0), 0u);
    const std::uint32_t prima = tick.Adesso();
    secondo.SendInitString();
    secondo.SendResetSeScelto();
    EXPECT_GE(tick.Adesso() - prima, 2 * 1000u + 100u) << "the waits of both sequences run";
    EXPECT_EQ(secondo.SetCommNotificationTo(&altro), 0);
    secondo.StopCommNotification();
    EXPECT_EQ(std::make_tuple(primo.GetCommNotification(), int(Leggi(digitLink.tipoReport)), int(Leggi(digitLink.lenReport)),
                              IODevHandleAperto()),
              std::make_tuple(static_cast<CDigitNtfy*>(&reg), 5, 20, A::HPorta(primo)));
    EXPECT_TRUE(SuonaFinoA(sim, 5, {321, 654, 0}, 20, reg, 1));
    EXPECT_EQ(reg.Notifiche(), std::vector<TNotifica>{Mossa(321, 654)});
    EXPECT_TRUE(altro.Notifiche().empty());
    EXPECT_EQ(sim.ByteRicevuti(), "") << "nothing of the second object reached the line";
    primo.StopCommNotification();
}

struct TLento : CDigitNtfy {
    std::atomic<bool> iniziata{false}, finita{false};
    void NotifyMove(std::int32_t, std::int32_t) override
    {
        iniziata = true;
        std::this_thread::sleep_for(300ms);
        finita = true;
    }
    void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override {}
};

// A stop, the C interface's stop and a close each wait for a notification under way.
TEST_F(ConnessioneTest, StopAndCloseWaitForANotificationUnderWay)
{
    const auto Mossa = [](void* u, std::int32_t x, std::int32_t y) { static_cast<TLento*>(u)->NotifyMove(x, y); };
    for (const std::string modo : {"stop", "velmarin_stop", "close"}) {
        const TDataDigit dati = Dati(8, 1);
        CDigit d(dati);
        velmarin_tablet* c = modo == "velmarin_stop" ? velmarin_open(&dati) : nullptr;
        TLento lento;
        ASSERT_TRUE(c ? velmarin_connect(c) && velmarin_listen(c, Mossa, nullptr, &lento) : Collega(d, &lento));
        int i = 0;
        ASSERT_TRUE(RipetiFinche([&] { return lento.iniziata.load(); },
                                 [&] { sim.InviaStato(8, {50 + i++, 60, 0}, 15); }));
        if (c)
            velmarin_stop(c);
        else if (modo == "close")
            EXPECT_EQ(IODevClose(), 1);
        else
            d.StopCommNotification();
        EXPECT_TRUE(lento.finita) << modo << " returned during the notification";
        velmarin_close(c);
        d.StopCommNotification();
    }
}

// A host drops its own tablet inside a press (~CDigit or velmarin_close): the
// call returns, nothing more is delivered, and the port opens again at once.

TEST_F(ConnessioneTest, AHostDropsItsOwnTabletFromInsideANotification)
{
    struct TProprietario : CDigitNtfy {
        std::unique_ptr<CDigit> digit;
        velmarin_tablet* tavoletta = nullptr;
        std::atomic<int> pressioni{0};
        void NotifyMove(std::int32_t, std::int32_t) override {}
        void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override { Lascia(); }
        void Lascia()
        {
            ++pressioni;
            if (digit) digit.reset();
            else velmarin_close(tavoletta);
        }
        static void Bottone(void* io, std::int32_t, std::int32_t, std::int32_t)
        {
            static_cast<TProprietario*>(io)->Lascia();
        }
    };
    for (bool c : {false, true}) {
        SCOPED_TRACE(c ? "velmarin_close" : "~CDigit");
        TProprietario host;
        const TDataDigit dati = Dati(8, 1);
        if (c) {
            host.tavoletta = velmarin_open(&dati);
            ASSERT_EQ(velmarin_connect(host.tavoletta), 1);
            ASSERT_EQ(velmarin_listen(host.tavoletta, nullptr, &TProprietario::Bottone, &host), 1);
        } else {
            host.digit = std::make_unique<CDigit>(dati);
            ASSERT_TRUE(Collega(*host.digit, &host));
        }
        ASSERT_TRUE(RipetiFinche([&] { return host.pressioni > 0; }, [&] { sim.InviaStato(8, {70, 80, 1}, 15); }));
        EXPECT_EQ(Leggi(digitLink.ntfy), nullptr);
        for (int i = 0; i < 3; ++i) {
            sim.InviaStato(8, {71 + i, 80, 0}, 15);
            sim.InviaStato(8, {71 + i, 80, 1}, 15);
        }
        EXPECT_TRUE(ui.Messaggi().empty());
        CDigit dopo(Dati(8, 1));
        TRegistratore reg;
        ASSERT_TRUE(Collega(dopo, &reg));
        EXPECT_EQ(host.pressioni, 1);
        EXPECT_TRUE(SuonaFinoA(sim, 8, {90, 91, 1}, 15, reg, 1));
        dopo.StopCommNotification();
    }
}
}  // namespace
