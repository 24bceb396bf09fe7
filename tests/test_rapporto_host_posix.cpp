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
    } casi[] = {
        {{{0, 0, 100, 200}, {1000, 0, 150, 200}, {0, 1000, 100, 250}},
         "3 points taken, all 3 used in the least-squares map, 0 checked", "\"points_checked\": 0,"},
        {{{0, 0, 100, 200}, {1000, 0, 150, 200}, {0, 1000, 100, 250}, {1000, 1000, 150.5, 250}},
         "4 points taken, all 4 used in the least-squares map, 4 checked", "\"points_checked\": 4,"},
    };
    for (const TCaso& c : casi) {
        TRapportoCalibrazione r;
        ASSERT_TRUE(RapportoSparsi(c.punti, TLimiti{true, 0, 0, 1000, 1000}, r));
        const std::string testo = Testo(r), json = Json(r, "cal-2026-11-25T20:30:12.345Z");
        EXPECT_NE(testo.find(c.conteggio), std::string::npos) << testo;
        EXPECT_NE(testo.find("loo dE, loo dN: the same with the map fitted leaving that point out"), std::string::npos);
        EXPECT_EQ(json.rfind("{\"id\": \"cal-2026-11-25T20:30:12.345Z\", ", 0), 0u) << json;
        EXPECT_NE(json.find(c.verificati), std::string::npos) << json;
        EXPECT_EQ(std::count(json.begin(), json.end(), '\n'), 1) << "one line of the log: " << json;
    }
}

}  // namespace
