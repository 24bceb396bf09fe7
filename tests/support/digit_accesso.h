// The test suite's one way into the private members of CDigit.
#ifndef VELMARIN_TEST_DIGIT_ACCESSO_H
#define VELMARIN_TEST_DIGIT_ACCESSO_H

#include "calibration/indice_celle.h"
#include "digit.h"

// Writing the grid size or corners drops the cell index until the next fit (or IndicizzaCelle).
class CDigitTestAccess {
public:
    static void ScartaIndice(CDigit& d)
    {
        if (d.indiceCelle) d.indiceCelle->valido = false;
    }
    static void IndicizzaCelle(CDigit& d) { d.AggiornaIndiceCelle(); }
    static bool Indicizzato(const CDigit& d) { return d.indiceCelle && d.indiceCelle->valido; }
    static std::atomic<std::int32_t>& StatoCalibr(CDigit& d) { return d.statoCalibr; }
    static std::intptr_t& HPorta(CDigit& d) { return d.hPorta; }
    static std::int32_t& NumQuadEst(CDigit& d) { ScartaIndice(d); return d.numQuadEst; }
    static std::int32_t& NumQuadNord(CDigit& d) { ScartaIndice(d); return d.numQuadNord; }
    static double& IniEst(CDigit& d) { return d.iniEst; }
    static double& IniNord(CDigit& d) { return d.iniNord; }
    static double& PassoEst(CDigit& d) { return d.passoEst; }
    static double& PassoNord(CDigit& d) { return d.passoNord; }
    static double*** CoefCelle(CDigit& d) { return d.coefCelle; }
    static std::int32_t*** AngoliX(CDigit& d) { ScartaIndice(d); return d.angoliX; }
    static std::int32_t*** AngoliY(CDigit& d) { ScartaIndice(d); return d.angoliY; }

    // Calibration mathematics.
    static bool CalcoloCoefOmog(CDigit& d, std::int32_t* x, std::int32_t* y, double* est, double* nord, double* coef)
    {
        return d.CalcoloCoefOmog(x, y, est, nord, coef);
    }
    static bool CalcoloCoefficientiOmog(CDigit& d, std::int32_t*** angX, std::int32_t*** angY, double*** angEst,
                                        double*** angNord)
    {
        return d.CalcoloCoefficientiOmog(angX, angY, angEst, angNord);
    }
    static int Ccw(const CDigit& d, std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1,
                   std::int32_t x2, std::int32_t y2)
    {
        return d.Ccw(x0, y0, x1, y1, x2, y2);
    }
    static void Ritarda(const CDigit& d, std::int32_t ms) { d.Ritarda(ms); }
    static void MemorizzaNodo(CDigit& d, int i, int j, std::int32_t x, std::int32_t y, double est, double nord,
                              double*** angEst, double*** angNord)
    {
        ScartaIndice(d);
        d.MemorizzaNodo(i, j, x, y, est, nord, angEst, angNord);
    }
};

#endif
