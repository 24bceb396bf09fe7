// The report path around the decoders: the edge rule, the gather's room, and
// what a missing decoder leaves.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "reports/digit_link.h"
#include "sim/codifica_report.h"
#include "support/registratore.h"

namespace {

// Lives as long as the link that points to it.
TRegistratore target;

// A fresh link on model 8, heard by `ascolto`.
void Azzera(CDigitNtfy* ascolto = &target)
{
    target.Svuota();
    AzzeraDigitLink(digitLink);
    Scrivi(digitLink.tipoReport, 8);
    Scrivi(digitLink.lenReport, 15);
    Scrivi(digitLink.ntfy, ascolto);
}

int Consegna(const std::string& byte)
{
    std::memcpy(digitLink.bufLettura, byte.data(), byte.size());
    digitLink.numLetti = static_cast<std::int32_t>(byte.size());
    return ProcessaReport(digitLink);
}

// One read that holds a whole gather with the report at its head.
int Report(std::int32_t x, std::int32_t y, int bottone)
{
    std::string gather = CodificaReport(8, x, y, bottone);
    gather.resize(15, '\0');
    return Consegna(gather);
}

// Each press heard once; not repeats, the first report at the origin, a change
// of button without release, nor a press made while no target listened.
TEST(ProcessaReportTest, EdgeRuleAnnouncesEachPressOnceAndDropsRepeats)
{
    constexpr int scarto = -1, senzaTarget = -2, conTarget = -3;  // steps that are not reports
    struct TCaso {
        std::vector<std::array<int, 3>> passi;  // x, y, button
        std::vector<TNotifica> attese;
    };
    const TCaso casi[] = {
        {{{100, 200, 0}, {100, 200, 0}, {100, 200, 2}, {150, 260, 2}, {150, 260, 0}, {151, 260, 0}},
         {Mossa(100, 200), Pressione(2, 100, 200), Mossa(151, 260)}},
        {{{0, 0, 0}}, {}},
        {{{10, 11, 1}, {10, 11, 3}, {10, 11, 0}, {10, 11, 3}}, {Pressione(1, 10, 11), Pressione(3, 10, 11)}},
        {{{10, 11, 1}, {0, 0, scarto}, {10, 11, 1}, {0, 0, senzaTarget}, {20, 21, 0}, {20, 21, 1}, {0, 0, conTarget},
          {20, 21, 1}, {20, 21, 0}, {20, 21, 2}},
         {Pressione(1, 10, 11), Pressione(2, 20, 21)}},
    };
    for (const TCaso& c : casi) {
        Azzera();
        for (const auto& p : c.passi) {
            if (p[2] == scarto) Consegna(std::string(15, '\0'));  // no sync byte
            else if (p[2] == senzaTarget) Scrivi(digitLink.ntfy, nullptr);
            else if (p[2] == conTarget) Scrivi(digitLink.ntfy, &target);
            else Report(p[0], p[1], p[2]);
        }
        EXPECT_EQ(target.Notifiche(), c.attese) << c.passi.size() << " steps";
    }
}

// Records bottonePremuto as the report path shows it during each call.
class TSpiaPremuto : public CDigitNtfy {
public:
    std::vector<std::int32_t> visti;
    void NotifyMove(std::int32_t, std::int32_t) override { visti.push_back(Leggi(digitLink.bottonePremuto)); }
    void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override { NotifyMove(0, 0); }
};

TEST(ProcessaReportTest, BottonePremutoHoldsThePressOnlyDuringItsNotification)
{
    static TSpiaPremuto spia;
    Azzera(&spia);
    Report(5, 5, 0);
    Report(5, 5, 4);
    EXPECT_EQ(spia.visti, (std::vector<std::int32_t>{-1, 4}));

    Consegna(std::string(3, '\0'));  // too few bytes for a decode
    for (const auto* campo : {&digitLink.bottonePremuto, &digitLink.xReport, &digitLink.yReport, &digitLink.bottone})
        EXPECT_EQ(Leggi(*campo), -1);
}

// No format drops every read; a format beyond the table (or below it, as
// the int8 of a host's negative model) decodes nothing and keeps the gather.
TEST(ProcessaReportTest, WithoutADecoderNothingIsDecoded)
{
    Azzera();
    Scrivi(digitLink.tipoReport, 0);
    Scrivi(digitLink.lenReport, 0);
    EXPECT_EQ(Consegna(CodificaReport(8, 1, 2, 0)), 0);
    EXPECT_EQ(digitLink.numLetti, 0);
    EXPECT_EQ(digitLink.numAccum, 0);
    for (int formato : {9, -5}) {
        Azzera();
        Scrivi(digitLink.tipoReport, formato);
        EXPECT_EQ(Consegna(CodificaReport(8, 1, 2, 0) + std::string(10, '\x80')), 0);
        EXPECT_EQ(digitLink.numAccum, 15);
        EXPECT_EQ(Consegna(std::string(4, '\x80')), 0);
        EXPECT_EQ(digitLink.numLetti, 0) << "a full gather takes no further byte";
    }
    EXPECT_TRUE(target.Notifiche().empty());
}

// A read adds only what the length lacks; a lowered length decodes what is
// there; a length beyond the buffer never overruns it.

TEST(ProcessaReportTest, TheGatherTakesOnlyWhatItsLengthHasRoomFor)
{
    Azzera();
    Consegna(std::string(10, '\0'));
    ASSERT_EQ(digitLink.numAccum, 10);
    EXPECT_EQ(Consegna(CodificaReport(8, 1, 2, 0) + std::string(24, '\0')), 0) << "5 bytes hold no report";
    EXPECT_EQ(digitLink.numLetti, 5);

    Azzera();
    Consegna(CodificaReport(8, 7, 9, 0) + std::string(6, '\0'));
    ASSERT_EQ(digitLink.numAccum, 12);
    Scrivi(digitLink.lenReport, 8);
    EXPECT_EQ(Consegna(std::string(5, '\0')), 1);
    EXPECT_LT(digitLink.numLetti, 0);
    EXPECT_EQ(target.Notifiche(), (std::vector<TNotifica>{Mossa(7, 9)}));

    Scrivi(digitLink.lenReport, 5000);
    for (int i = 0; i < 3; ++i) Consegna(std::string(dimBuffer, '\0'));
    EXPECT_EQ(digitLink.numAccum, 0) << "a full buffer is decoded and dropped";
}

}  // namespace
