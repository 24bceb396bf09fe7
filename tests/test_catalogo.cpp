// The catalogue of models: names, labels and the defaults a choice applies.
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "tablet/catalogo.h"

namespace {

// Every row whole; every label has 21 characters, and those beyond a model's
// resolutions are blank.
TEST(Catalogo, RowsCarryTheirDefaultsAndLabels)
{
    struct TRiga {
        int tipo, velocita, parita, bitDati, bitStop, reset, numReset, risoluzione, numRisoluzioni, numBottoni;
        const char* nome;
    };
    const TRiga righe[] = {
        {0, 0, ' ', 0, 0, 0, 0, 0, 0, 0, " -                   "},
        {1, 9600, 'O', 8, 1, 2, 2, 2, 3, 4, " SummaGraph.MM BINARY"},
        {2, 9600, 'O', 8, 1, 2, 2, 2, 3, 4, " SummaGraph.MM ASCII "},
        {3, 9600, 'E', 7, 2, 2, 2, 2, 3, 4, " Calcomp 2000 ASCII  "},
        {4, 9600, 'E', 7, 1, 1, 1, 1, 1, 16, " OCE G 6830          "},
        {5, 9600, 'E', 7, 2, 2, 2, 3, 3, 16, " Summa MicroGrid 3   "},
        {6, 9600, 'E', 8, 1, 2, 2, 2, 2, 16, " Rolley MR2          "},
        {7, 9600, 'E', 7, 1, 2, 2, 1, 1, 16, " Calcomp 9500        "},
        {8, 9600, 'N', 8, 1, 2, 2, 1, 1, 4, " Numonics Binary     "},
    };
    for (const TRiga& r : righe) {
        const TTipoDigit& t = catalogoDigit[r.tipo];
        EXPECT_STREQ(t.nome, r.nome);
        EXPECT_EQ(std::make_tuple(t.velocita, t.parita, t.bitDati, t.bitStop, t.reset, t.numReset, t.risoluzione,
                                  t.numRisoluzioni, t.numBottoni),
                  std::make_tuple(r.velocita, r.parita, r.bitDati, r.bitStop, r.reset, r.numReset, r.risoluzione,
                                  r.numRisoluzioni, r.numBottoni))
            << r.nome;
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(std::strlen(t.etichRisoluzione[k]), 21u) << "[" << t.etichRisoluzione[k] << "]";
            if (k >= t.numRisoluzioni) {
                EXPECT_STREQ(t.etichRisoluzione[k], "                     ") << t.nome;
            }
        }
    }
    EXPECT_STREQ(catalogoDigit[6].etichRisoluzione[1], " FULL   : 0.01 mm    ");
    EXPECT_STREQ(catalogoDigit[5].etichRisoluzione[2], " 2000 lpi            ");
}

}  // namespace
