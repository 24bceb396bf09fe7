// Every build computes the same bits: the sparse fit, the grid fit and the
// transforms through them, at UTM-sized coordinates, against the IEEE bit
// patterns of the 64-bit Linux build. A 32-bit build that computed with the
// x87 unit (80-bit intermediates) would differ here in the last bits.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "velmarin.h"

namespace {

std::uint64_t Bit(double v)
{
    std::uint64_t b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

struct TPunto {
    std::int32_t x, y;
};

// Inside and outside the calibrated area, on a node and between nodes.
const TPunto luoghi[] = {{0, 0}, {1234, 5678}, {7013, 3041}, {9999, 9999}, {-4000, 12500}, {15321, -77}};

// East and North of every place, in bits, as the tablet maps them now.
std::vector<std::uint64_t> Mappa(const velmarin_tablet* t)
{
    std::vector<std::uint64_t> bit;
    for (const TPunto& p : luoghi) {
        double e = 0, n = 0;
        EXPECT_EQ(velmarin_to_ground(t, p.x, p.y, &e, &n), 1) << p.x << " " << p.y;
        bit.push_back(Bit(e));
        bit.push_back(Bit(n));
    }
    return bit;
}

void Confronta(const std::vector<std::uint64_t>& avuti, const std::vector<std::uint64_t>& attesi)
{
    ASSERT_EQ(avuti.size(), attesi.size());
    for (std::size_t k = 0; k < avuti.size(); ++k) {
        char testo[24];
        std::snprintf(testo, sizeof testo, "0x%016llx", static_cast<unsigned long long>(avuti[k]));
        EXPECT_EQ(avuti[k], attesi[k]) << (k % 2 ? "North" : "East") << " of place " << k / 2 << ": " << testo;
    }
}

velmarin_tablet* Tavoletta()
{
    TDataDigit dati;
    velmarin_model_setup(2, &dati);
    dati.limitiDefiniti = true;
    dati.xMin = dati.yMin = 0;
    dati.xMax = dati.yMax = 10000;
    return velmarin_open(&dati);
}

// Seven points of a map sheet, digitized with the errors of a hand.
TEST(StessiBitTest, SparseFitAndItsTransforms)
{
    const std::int32_t x[] = {103, 9871, 4977, 120, 9903, 2511, 7432};
    const std::int32_t y[] = {88, 131, 5023, 9911, 9890, 7517, 2469};
    const double est[] = {1501010.37, 1501986.11, 1501497.64, 1501011.02, 1501989.93, 1501250.58, 1501743.19};
    const double nord[] = {5034008.81, 5034013.42, 5034502.27, 5034991.18, 5034989.05, 5034751.66, 5034246.9};
    velmarin_tablet* t = Tavoletta();
    ASSERT_EQ(velmarin_fit_points(t, 7, x, y, est, nord), 1);
    Confronta(Mappa(t), {
        0x4136e747d19c27af, 0x4153340402393d8a,
        0x4136e7c3043d86ec, 0x41533491f3598bc9,
        0x4136ea04ee3301f0, 0x415334500cacc897,
        0x4136eb2f439b3a10, 0x415334fdfe8804d0,
        0x4136e5b7754cc3cd, 0x4153353c78332cbe,
        0x4136ed43ba737cf9, 0x4153340221ea784c,
    });
    velmarin_close(t);
}

// A 3 by 2 grid of 100 m squares whose nodes were pressed a little off.
TEST(StessiBitTest, GridFitAndItsTransforms)
{
    const std::int32_t nodoX[] = {2, 3331, 6668, 10003, -5, 3336, 6661, 9998, 4, 3329, 6670, 10001};
    const std::int32_t nodoY[] = {-3, 2, 1, -4, 5004, 4998, 5003, 4997, 10002, 9999, 10006, 9995};
    velmarin_tablet* t = Tavoletta();
    ASSERT_EQ(velmarin_fit_grid(t, 3, 2, 1501000.0, 5034000.0, 100.0, 100.0, nodoX, nodoY), 1);
    Confronta(Mappa(t), {
        0x4136e747f0af9d71, 0x4153340403da3041,
        0x4136e76d16118b5a, 0x415334205e22326f,
        0x4136e81a777bd67e, 0x41533413334f3099,
        0x4136e873f0986aa4, 0x41533436051f6eaf,
        0x4136e6cefeb4636c, 0x41533442937dd407,
        0x4136e9138ac1f269, 0x41533403acb47a66,
    });
    velmarin_close(t);
}

}  // namespace
