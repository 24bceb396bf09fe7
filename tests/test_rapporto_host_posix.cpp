// The calibration report as the terminal host writes it: how many points
// were taken and checked, in words, and the log's line that features point to.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "rapporto_calibrazione.h"

namespace {

TEST(RapportoHost, SaysHowManyPointsWereTakenAndCheckedAndKeepsTheIdOnOneLine)
{
    struct TCaso {
        std::vector<TPuntoControllo> punti;
        const char* conteggio;
        const char* verificati;
        bool previsto;  // a worst error foretold: only with points to spare
    } casi[] = {
        {{{0, 0, 100, 200}, {1000, 0, 150, 200}, {0, 1000, 100, 250}},
         "3 points taken, all 3 used in the least-squares map, 0 checked", "\"points_checked\": 0,", false},
        {{{0, 0, 100, 200}, {1000, 0, 150, 200}, {0, 1000, 100, 250}, {1000, 1000, 150.5, 250}},
         "4 points taken, all 4 used in the least-squares map, 4 checked", "\"points_checked\": 4,", true},
    };
    for (const TCaso& c : casi) {
        TRapportoCalibrazione r;
        ASSERT_TRUE(RapportoSparsi(c.punti, TLimiti{true, 0, 0, 1000, 1000}, r));
        const std::string testo = Testo(r), json = Json(r, "cal-2026-11-25T20:30:12.345Z");
        EXPECT_NE(testo.find(c.conteggio), std::string::npos) << testo;
        EXPECT_EQ(testo.find("predicted worst error within the limits: ") != std::string::npos, c.previsto) << testo;
        EXPECT_NE(testo.find("loo dE, loo dN: the same with the map fitted leaving that point out"), std::string::npos);
        EXPECT_EQ(json.rfind("{\"id\": \"cal-2026-11-25T20:30:12.345Z\", ", 0), 0u) << json;
        EXPECT_NE(json.find(c.verificati), std::string::npos) << json;
        EXPECT_EQ(std::count(json.begin(), json.end(), '\n'), 1) << "one line of the log: " << json;
    }
}

// A report made by hand, each figure of a point a power of two of its own:
// the table and the log each show it in its column, and a warning names
// its point as the user counts, from 1.
TEST(RapportoHost, EachFigureStandsInItsColumnAndAWarningNamesThePointFromOne)
{
    TRapportoCalibrazione r;
    r.tipo = TRapportoCalibrazione::sparsi;
    r.punti = {{{0, 0, 100, 200}, 0.5, 0.25, 0.125, 0.0625},
               {{1000, 0, 150, 200}, -1, -2, -4, -8},
               {{0, 1000, 100, 250}, 16, 32, 64, 128}};
    r.peggiori[0] = 2, r.peggiori[1] = 1;
    r.avvisi = avvisoGrossolano;
    const std::string testo = Testo(r), json = Json(r, "cal-1");
    EXPECT_NE(testo.find("    1      100.000      200.000    0.5000    0.2500    0.1250    0.0625\n"), std::string::npos)
        << testo;
    EXPECT_NE(testo.find("WARNING: point 3 is probably wrong"), std::string::npos) << testo;
    EXPECT_NE(json.find("{\"count_x\": 1000, \"count_y\": 0, \"east\": 150, \"north\": 200, \"residual_east\": -1, "
                        "\"residual_north\": -2, \"loo_east\": -4, \"loo_north\": -8}"),
              std::string::npos)
        << json;
    EXPECT_NE(json.find("\"loo_north\": 128}], \"rms\""), std::string::npos) << "three points, no more: " << json;
    EXPECT_NE(json.find("\"worst\": [2, 1]"), std::string::npos) << json;
    EXPECT_NE(json.find("\"warnings\": [\"point 3 is probably wrong: digitize it again\"]}"), std::string::npos) << json;
    // Every warning in its words, in the table and in the log.
    r.avvisi = avvisoRaggruppati | avvisoAllineati | avvisoGrossolano | avvisoSenzaRidondanza | avvisoNodoFuoriPosto;
    r.copertura = 0.1234;
    r.nodiFuoriPosto = {4};
    const std::string tutti = Testo(r) + Json(r, "cal-2");
    for (const char* a : {"the points cover only 12.3% of the limits: spread them over the whole sheet",
                          "the points lie nearly in a line", "three points: nothing checks them; add a fourth",
                          "node 5 departs from its neighbours: digitize it again"}) {
        EXPECT_NE(tutti.find(std::string("WARNING: ") + a + "\n"), std::string::npos) << tutti;
        EXPECT_NE(tutti.find(std::string("\"") + a + "\""), std::string::npos) << tutti;
    }
}

}  // namespace
