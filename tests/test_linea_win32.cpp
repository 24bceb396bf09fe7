// The line settings of a port record on a Windows DCB, its time limits, the
// names the ports open by, and a host's check of a port.
#include <gtest/gtest.h>

#include <string>

#include "link/iodev.h"
#include "link/iodev_info.h"
#include "link/linea_win32.h"
#include "reports/digit_link.h"
#include "velmarin.h"

namespace {

// The record made from the link settings of each catalogue line, and strays.
TEST(LineaWin32Test, TheRecordSetsTheNamedFieldsOfTheDcbAndLeavesTheRest)
{
    const struct {
        int velocita;
        char parita;
        int bitDati, bitStop, flusso;
        DWORD baud;
        BYTE parity, stopBits;
        DWORD moltiplicatore;
    } righe[] = {{9600, 'O', 8, 1, 0, 9600, ODDPARITY, ONESTOPBIT, 2},    // models 1, 2
                 {9600, 'E', 7, 2, 0, 9600, EVENPARITY, TWOSTOPBITS, 2},  // 3, 5
                 {9600, 'E', 8, 1, 4, 9600, EVENPARITY, ONESTOPBIT, 2},   // 6
                 {1200, 'N', 8, 3, 0, 9600, NOPARITY, ONESTOPBIT, 2},
                 {19200, 'N', 7, 1, 3, 19200, NOPARITY, ONESTOPBIT, 1},
                 {4800, 'X', 8, 2, 1, 4800, NOPARITY, TWOSTOPBITS, 4}};
    for (const auto& r : righe) {
        SCOPED_TRACE(testing::Message() << r.velocita << r.parita << r.bitDati << r.bitStop << " flow " << r.flusso);
        TDigitLink link{};
        link.velocita = r.velocita;
        link.parita = r.parita;
        link.bitDati = static_cast<std::uint8_t>(r.bitDati);
        link.bitStop = static_cast<std::uint8_t>(r.bitStop);
        link.controlloFlusso = static_cast<std::uint8_t>(r.flusso);
        TIODevInfo* d = NuovoRecord(link);
        ASSERT_NE(d, nullptr);

        DCB dcb{};
        dcb.DCBlength = sizeof dcb;
        dcb.fBinary = 0;
        dcb.fTXContinueOnXoff = 1;  // what the port reported, not named by the record
        dcb.fAbortOnError = 1;
        dcb.EofChar = 0x1A;
        DcbDelRecord(*d, dcb);
        EXPECT_EQ(dcb.BaudRate, r.baud);
        EXPECT_EQ(dcb.ByteSize, r.bitDati);
        EXPECT_EQ(dcb.Parity, r.parity);
        EXPECT_EQ(dcb.StopBits, r.stopBits);
        EXPECT_EQ(dcb.fBinary, 1u);
        EXPECT_EQ(dcb.fParity, 1u) << "with no parity as well";
        const bool dsr = r.flusso & 1, cts = r.flusso & 2, xon = r.flusso & 4;
        EXPECT_EQ(dcb.fOutxDsrFlow, dsr ? 1u : 0u);
        EXPECT_EQ(dcb.fDtrControl, dsr ? unsigned(DTR_CONTROL_HANDSHAKE) : unsigned(DTR_CONTROL_ENABLE));
        EXPECT_EQ(dcb.fOutxCtsFlow, cts ? 1u : 0u);
        EXPECT_EQ(dcb.fRtsControl, cts ? unsigned(RTS_CONTROL_HANDSHAKE) : unsigned(RTS_CONTROL_ENABLE));
        EXPECT_EQ(dcb.fOutX, xon ? 1u : 0u);
        EXPECT_EQ(dcb.fInX, xon ? 1u : 0u);
        EXPECT_EQ(dcb.XonChar, 0x11);
        EXPECT_EQ(dcb.XoffChar, 0x13);
        EXPECT_EQ(dcb.XonLim, 100);
        EXPECT_EQ(dcb.XoffLim, 100);
        EXPECT_EQ(dcb.fTXContinueOnXoff, 1u);
        EXPECT_EQ(dcb.fAbortOnError, 1u);
        EXPECT_EQ(dcb.EofChar, 0x1A);

        const COMMTIMEOUTS t = LimitiPorta(*d);
        EXPECT_EQ(t.ReadIntervalTimeout, MAXDWORD);
        EXPECT_EQ(t.ReadTotalTimeoutMultiplier, 0u);
        EXPECT_EQ(t.ReadTotalTimeoutConstant, 1000u);
        EXPECT_EQ(t.WriteTotalTimeoutMultiplier, r.moltiplicatore);
        EXPECT_EQ(t.WriteTotalTimeoutConstant, 0u);
        delete d;
    }
}

// COM1 to COM9 by their plain names, from COM10 on in the device namespace.
TEST(LineaWin32Test, PortsFromCom10OpenInTheDeviceNamespace)
{
    EXPECT_EQ(PercorsoPorta(3), "COM3");
    EXPECT_EQ(PercorsoPorta(9), "COM9");
    EXPECT_EQ(PercorsoPorta(10), "\\\\.\\COM10");
    EXPECT_EQ(PercorsoPorta(255), "\\\\.\\COM255");
}

// A name that opens nothing, and a device that opens but is no serial line.
TEST(LineaWin32Test, ACheckedPortSaysWhyItCannotServe)
{
    const struct {
        const char* dispositivo;
        std::string perche;
    } casi[] = {{"\\\\.\\velmarin-nessuna-porta", "COM7 (\\\\.\\velmarin-nessuna-porta): cannot be opened"},
                {"NUL", "COM7 (NUL): not a serial line"}};
    for (const auto& c : casi) {
        IODevMapPort(7, c.dispositivo);
        EXPECT_EQ(velmarin_check_port(7), 0) << c.dispositivo;
        EXPECT_EQ(std::string(velmarin_last_error()).substr(0, c.perche.size()), c.perche);
    }
    IODevMapPort(7, nullptr);
}

}  // namespace
