// The line settings of the record on a DCB, and the port's time limits.
#include "link/linea_win32.h"

namespace {

constexpr char carXon = 0x11;
constexpr char carXoff = 0x13;
constexpr WORD limiteXonXoff = 100;

}  // namespace

void DcbDelRecord(const TIODevInfo& d, DCB& dcb)
{
    const bool dsrDtr = d.controlloFlusso & 0x01;
    const bool ctsRts = d.controlloFlusso & 0x02;
    const bool xonXoff = d.controlloFlusso & 0x04;
    dcb.BaudRate = static_cast<DWORD>(d.velocita);
    dcb.ByteSize = d.bitDati;
    dcb.Parity = d.codiceParita;
    dcb.StopBits = d.codiceStop;
    dcb.fBinary = 1;
    dcb.fParity = 1;
    dcb.fOutxDsrFlow = dsrDtr;
    dcb.fDtrControl = dsrDtr ? DTR_CONTROL_HANDSHAKE : DTR_CONTROL_ENABLE;
    dcb.fOutxCtsFlow = ctsRts;
    dcb.fRtsControl = ctsRts ? RTS_CONTROL_HANDSHAKE : RTS_CONTROL_ENABLE;
    dcb.fOutX = xonXoff;
    dcb.fInX = xonXoff;
    dcb.XonChar = carXon;
    dcb.XoffChar = carXoff;
    dcb.XonLim = limiteXonXoff;
    dcb.XoffLim = limiteXonXoff;
}

COMMTIMEOUTS LimitiPorta(const TIODevInfo& d, DWORD primoByte)
{
    COMMTIMEOUTS t{};
    t.ReadIntervalTimeout = MAXDWORD;
    t.ReadTotalTimeoutMultiplier = 0;
    t.ReadTotalTimeoutConstant = primoByte;
    t.WriteTotalTimeoutMultiplier = static_cast<DWORD>(MoltiplicatoreScrittura(d.velocita));
    t.WriteTotalTimeoutConstant = 0;
    return t;
}
