// The projective fit of a cell side by side with OpenCV's
// getPerspectiveTransform, on the 441 cells of a shaken 21 by 21 grid: the
// time of each, the largest difference between the ground positions the two
// maps give at the corners and the centre of every cell, and how far each
// puts a corner from its own ground position. (The
// coefficients themselves are badly conditioned, counts in the thousands
// against a constant 1, so they are no fair measure.)
//
// The cell map East·w = c0·x + c1·y + c2, North·w = c3·x + c4·y + c5,
// w = c6·x + c7·y + 1 is the homography [c0 c1 c2; c3 c4 c5; c6 c7 1].
#include <benchmark/benchmark.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "digit.h"
#include "tests/support/digit_accesso.h"
#include "tests/support/griglia_prova.h"

namespace {

struct TCella {
    std::array<std::int32_t, 4> x, y;
    std::array<double, 4> est, nord;
};

// Corners 0 to 3 of cell (i, j) are the nodes (i, j), (i, j+1), (i+1, j), (i+1, j+1).
std::vector<TCella> Celle()
{
    const TNodi nodi = GrigliaScossa(maxQuadrati, maxQuadrati, 500, 60, 11);
    std::vector<TCella> celle;
    for (int i = 0; i < maxQuadrati; ++i) {
        for (int j = 0; j < maxQuadrati; ++j) {
            TCella c{};
            const TNodo* angoli[4] = {&nodi[i][j], &nodi[i][j + 1], &nodi[i + 1][j], &nodi[i + 1][j + 1]};
            for (int k = 0; k < 4; ++k) {
                c.x[k] = angoli[k]->x;
                c.y[k] = angoli[k]->y;
                c.est[k] = angoli[k]->est;
                c.nord[k] = angoli[k]->nord;
            }
            celle.push_back(c);
        }
    }
    return celle;
}

cv::Mat OpenCV(const TCella& c)
{
    cv::Point2f da[4], a[4];
    for (int k = 0; k < 4; ++k) {
        da[k] = cv::Point2f(static_cast<float>(c.x[k]), static_cast<float>(c.y[k]));
        a[k] = cv::Point2f(static_cast<float>(c.est[k]), static_cast<float>(c.nord[k]));
    }
    return cv::getPerspectiveTransform(da, a);
}

void BM_CoefOmogVelmarin(benchmark::State& stato)
{
    std::vector<TCella> celle = Celle();
    CDigit digit;
    double coef[8];
    for (auto _ : stato)
        for (TCella& c : celle)
            benchmark::DoNotOptimize(CDigitTestAccess::CalcoloCoefOmog(digit, c.x.data(), c.y.data(), c.est.data(),
                                                                       c.nord.data(), coef));
    stato.SetItemsProcessed(stato.iterations() * static_cast<std::int64_t>(celle.size()));
}

void BM_CoefOmogOpenCV(benchmark::State& stato)
{
    std::vector<TCella> celle = Celle();
    for (auto _ : stato)
        for (const TCella& c : celle) benchmark::DoNotOptimize(OpenCV(c));
    stato.SetItemsProcessed(stato.iterations() * static_cast<std::int64_t>(celle.size()));

    // OpenCV takes its points as floats: the counts and ground values here
    // are exact in float, so the two fits solve the same system.
    CDigit digit;
    double scarto = 0, errore = 0, erroreCv = 0;
    for (TCella& c : celle) {
        double coef[8];
        CDigitTestAccess::CalcoloCoefOmog(digit, c.x.data(), c.y.data(), c.est.data(), c.nord.data(), coef);
        const cv::Mat h = OpenCV(c);
        for (int k = 0; k <= 4; ++k) {
            const double x = k < 4 ? c.x[k] : (c.x[0] + c.x[3]) / 2.0;
            const double y = k < 4 ? c.y[k] : (c.y[0] + c.y[3]) / 2.0;
            const double w = coef[6] * x + coef[7] * y + 1;
            const double wh = h.at<double>(2, 0) * x + h.at<double>(2, 1) * y + h.at<double>(2, 2);
            const double e = (coef[0] * x + coef[1] * y + coef[2]) / w;
            const double n = (coef[3] * x + coef[4] * y + coef[5]) / w;
            const double eh = (h.at<double>(0, 0) * x + h.at<double>(0, 1) * y + h.at<double>(0, 2)) / wh;
            const double nh = (h.at<double>(1, 0) * x + h.at<double>(1, 1) * y + h.at<double>(1, 2)) / wh;
            scarto = std::max({scarto, std::abs(e - eh), std::abs(n - nh)});
            if (k < 4) {  // a corner must land on its own ground position
                errore = std::max({errore, std::abs(e - c.est[k]), std::abs(n - c.nord[k])});
                erroreCv = std::max({erroreCv, std::abs(eh - c.est[k]), std::abs(nh - c.nord[k])});
            }
        }
    }
    stato.counters["max_ground_diff"] = scarto;
    stato.counters["corner_err"] = errore;
    stato.counters["corner_err_opencv"] = erroreCv;
}

BENCHMARK(BM_CoefOmogVelmarin)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CoefOmogOpenCV)->Unit(benchmark::kMicrosecond);

}  // namespace
