// The serial layer on pseudo-terminals: the record and its mapping of the
// settings, the line settings on an open port, the results without a record,
// exclusivity, the stop on a quiet line, hold and resume of delivery.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "link/iodev.h"
#include "link/linea_posix.h"
#include "reports/digit_link.h"
#include "sim/tavoletta_pty.h"
#include "support/registratore.h"
#include "support/suona.h"

namespace {

using namespace std::chrono_literals;
constexpr int portaProva = 3;

void Impostazioni(TDigitLink& l, int porta, int velocita, char parita, int bitDati, int bitStop, int flusso)
{
    AzzeraDigitLink(l);
    l.porta = static_cast<std::uint8_t>(porta);
    l.velocita = velocita;
    l.parita = parita;
    l.bitDati = static_cast<std::uint8_t>(bitDati);
    l.bitStop = static_cast<std::uint8_t>(bitStop);
    l.controlloFlusso = static_cast<std::uint8_t>(flusso);
}

class IODevTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        IODevDestroy();
        AzzeraDigitLink(digitLink);
    }
    // A record of these settings on the test port, then its open.
    static bool Apri(int velocita = 9600, char parita = 'N', int bitDati = 8, int bitStop = 1, int flusso = 0)
    {
        Impostazioni(digitLink, portaProva, velocita, parita, bitDati, bitStop, flusso);
        return IODevCreate(digitLink) == 1 && IODevOpen(digitLink) == 1;
    }
};

// Rates and stop counts the line does not know fall back (-2 is a host's
// int16 stop count cut to a byte).
TEST_F(IODevTest, SettingsOfTheLinkBecomeTheRecord)
{
    const struct {
        int velocita;
        char parita;
        int bitStop, velocitaAttesa, codiceParita, codiceStop, moltiplicatore;
    } righe[] = {{1200, 'N', 1, 9600, 0, 0, 2},  {4800, 'E', 2, 4800, 2, 2, 4}, {19200, 'O', 3, 19200, 1, 0, 1},
                 {9600, ' ', 0, 9600, 0, 0, 2},  {-1, 'e', 2, 9600, 0, 2, 2},   {9600, 'N', -2, 9600, 0, 0, 2}};
    for (const auto& m : righe) {
        SCOPED_TRACE(m.velocita);
        Impostazioni(digitLink, 3, m.velocita, m.parita, 7, m.bitStop, 4);
        ASSERT_EQ(IODevCreate(digitLink), 1);
        EXPECT_EQ(devInfo->porta, 3);
        EXPECT_EQ(devInfo->velocita, m.velocitaAttesa);
        EXPECT_EQ(devInfo->codiceParita, m.codiceParita);
        EXPECT_EQ(devInfo->codiceStop, m.codiceStop);
        EXPECT_EQ(devInfo->bitDati, 7);
        EXPECT_EQ(devInfo->controlloFlusso, 4);
        EXPECT_EQ(MoltiplicatoreScrittura(devInfo->velocita), m.moltiplicatore);
        EXPECT_EQ(devInfo->attivo, 0);
        EXPECT_EQ(devInfo->hCom, -1);
        // A second create keeps the first record unchanged.
        Impostazioni(digitLink, 2, 4800, 'E', 8, 2, 0);
        EXPECT_EQ(IODevCreate(digitLink), 1);
        EXPECT_EQ(devInfo->porta, 3);
        EXPECT_EQ(devInfo->velocita, m.velocitaAttesa);
        IODevDestroy();
    }
}

TEST_F(IODevTest, WithoutARecordEverythingAnswersZero)
{
    ASSERT_EQ(devInfo, nullptr);
    digitLink.numAccum = 9;
    Scrivi(digitLink.hPorta, 55);
    EXPECT_EQ(IODevOpen(digitLink), 0);
    EXPECT_EQ(digitLink.numAccum, 0) << "zeroed with or without a record";
    EXPECT_EQ(Leggi(digitLink.hPorta), 55) << "left alone without a record";
    for (int (*f)() : {IODevConfigure, IODevClose, IODevDestroy, IODevHold, IODevResume}) EXPECT_EQ(f(), 0);
    EXPECT_EQ(IODevWrite("x", 1), 0);
    std::uint8_t buf[4];
    EXPECT_EQ(IODevRead(buf, sizeof buf), 0u);
    IODevSetDtr();  // must not fault
    IODevPurgeRx();
    EXPECT_EQ(IODevHandleAperto(), 0);
}

TEST_F(IODevTest, PortNamesAndTheirPaths)
{
    EXPECT_EQ(NomePorta(3), "COM3");
    EXPECT_EQ(PercorsoPorta(3), "/dev/ttyS2");
    for (const char* predefinito : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(IODevMapPort(3, "/tmp/altrove"), 1);
        EXPECT_EQ(PercorsoPorta(3), "/tmp/altrove");
        EXPECT_EQ(NomePorta(3), "COM3") << "the name stays";
        EXPECT_EQ(IODevMapPort(3, predefinito), 1);
        EXPECT_EQ(PercorsoPorta(3), "/dev/ttyS2");
    }
    EXPECT_EQ(IODevMapPort(0, "/tmp/x"), 0);
    EXPECT_EQ(IODevMapPort(256, "/tmp/x"), 0);
    EXPECT_EQ(PercorsoPorta(0), "");
}

TEST_F(IODevTest, APortThatIsHeldElsewhereCannotBeOpened)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    const int altro = open(sim.PercorsoSlave().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(altro, 0);
    ASSERT_EQ(flock(altro, LOCK_EX | LOCK_NB), 0);
    EXPECT_FALSE(Apri());
    close(altro);
    EXPECT_EQ(IODevOpen(digitLink), 1) << "free again";
    EXPECT_NE(Leggi(digitLink.hPorta), 0);
    EXPECT_EQ(IODevHandleAperto(), Leggi(digitLink.hPorta));
    EXPECT_EQ(IODevOpen(digitLink), 0) << "an open port cannot be opened twice";
}

// The catalogue's defaults of every model, with the flow control that Init
// gives model 6, and the two other rates: once on an open port, once on the
// settings asked of it (a pseudo-terminal keeps neither size nor PARENB).
TEST_F(IODevTest, LineSettingsOfTheRecord)
{
    const struct {
        int velocita;
        char parita;
        int bitDati, bitStop, flusso;
        speed_t baud;
        tcflag_t cflag, iflag;  // the bits asked for among those the record names
    } righe[] = {{9600, 'O', 8, 1, 0, B9600, CS8 | PARENB | PARODD, INPCK},        // models 1, 2
                 {9600, 'E', 7, 2, 0, B9600, CS7 | PARENB | CSTOPB, INPCK},        // 3, 5
                 {9600, 'E', 7, 1, 0, B9600, CS7 | PARENB, INPCK},                 // 4, 7
                 {9600, 'E', 8, 1, 4, B9600, CS8 | PARENB, INPCK | IXON | IXOFF},  // 6
                 {9600, 'N', 8, 1, 0, B9600, CS8, 0},                              // 8
                 {4800, 'N', 8, 2, 0, B4800, CS8 | CSTOPB, 0},
                 {19200, 'N', 7, 3, 0, B19200, CS7, 0}};
    const tcflag_t nominatiC = CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS;
    const tcflag_t nominatiI = INPCK | IXON | IXOFF | IXANY | ICRNL | ISTRIP;
    for (const auto& l : righe) {
        SCOPED_TRACE(testing::Message() << l.velocita << l.parita << l.bitDati << l.bitStop << " flow " << l.flusso);
        TTavolettaPty sim(portaProva);
        ASSERT_TRUE(sim.Valida());
        ASSERT_TRUE(Apri(l.velocita, l.parita, l.bitDati, l.bitStop, l.flusso));
        termios t{};
        ASSERT_TRUE(sim.LeggiImpostazioni(t));
        EXPECT_EQ(cfgetispeed(&t), l.baud);
        EXPECT_EQ(t.c_cflag & (PARODD | CSTOPB), l.cflag & (PARODD | CSTOPB));
        EXPECT_EQ(t.c_iflag & IXOFF, l.iflag & IXOFF);
        EXPECT_EQ(t.c_lflag & ICANON, 0u);
        EXPECT_EQ(devInfo->abilitato, 1) << "delivery on from the configuration";

        t.c_cflag = CS5 | PARENB | PARODD | CSTOPB | CRTSCTS | HUPCL;  // what a port might hold before
        t.c_iflag = INPCK | IXON | IXOFF | IXANY | ICRNL | ISTRIP;
        t.c_lflag = ICANON | ECHO | ISIG;
        t.c_oflag = OPOST;
        ASSERT_TRUE(TermiosDelRecord(*devInfo, t));
        EXPECT_EQ(cfgetospeed(&t), l.baud);
        EXPECT_EQ(t.c_cflag & nominatiC, l.cflag);
        EXPECT_EQ(t.c_iflag & nominatiI, l.iflag);
        EXPECT_EQ(t.c_lflag & (ICANON | ECHO | ISIG), 0u) << "binary transfer";
        EXPECT_EQ(t.c_oflag & OPOST, 0u);
        EXPECT_EQ(t.c_cc[VSTART], 0x11);
        EXPECT_EQ(t.c_cc[VSTOP], 0x13);
        EXPECT_EQ(t.c_cflag & (HUPCL | CREAD), HUPCL | CREAD) << "what is not named stays";
        IODevDestroy();
    }
}

// A data size that no port takes makes the port refuse the settings, and the
// open fails with the port closed again; the CTS/RTS bit asks for CRTSCTS.
TEST_F(IODevTest, BadDataSizesFailTheOpenAndHandshakeBitsMap)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    Impostazioni(digitLink, portaProva, 9600, 'N', 0, 1, 0x03);
    ASSERT_EQ(IODevCreate(digitLink), 1);
    termios t{};
    for (int bitDati : {0, 4, 9, 255}) {
        devInfo->bitDati = static_cast<std::uint8_t>(bitDati);
        EXPECT_FALSE(TermiosDelRecord(*devInfo, t)) << bitDati;
    }
    EXPECT_EQ(IODevOpen(digitLink), 0);
    EXPECT_EQ(devInfo->attivo, 0);
    EXPECT_EQ(devInfo->hCom, -1);
    EXPECT_EQ(Leggi(digitLink.hPorta), 0);
    devInfo->bitDati = 8;
    ASSERT_TRUE(TermiosDelRecord(*devInfo, t));
    EXPECT_NE(t.c_cflag & CRTSCTS, 0u);
    EXPECT_EQ(t.c_iflag & (IXON | IXOFF), 0u);
}

// Bytes that have reached the open port and wait there to be read.
int InCoda()
{
    int n = 0;
    return ioctl(devInfo->hCom, FIONREAD, &n) == 0 ? n : 0;
}

// Whether the open port reports that its other side hung up.
bool Appeso()
{
    pollfd p{static_cast<int>(devInfo->hCom), POLLIN, 0};
    return poll(&p, 1, 0) == 1 && (p.revents & POLLHUP);
}

// A close must wake a reader that waits on a quiet line, and a destroy one
// that waits while held on a line that hung up meanwhile: a reader that sleeps
// on hangs the test.
TEST_F(IODevTest, CloseOnAQuietLineAndDestroyWhileHeldOnAHungUpLine)
{
    auto sim = std::make_unique<TTavolettaPty>(portaProva);
    ASSERT_TRUE(sim->Valida());
    ASSERT_TRUE(Apri());
    ASSERT_TRUE(sim->Invia("x"));  // once the reader has drained it, it is back in its wait
    ASSERT_TRUE(AttendiFinche([] { return InCoda() == 0; }));
    EXPECT_EQ(IODevClose(), 1);
    EXPECT_FALSE(devInfo->hThread.joinable());
    EXPECT_EQ(devInfo->hCom, -1);
    EXPECT_EQ(IODevHandleAperto(), 0);
    EXPECT_NE(Leggi(digitLink.hPorta), 0) << "the link keeps its handle";
    EXPECT_EQ(IODevDestroy(), 1) << "without closing again";
    EXPECT_EQ(devInfo, nullptr);

    ASSERT_TRUE(Apri());
    EXPECT_EQ(IODevHold(), 1);
    sim.reset();  // the other side goes away: the port hangs up
    ASSERT_TRUE(AttendiFinche(Appeso));
    EXPECT_EQ(IODevResume(), 1);
    EXPECT_EQ(IODevDestroy(), 1);
    EXPECT_EQ(devInfo, nullptr);
}

// Writes pass only while delivery is on. What arrives during a hold is gone,
// and so is a report gathered in part before it: the resume drops it, and
// the next report is gathered whole.
TEST_F(IODevTest, AHoldStopsWritesAndTheResumeDropsWhatArrivedAndAHalfGatheredReport)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    TRegistratore reg;
    ASSERT_TRUE(Apri(9600, 'O'));
    Scrivi(digitLink.tipoReport, 1);
    Scrivi(digitLink.lenReport, 15);
    Scrivi(digitLink.ntfy, &reg);
    EXPECT_EQ(IODevWrite("ab", 2), 1);
    ASSERT_TRUE(sim.AttendiByte(2, 2s));

    ASSERT_TRUE(sim.Invia(TTavolettaPty::Raffica(1, {100, 200, 0}, 10)));  // two of the three reports
    // The reader has gathered them: looked at under the delivery gate.
    ASSERT_TRUE(AttendiFinche([] { TCancelloConsegna cancello; return digitLink.numAccum == 10; }));
    IODevHold();
    EXPECT_EQ(IODevWrite("cd", 2), 0);
    ASSERT_TRUE(sim.Invia(TTavolettaPty::Raffica(1, {700, 800, 3}, 15)));
    ASSERT_TRUE(AttendiFinche([] { return InCoda() == 15; }));
    IODevResume();
    EXPECT_EQ(IODevWrite("e\0f", 3), 1);
    ASSERT_TRUE(sim.Invia(TTavolettaPty::Raffica(1, {300, 400, 0}, 15)));

    ASSERT_TRUE(AttendiNotifiche(reg, 1));
    EXPECT_TRUE(sim.AttendiQuiete(100ms, 2s));
    EXPECT_EQ(sim.ByteRicevuti(), std::string("ab" "e\0f", 5));
    EXPECT_EQ(reg.Notifiche(), std::vector<TNotifica>{Mossa(300, 400)});
    Scrivi(digitLink.ntfy, nullptr);
}

// With standard input, output and error closed, the lowest free descriptors
// are 0 to 2: the port must not stay on one of them, or what the program
// prints would go down the tablet's line; and no program started later
// inherits it. Run in a child of its own, whose standard descriptors may go.
TEST_F(IODevTest, ThePortNeverStaysOnAStandardDescriptor)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            TTavolettaPty sim(portaProva);
            for (int fd = 0; fd <= 2; ++fd) close(fd);
            const bool aperto = Apri();
            const int fd = aperto ? static_cast<int>(devInfo->hCom) : -1;
            const bool buono = fd > 2 && (fcntl(fd, F_GETFD) & FD_CLOEXEC) && devInfo->sveglia > 2;
            IODevDestroy();
            std::_Exit(buono ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

}  // namespace
