// The 21 by 21 tables of a CDigit (coefficients and cell corners) and the
// scratch tables of a grid calibration. A table is indexed t[est][nord][k]:
// a block of 21 row references, a block of 441 cell references, and one block
// holding every cell's values. That keeps the two-level indexing and the single
// owner of the original per-cell blocks with three allocations instead of 463.
#ifndef VELMARIN_TABELLE_H
#define VELMARIN_TABELLE_H

#include "digit.h"

template <class T>
T*** AllocaTabella(int valoriPerCella)
{
    constexpr int n = maxQuadrati;
    T*** righe = new T**[n];
    T** celle = new T*[n * n];
    T* valori = new T[n * n * valoriPerCella]();
    for (int i = 0; i < n; ++i) {
        righe[i] = celle + i * n;
        for (int j = 0; j < n; ++j) righe[i][j] = valori + (i * n + j) * valoriPerCella;
    }
    return righe;
}

template <class T>
void LiberaTabella(T***& tabella)
{
    if (!tabella) return;
    delete[] tabella[0][0];
    delete[] tabella[0];
    delete[] tabella;
    tabella = nullptr;
}

// A table owned by a scope: allocated with it, freed when it ends.
template <class T>
struct TTabellaLocale {
    explicit TTabellaLocale(int valoriPerCella) : t(AllocaTabella<T>(valoriPerCella)) {}
    ~TTabellaLocale() { LiberaTabella(t); }
    TTabellaLocale(const TTabellaLocale&) = delete;
    TTabellaLocale& operator=(const TTabellaLocale&) = delete;
    T*** t;
};

// Copies every value of one table into another of the same shape.
template <class T>
void CopiaTabella(T*** dest, T*** src, int valoriPerCella)
{
    const int tutti = maxQuadrati * maxQuadrati * valoriPerCella;
    for (int k = 0; k < tutti; ++k) dest[0][0][k] = src[0][0][k];
}

#endif
