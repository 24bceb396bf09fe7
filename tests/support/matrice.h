// A small matrix for the solver tests: every row its own block, reached
// through an array of row pointers, as the solvers take it.
#ifndef VELMARIN_TEST_MATRICE_H
#define VELMARIN_TEST_MATRICE_H

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <vector>

class TMatrice {
public:
    TMatrice(std::initializer_list<std::initializer_list<double>> righe)
    {
        for (const auto& r : righe) {
            blocchi_.push_back(std::make_unique<double[]>(r.size()));
            std::copy(r.begin(), r.end(), blocchi_.back().get());
            puntatori_.push_back(blocchi_.back().get());
        }
    }
    double** Righe() { return puntatori_.data(); }
    double* operator[](int i) { return puntatori_[i]; }

private:
    std::vector<std::unique_ptr<double[]>> blocchi_;
    std::vector<double*> puntatori_;
};

#endif
