// The cell index must serve every point with the very cell that a scan of
// all cells would give: the first holding cell, else the nearest reference
// point with ties to the earlier cell.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "digit.h"
#include "support/digit_accesso.h"
#include "support/griglia_prova.h"

namespace {

using A = CDigitTestAccess;

// Every cell maps each point to East = its scan number + 1, so the result
// names the cell.
void SegnaCelle(CDigit& d, int quadEst, int quadNord)
{
    A::NumQuadEst(d) = quadEst;
    A::NumQuadNord(d) = quadNord;
    for (int i = 0; i < maxQuadrati; ++i)
        for (int j = 0; j < maxQuadrati; ++j) {
            double* c = A::CoefCelle(d)[i][j];
            for (int k = 0; k < 8; ++k) c[k] = 0.0;
            c[2] = i * quadNord + j + 1;
        }
    A::StatoCalibr(d) = calibGriglia;
}

void AngoliDaNodi(CDigit& d, const TNodi& nodi)
{
    std::int32_t*** ax = A::AngoliX(d);
    std::int32_t*** ay = A::AngoliY(d);
    const int quadEst = static_cast<int>(nodi.size()) - 1;
    const int quadNord = static_cast<int>(nodi[0].size()) - 1;
    for (int i = 0; i < quadEst; ++i)
        for (int j = 0; j < quadNord; ++j) {
            const TNodo* n[4] = {&nodi[i][j], &nodi[i][j + 1], &nodi[i + 1][j], &nodi[i + 1][j + 1]};
            for (int c = 0; c < 4; ++c) {
                ax[i][j][c] = n[c]->x;
                ay[i][j][c] = n[c]->y;
            }
        }
}

struct TPunto {
    std::int32_t x, y;
};

// Points that matter to the search: corners, reference points and their
// neighbours, points spread over and around the grid, and far points.
std::vector<TPunto> PuntiDiProva(CDigit& d, int quadEst, int quadNord, std::mt19937& gen)
{
    std::vector<TPunto> punti;
    std::int64_t minX = std::numeric_limits<std::int32_t>::max(), maxX = std::numeric_limits<std::int32_t>::min();
    std::int64_t minY = minX, maxY = maxX;
    for (int i = 0; i < quadEst; ++i)
        for (int j = 0; j < quadNord; ++j)
            for (int c = 0; c < 4; ++c) {
                const std::int32_t x = A::AngoliX(d)[i][j][c], y = A::AngoliY(d)[i][j][c];
                punti.push_back({x, y});
                minX = std::min<std::int64_t>(minX, x);
                maxX = std::max<std::int64_t>(maxX, x);
                minY = std::min<std::int64_t>(minY, y);
                maxY = std::max<std::int64_t>(maxY, y);
                if (c == 0) {
                    const std::int64_t cx = (static_cast<std::int64_t>(x) + A::AngoliX(d)[i][j][3]) / 2;
                    const std::int64_t cy = (static_cast<std::int64_t>(y) + A::AngoliY(d)[i][j][3]) / 2;
                    for (int dx = -1; dx <= 1; ++dx)
                        for (int dy = -1; dy <= 1; ++dy)
                            punti.push_back({static_cast<std::int32_t>(cx + dx), static_cast<std::int32_t>(cy + dy)});
                }
            }
    const std::int64_t bordoX = (maxX - minX) / 2 + 10, bordoY = (maxY - minY) / 2 + 10;
    auto limita = [](std::int64_t v) {
        return static_cast<std::int32_t>(std::max<std::int64_t>(std::numeric_limits<std::int32_t>::min(),
                                                                std::min<std::int64_t>(std::numeric_limits<std::int32_t>::max(), v)));
    };
    std::uniform_int_distribution<std::int64_t> px(minX - bordoX, maxX + bordoX);
    std::uniform_int_distribution<std::int64_t> py(minY - bordoY, maxY + bordoY);
    for (int k = 0; k < 400; ++k) punti.push_back({limita(px(gen)), limita(py(gen))});
    const std::int32_t estremi[] = {std::numeric_limits<std::int32_t>::min(), -1000000, 0, 1000000,
                                    std::numeric_limits<std::int32_t>::max()};
    for (std::int32_t x : estremi)
        for (std::int32_t y : estremi) punti.push_back({x, y});
    return punti;
}

// Compares, point by point, the scan of every cell with the indexed search.
void Confronta(CDigit& d, int quadEst, int quadNord, std::mt19937& gen, bool indicizzabile)
{
    const std::vector<TPunto> punti = PuntiDiProva(d, quadEst, quadNord, gen);
    ASSERT_FALSE(A::Indicizzato(d));
    std::vector<double> attesi;
    for (const TPunto& p : punti) {
        double est = 0, nord = 0;
        ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(p.x, p.y, est, nord));
        attesi.push_back(est);
    }
    A::IndicizzaCelle(d);
    ASSERT_EQ(A::Indicizzato(d), indicizzabile);
    for (std::size_t k = 0; k < punti.size(); ++k) {
        double est = 0, nord = 0;
        ASSERT_TRUE(d.CalcoloCoordTrasfCalibrFine(punti[k].x, punti[k].y, est, nord));
        ASSERT_EQ(est, attesi[k]) << "point " << punti[k].x << "," << punti[k].y;
    }
}

TEST(IndiceCelleTest, WellShapedShakenAndMirroredGridsGetTheScannedCell)
{
    std::mt19937 gen(2024);
    for (int prova = 0; prova < 24; ++prova) {
        SCOPED_TRACE(prova);
        const int quadEst = 1 + static_cast<int>(gen() % maxQuadrati);
        const int quadNord = 1 + static_cast<int>(gen() % maxQuadrati);
        const std::int32_t scossa = (prova % 3 == 0) ? 400 : 50;  // 400 twists cells over each other
        TNodi nodi = GrigliaScossa(quadEst, quadNord, 300, scossa, gen());
        if (prova % 4 == 1)
            for (auto& colonna : nodi)
                for (TNodo& n : colonna) n.x = -n.x;  // mirrored: every cell clockwise
        CDigit d;
        AngoliDaNodi(d, nodi);
        SegnaCelle(d, quadEst, quadNord);
        Confronta(d, quadEst, quadNord, gen, true);
    }
}

TEST(IndiceCelleTest, ScatteredCellsAndHugeCountsGetTheScannedCell)
{
    std::mt19937 gen(77);
    const std::int32_t ampiezze[] = {50, 100000, std::numeric_limits<std::int32_t>::max()};
    for (std::int32_t ampiezza : ampiezze) {
        SCOPED_TRACE(ampiezza);
        std::uniform_int_distribution<std::int32_t> v(-ampiezza, ampiezza);
        CDigit d;
        for (int i = 0; i < 6; ++i)
            for (int j = 0; j < 5; ++j)
                for (int c = 0; c < 4; ++c) {
                    A::AngoliX(d)[i][j][c] = v(gen);
                    A::AngoliY(d)[i][j][c] = v(gen);
                }
        SegnaCelle(d, 6, 5);
        Confronta(d, 6, 5, gen, true);
    }
}

// On a square lattice each inner node lies at one distance from the four
// reference points around it; mirrored, no cell holds anything, so every
// node is a tie that the earlier cell must win.
TEST(IndiceCelleTest, TiesOnARegularLatticeGoToTheEarlierCell)
{
    std::mt19937 gen(31);
    for (int verso : {1, -1}) {
        SCOPED_TRACE(verso);
        TNodi nodi(9, std::vector<TNodo>(8));
        for (int p = 0; p <= 8; ++p)
            for (int q = 0; q <= 7; ++q) nodi[p][q] = {verso * p * 300, q * 300, 0.0, 0.0};
        CDigit d;
        AngoliDaNodi(d, nodi);
        SegnaCelle(d, 8, 7);
        Confronta(d, 8, 7, gen, true);
    }
}

// A triangle with its three corners at one position holds every point; the
// index does not serve such a grid, and the scan still gives the answer.
TEST(IndiceCelleTest, ACellHoldingEveryPointIsNotIndexed)
{
    std::mt19937 gen(5);
    CDigit d;
    AngoliDaNodi(d, GrigliaScossa(4, 3, 300, 20, 9));
    for (int c : {2, 3, 1}) {
        A::AngoliX(d)[2][1][c] = 4000;
        A::AngoliY(d)[2][1][c] = 4000;
    }
    SegnaCelle(d, 4, 3);
    Confronta(d, 4, 3, gen, false);
}

// An assigned object searches with the source's index; a change of the grid
// size without a new fit leaves the index unused.
TEST(IndiceCelleTest, AssignmentCarriesTheIndexAndAResizeDropsIt)
{
    CDigit sorgente;
    ASSERT_TRUE(CalibraDaNodi(sorgente, GrigliaScossa(5, 5, 400, 30, 3)));
    ASSERT_TRUE(A::Indicizzato(sorgente));
    CDigit dest;
    dest = sorgente;
    EXPECT_TRUE(A::Indicizzato(dest));
    double e1 = 0, n1 = 0, e2 = 0, n2 = 0;
    ASSERT_TRUE(sorgente.CalcoloCoordTrasfCalibrFine(2900, 2100, e1, n1));
    ASSERT_TRUE(dest.CalcoloCoordTrasfCalibrFine(2900, 2100, e2, n2));
    EXPECT_EQ(e1, e2);
    EXPECT_EQ(n1, n2);
    A::NumQuadEst(dest) = 2;
    EXPECT_FALSE(A::Indicizzato(dest));
}

}  // namespace
