// The binary report formats: sync, completeness, rejection, fields.
#include <gtest/gtest.h>

#include <ostream>

#include <cstring>
#include <string>
#include <vector>

#include "reports/digit_link.h"

namespace {

struct TCaso {
    const char* legenda;
    int formato;
    int lenReport;
    std::vector<unsigned char> byte;  // filled out to lenReport with 0x00
    int esito;
    std::int32_t x, y, bottone;
};
void PrintTo(const TCaso& p, std::ostream* os) { *os << p.legenda; }

// 0x00 passes no sync test of the three formats, so it pads safely.
const TCaso casi[] = {
    {"f1 sync after two junk bytes, y negative", 1, 15, {0x01, 0x02, 0x91, 0x2C, 0x01, 0x40, 0x03}, 1, 172, -448, 1},
    {"f1 both positive, no button", 1, 15, {0x98, 0x34, 0x12, 0x05, 0x01}, 1, 2356, 133, 0},
    {"f1 both negative, button 1", 1, 15, {0x81, 0x34, 0x12, 0x05, 0x01}, 1, -2356, -133, 1},
    {"f1 data byte with bit 7 counts as negative", 1, 15, {0x98, 0xC5, 0x00, 0x00, 0x00}, 1, -59, 0, 0},
    {"f1 bit 5 of b0 is ignored", 1, 15, {0xB8, 0x01, 0x00, 0x02, 0x00}, 1, 1, 2, 0},
    {"f1 button 7 taken unchanged", 1, 15, {0x9F, 0x01, 0x00, 0x02, 0x00}, 1, 1, 2, 7},
    {"f1 0xC0 fails the sync test", 1, 15, {0xC0, 0x98, 0x01, 0x00, 0x02, 0x00}, 1, 1, 2, 0},
    {"f1 last usable sync at 10", 1, 15, {0,0,0,0,0,0,0,0,0,0, 0x98, 0x01, 0x00, 0x02, 0x00}, 1, 1, 2, 0},
    {"f1 sync at 11 lacks its tail", 1, 15, {0,0,0,0,0,0,0,0,0,0,0, 0x98, 0x01, 0x00, 0x02}, 0, -1, -1, -1},
    {"f1 no sync at all", 1, 15, {0x01, 0x7F, 0x40}, 0, -1, -1, -1},
    {"f1 first sync wins over a later report", 1, 15, {0x90, 0x01, 0x00, 0x02, 0x00, 0x98, 0x05, 0x00, 0x06, 0x00}, 1, 1, -2, 0},

    {"f5 worked example", 5, 20, {0x40, 0x21, 0x15, 0x0A, 0x00, 0x3F, 0x01, 0x00}, 1, 661, 127, 1},
    {"f5 b4 bit 0 adds 4096", 5, 20, {0x40, 0x21, 0x15, 0x0A, 0x01, 0x3F, 0x01, 0x00}, 1, 4757, 127, 1},
    {"f5 b4 bit 5 rejects", 5, 20, {0x40, 0x21, 0x15, 0x0A, 0x23, 0x3F, 0x01, 0x00}, 0, -1, -1, -1},
    {"f5 b7 bit 5 rejects", 5, 20, {0x40, 0x21, 0x15, 0x0A, 0x00, 0x3F, 0x01, 0x20}, 0, -1, -1, -1},
    {"f5 bits 7..6 of data ignored", 5, 20, {0x40, 0xE1, 0xD5, 0xCA, 0x00, 0xFF, 0xC1, 0x00}, 1, 661, 127, 1},
    {"f5 largest values", 5, 20, {0x40, 0x1F, 0x3F, 0x3F, 0x1F, 0x3F, 0x3F, 0x1F}, 1, 131071, 131071, 31},
    {"f5 last usable sync at 12", 5, 20, {0,0,0,0,0,0,0,0,0,0,0,0, 0x40, 0x01, 0x02, 0x00, 0x00, 0x03, 0x00, 0x00}, 1, 2, 3, 1},
    {"f5 sync at 13 lacks its tail", 5, 20, {0,0,0,0,0,0,0,0,0,0,0,0,0, 0x40, 0x01, 0x02, 0x00, 0x00, 0x03, 0x00}, 0, -1, -1, -1},
    {"f5 data 0x40 ahead of the true report is taken for sync", 5, 20, {0x40, 0x00, 0x01, 0x00, 0x20, 0x00, 0x40, 0x01, 0x15, 0x0A, 0x00, 0x3F, 0x01, 0x00}, 0, -1, -1, -1},

    {"f8 worked example", 8, 15, {0xC4, 0x02, 0x34, 0x00, 0x05, 0x06}, 1, 308, 646, 1},
    {"f8 b0 bit 0 adds 16384", 8, 15, {0xC5, 0x02, 0x34, 0x00, 0x05, 0x06}, 1, 16692, 646, 1},
    {"f8 no button pattern", 8, 15, {0x80, 0x02, 0x34, 0x00, 0x05, 0x06}, 1, 308, 646, 0},
    {"f8 b3 bit 7 rejects", 8, 15, {0xC4, 0x02, 0x34, 0x82, 0x05, 0x06}, 0, -1, -1, -1},
    {"f8 b5 bit 7 rejects", 8, 15, {0xC4, 0x02, 0x34, 0x00, 0x05, 0x86}, 0, -1, -1, -1},
    {"f8 two button bits give no button", 8, 15, {0xCC, 0x02, 0x34, 0x00, 0x05, 0x06}, 1, 308, 646, 0},
    {"f8 button bit without bit 6 gives none", 8, 15, {0x84, 0x02, 0x34, 0x00, 0x05, 0x06}, 1, 308, 646, 0},
    {"f8 button 2", 8, 15, {0xC8, 0x00, 0x01, 0x00, 0x00, 0x02}, 1, 1, 2, 2},
    {"f8 button 3", 8, 15, {0xD0, 0x00, 0x01, 0x00, 0x00, 0x02}, 1, 1, 2, 3},
    {"f8 button 4", 8, 15, {0xE0, 0x00, 0x01, 0x00, 0x00, 0x02}, 1, 1, 2, 4},
    {"f8 b3 bits 6..2 ignored, y top bits", 8, 15, {0x80, 0x00, 0x01, 0x7F, 0x00, 0x02}, 1, 1, 49154, 0},
    {"f8 last usable sync at 9", 8, 15, {0,0,0,0,0,0,0,0,0, 0x80, 0x00, 0x01, 0x00, 0x00, 0x02}, 1, 1, 2, 0},
    {"f8 sync at 10 lacks its tail", 8, 15, {0,0,0,0,0,0,0,0,0,0, 0x80, 0x00, 0x01, 0x00, 0x00}, 0, -1, -1, -1},
};

class DecodificaBinari : public ::testing::TestWithParam<TCaso> {};

TEST_P(DecodificaBinari, GatherGivesTheReport)
{
    const TCaso& c = GetParam();
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, c.formato);
    Scrivi(digitLink.lenReport, c.lenReport);
    std::vector<unsigned char> gather = c.byte;
    gather.resize(static_cast<std::size_t>(c.lenReport), 0x00);
    std::memcpy(digitLink.bufLettura, gather.data(), gather.size());
    digitLink.numLetti = c.lenReport;

    EXPECT_EQ(ProcessaReport(digitLink), c.esito);
    EXPECT_EQ(Leggi(digitLink.xReport), c.x);
    EXPECT_EQ(Leggi(digitLink.yReport), c.y);
    EXPECT_EQ(Leggi(digitLink.bottone), c.bottone);
    EXPECT_EQ(digitLink.numAccum, 0) << "every attempt drops the whole gather";
}

INSTANTIATE_TEST_SUITE_P(Casi, DecodificaBinari, ::testing::ValuesIn(casi),
                         [](const ::testing::TestParamInfo<TCaso>& i) { return "caso" + std::to_string(i.index); });

TEST(DecodificaBinari, ShortGatherWaitsForTheNextRead)
{
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, 8);
    Scrivi(digitLink.lenReport, 15);
    const unsigned char report[] = {0xC4, 0x02, 0x34, 0x00, 0x05, 0x06, 0, 0, 0, 0, 0, 0, 0, 0};
    std::memcpy(digitLink.bufLettura, report, sizeof report);
    digitLink.numLetti = 14;
    EXPECT_EQ(ProcessaReport(digitLink), 0);
    EXPECT_EQ(digitLink.numAccum, 14);

    digitLink.bufLettura[0] = 0;
    digitLink.numLetti = 1;
    EXPECT_EQ(ProcessaReport(digitLink), 1);
    EXPECT_EQ(Leggi(digitLink.xReport), 308);
    EXPECT_EQ(digitLink.numAccum, 0);
}

}  // namespace
