// The catalogue of models: names, labels and the defaults a choice applies.
#include <gtest/gtest.h>

#include <cstring>

#include "tablet/catalogo.h"

namespace {

// The names are checked whole below; every label has 21 characters, and
// those beyond a model's resolutions are blank.
TEST(Catalogo, LabelsHaveTwentyOneCharactersAndBlankBeyondTheResolutions)
{
    for (const TTipoDigit& t : catalogoDigit)
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(std::strlen(t.etichRisoluzione[k]), 21u) << "[" << t.etichRisoluzione[k] << "]";
            if (k >= t.numRisoluzioni) {
                EXPECT_STREQ(t.etichRisoluzione[k], "                     ") << t.nome;
            }
        }
}

TEST(Catalogo, RowsCarryTheirDefaults)
{
    struct TRiga {
        int tipo, parita, bitDati, bitStop, numReset, risoluzione, numRisoluzioni, numBottoni;
        const char* nome;
    };
    const TRiga righe[] = {
        {0, ' ', 0, 0, 0, 0, 0, 0, " -                   "},
        {1, 'O', 8, 1, 2, 2, 3, 4, " SummaGraph.MM BINARY"},
        {2, 'O', 8, 1, 2, 2, 3, 4, " SummaGraph.MM ASCII "},
        {3, 'E', 7, 2, 2, 2, 3, 4, " Calcomp 2000 ASCII  "},
        {4, 'E', 7, 1, 1, 1, 1, 16, " OCE G 6830          "},
        {5, 'E', 7, 2, 2, 3, 3, 16, " Summa MicroGrid 3   "},
        {6, 'E', 8, 1, 2, 2, 2, 16, " Rolley MR2          "},
        {7, 'E', 7, 1, 2, 1, 1, 16, " Calcomp 9500        "},
        {8, 'N', 8, 1, 2, 1, 1, 4, " Numonics Binary     "},
    };
    for (const TRiga& r : righe) {
        const TTipoDigit& t = catalogoDigit[r.tipo];
        EXPECT_STREQ(t.nome, r.nome);
        EXPECT_EQ(t.velocita, r.tipo == 0 ? 0 : 9600);
        EXPECT_EQ(t.parita, r.parita) << r.nome;
        EXPECT_EQ(t.bitDati, r.bitDati) << r.nome;
        EXPECT_EQ(t.bitStop, r.bitStop) << r.nome;
        EXPECT_EQ(t.reset, r.tipo == 0 ? 0 : r.tipo == 4 ? 1 : 2) << r.nome;
        EXPECT_EQ(t.numReset, r.numReset) << r.nome;
        EXPECT_EQ(t.risoluzione, r.risoluzione) << r.nome;
        EXPECT_EQ(t.numRisoluzioni, r.numRisoluzioni) << r.nome;
        EXPECT_EQ(t.numBottoni, r.numBottoni) << r.nome;
    }
    EXPECT_STREQ(catalogoDigit[6].etichRisoluzione[1], " FULL   : 0.01 mm    ");
    EXPECT_STREQ(catalogoDigit[5].etichRisoluzione[2], " 2000 lpi            ");
}

}  // namespace
