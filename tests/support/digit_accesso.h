// The test suite's one way into the private members of CDigit.
#ifndef VELMARIN_TEST_DIGIT_ACCESSO_H
#define VELMARIN_TEST_DIGIT_ACCESSO_H

#include "digit.h"

class CDigitTestAccess {
public:
    static std::int32_t& StatoCalibr(CDigit& d) { return d.statoCalibr; }
    static std::intptr_t& HPorta(CDigit& d) { return d.hPorta; }
    static std::int32_t& NumQuadEst(CDigit& d) { return d.numQuadEst; }
    static std::int32_t& NumQuadNord(CDigit& d) { return d.numQuadNord; }
    static double& IniEst(CDigit& d) { return d.iniEst; }
    static double& IniNord(CDigit& d) { return d.iniNord; }
    static double& PassoEst(CDigit& d) { return d.passoEst; }
    static double& PassoNord(CDigit& d) { return d.passoNord; }
    static double*** CoefCelle(CDigit& d) { return d.coefCelle; }
    static std::int32_t*** AngoliX(CDigit& d) { return d.angoliX; }
    static std::int32_t*** AngoliY(CDigit& d) { return d.angoliY; }
    static void Ritarda(const CDigit& d, std::int32_t ms) { d.Ritarda(ms); }
};

#endif
