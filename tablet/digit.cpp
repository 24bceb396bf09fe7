// CDigit: construction, assignment, the queries and the settings.
#include "digit.h"

#include <cstring>

#include "link/iodev.h"
#include "reports/digit_link.h"
#include "calibration/calibrazione_in_vigore.h"
#include "tablet/catalogo.h"
#include "tablet/tabelle.h"

TDataDigit DatiPredefiniti()
{
    TDataDigit d{};
    d.tipo = 0;
    d.porta = 2;
    d.parita = ' ';
    d.numBottoni = 4;
    d.funzBott[0] = funzConferma;
    d.funzBott[1] = funzLineaDisLib;
    d.funzBott[2] = funzLineaFineEnt;
    d.funzBott[3] = funzAnnulla;
    return d;
}

namespace {

constexpr int coefPerCella = 8;
constexpr int angoliPerCella = 4;

}  // namespace

CDigit::CDigit() : dati(DatiPredefiniti()) { doConstruct(); }

CDigit::CDigit(const TDataDigit& data) : dati(data) { doConstruct(); }

void CDigit::doConstruct()
{
    iniEst = iniNord = passoEst = passoNord = 1e-200;
    hPorta = 0;
    statoCalibr = calibNessuna;
    numQuadEst = numQuadNord = -1;
    // Another object's reader may be running: the record is cleared between
    // two of its drains, never under one. That connection then decodes and
    // notifies nothing until it is initialised again.
    {
        TCancelloConsegna cancello;
        AzzeraDigitLink(digitLink);
    }
    coefCelle = AllocaTabella<double>(coefPerCella);
    angoliX = AllocaTabella<std::int32_t>(angoliPerCella);
    angoliY = AllocaTabella<std::int32_t>(angoliPerCella);
}

// The target keeps its own tables and receives a copy of the source's, so
// each table has exactly one owner and both objects read the same map.
CDigit& CDigit::operator=(const CDigit& other)
{
    if (this == &other) return *this;
    hPorta = other.hPorta;
    dati = other.dati;
    numQuadEst = other.numQuadEst;
    numQuadNord = other.numQuadNord;
    iniEst = other.iniEst;
    iniNord = other.iniNord;
    passoEst = other.passoEst;
    passoNord = other.passoNord;
    CopiaTabella(coefCelle, other.coefCelle, coefPerCella);
    CopiaTabella(angoliX, other.angoliX, angoliPerCella);
    CopiaTabella(angoliY, other.angoliY, angoliPerCella);
    CopiaIndiceCelle(other);
    TCalibrazioneInVigore::Copia(other, *this);
    statoCalibr.store(other.statoCalibr.load(std::memory_order_acquire), std::memory_order_release);
    return *this;
}

bool CDigit::IsScelto() const { return dati.tipo > 0 && dati.limitiDefiniti; }

bool CDigit::IsCalibrato() const { return IsScelto() && statoCalibr != calibNessuna; }

bool CDigit::IsCalibratoGriglia() const { return IsScelto() && statoCalibr == calibGriglia; }

void CDigit::SetToNotCalibrato() { statoCalibr = calibNessuna; }

TDataDigit& CDigit::GetDataDigit() { return dati; }

void CDigit::GetDataDigit(TDataDigit& data) const { data = dati; }

void CDigit::SetDataDigit(const TDataDigit& data) { dati = data; }

// A numBottoni beyond the 16 entries of funzBott never lets a read pass them.
int CDigit::GetFunzButt(int button) const
{
    if (dati.tipo <= 0 || button < 1 || button > dati.numBottoni) return funzNessuna;
    if (button > static_cast<int>(sizeof dati.funzBott)) return funzNessuna;
    return dati.funzBott[button - 1];
}
