// The line settings of a port record on a Windows DCB, its time limits, the
// names the ports open by, and a host's check of a port.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

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
        using U = unsigned;
        const bool dsr = r.flusso & 1, cts = r.flusso & 2, xon = r.flusso & 4;
        EXPECT_EQ(std::make_tuple(U(dcb.BaudRate), U(dcb.ByteSize), U(dcb.Parity), U(dcb.StopBits), U(dcb.fBinary), U(dcb.fParity)),
                  std::make_tuple(U(r.baud), U(r.bitDati), U(r.parity), U(r.stopBits), 1u, 1u)) << "fParity with no parity as well";
        EXPECT_EQ(std::make_tuple(U(dcb.fOutxDsrFlow), U(dcb.fDtrControl), U(dcb.fOutxCtsFlow), U(dcb.fRtsControl), U(dcb.fOutX), U(dcb.fInX)),
                  std::make_tuple(U(dsr), U(dsr ? DTR_CONTROL_HANDSHAKE : DTR_CONTROL_ENABLE), U(cts),
                                  U(cts ? RTS_CONTROL_HANDSHAKE : RTS_CONTROL_ENABLE), U(xon), U(xon)));
        EXPECT_EQ(std::make_tuple(U(dcb.XonChar), U(dcb.XoffChar), U(dcb.XonLim), U(dcb.XoffLim), U(dcb.fTXContinueOnXoff),
                                  U(dcb.fAbortOnError), U(dcb.EofChar)),
                  std::make_tuple(0x11u, 0x13u, 100u, 100u, 1u, 1u, 0x1Au));
        const COMMTIMEOUTS t = LimitiPorta(*d);
        EXPECT_EQ(std::make_tuple(t.ReadIntervalTimeout, t.ReadTotalTimeoutMultiplier, t.ReadTotalTimeoutConstant,
                                  t.WriteTotalTimeoutMultiplier, t.WriteTotalTimeoutConstant),
                  std::make_tuple(MAXDWORD, 0ul, 1000ul, r.moltiplicatore, 0ul));
        delete d;
    }
}

// COM1 to COM9 by their plain names, from COM10 on in the device namespace.
TEST(LineaWin32Test, PortsFromCom10OpenInTheDeviceNamespace)
{
    EXPECT_EQ(std::make_tuple(PercorsoPorta(3), PercorsoPorta(9), PercorsoPorta(10), PercorsoPorta(255)),
              std::make_tuple("COM3", "COM9", "\\\\.\\COM10", "\\\\.\\COM255"));
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
