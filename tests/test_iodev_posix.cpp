// The serial layer on pseudo-terminals: record, line settings, exclusivity.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "link/linea_posix.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"

namespace {

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

class IODevTest : public TProvaSuLinea {
protected:
    IODevTest() : TProvaSuLinea(portaProva) {}
    // A record of these settings on the test port, then its open.
    static bool Apri(int velocita = 9600, char parita = 'N', int bitDati = 8, int bitStop = 1, int flusso = 0)
    {
        Impostazioni(digitLink, portaProva, velocita, parita, bitDati, bitStop, flusso);
        return IODevCreate(digitLink) == 1 && IODevOpen(digitLink) == 1;
    }
};

TEST_F(IODevTest, ASecondCreateKeepsTheFirstRecord)
{
    Impostazioni(digitLink, 3, 19200, 'O', 7, 1, 4);
    ASSERT_EQ(IODevCreate(digitLink), 1);
    Impostazioni(digitLink, 2, 4800, 'E', 8, 2, 0);
    EXPECT_EQ(IODevCreate(digitLink), 1);
    EXPECT_EQ(std::make_tuple(int(devInfo->porta), int(devInfo->velocita), int(devInfo->bitDati)), std::make_tuple(3, 19200, 7));
}

TEST_F(IODevTest, PortNamesAndTheirPaths)
{
    EXPECT_EQ(NomePorta(3), "COM3");
    EXPECT_EQ(PercorsoPorta(3), "/dev/ttyS2");
    for (const char* predefinito : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(IODevMapPort(3, "/tmp/altrove"), 1);
        EXPECT_EQ(PercorsoPorta(3), "/tmp/altrove");
        EXPECT_EQ(IODevMapPort(3, predefinito), 1);
        EXPECT_EQ(PercorsoPorta(3), "/dev/ttyS2");
    }
    EXPECT_EQ(std::make_tuple(IODevMapPort(0, "/tmp/x"), IODevMapPort(256, "/tmp/x"), PercorsoPorta(0)), std::make_tuple(0, 0, ""));
}

// Every model's defaults, model 6's flow control, the other rates, CTS/RTS,
// and the fallbacks for unknown rates, stop counts and parities (-2 is a
// host's int16 stop count cut to a byte), over settings a port held before.
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
                 {4800, 'N', 8, 2, 3, B4800, CS8 | CSTOPB | CRTSCTS, 0},
                 {19200, 'N', 7, 3, 0, B19200, CS7, 0},
                 {1200, 'e', 8, -2, 0, B9600, CS8, 0},
                 {-1, ' ', 8, 0, 0, B9600, CS8, 0}};
    for (const auto& l : righe) {
        SCOPED_TRACE(testing::Message() << l.velocita << l.parita << l.bitDati << l.bitStop << " flow " << l.flusso);
        Impostazioni(digitLink, portaProva, l.velocita, l.parita, l.bitDati, l.bitStop, l.flusso);
        ASSERT_EQ(IODevCreate(digitLink), 1);
        termios t{};
        t.c_cflag = CS5 | PARENB | PARODD | CSTOPB | CRTSCTS | HUPCL;
        t.c_iflag = INPCK | IXON | IXOFF | IXANY | ICRNL | ISTRIP;
        t.c_lflag = ICANON | ECHO | ISIG;
        t.c_oflag = OPOST;
        ASSERT_TRUE(TermiosDelRecord(*devInfo, t));
        EXPECT_EQ(std::make_tuple(cfgetispeed(&t), cfgetospeed(&t), t.c_cflag & (CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS),
                                  t.c_iflag & (INPCK | IXON | IXOFF | IXANY | ICRNL | ISTRIP)),
                  std::make_tuple(l.baud, l.baud, l.cflag, l.iflag));
        // Binary transfer; XON and XOFF the usual bytes; what is not named stays.
        EXPECT_EQ(std::make_tuple(t.c_lflag & (ICANON | ECHO | ISIG), t.c_oflag & OPOST, int(t.c_cc[VSTART]), int(t.c_cc[VSTOP]),
                                  t.c_cflag & (HUPCL | CREAD)),
                  std::make_tuple(0u, 0u, 0x11, 0x13, tcflag_t(HUPCL | CREAD)));
        IODevDestroy();
    }
}

// A data size no port takes fails the open, the port closed again.
TEST_F(IODevTest, BadDataSizesFailTheOpen)
{
    TTavolettaPty sim(portaProva);
    ASSERT_TRUE(sim.Valida());
    for (int bitDati : {0, 4, 9, 255}) {
        SCOPED_TRACE(bitDati);
        EXPECT_FALSE(Apri(9600, 'N', bitDati));
        EXPECT_EQ(std::make_tuple(int(devInfo->attivo), std::intptr_t(devInfo->hCom), std::intptr_t(Leggi(digitLink.hPorta))),
                  std::make_tuple(0, std::intptr_t(-1), std::intptr_t(0)));
        IODevDestroy();
    }
}

}  // namespace
