// A report cut short never joins the next one: not when the tablet falls
// silent in the middle of a report, not when delivery is held and resumed
// while a report was half gathered. For every model, what the target hears
// afterwards is only what the tablet sent whole.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "link/raccolta_interrotta.h"
#include "sim/codifica_report.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/suona.h"

namespace {

constexpr int portaProva = 4;
const TStatoPuntatore tagliato{1234, 5678, 2};  // the report cut short, a press
const TStatoPuntatore intero{4321, 8765, 0};     // the one sent whole after it

std::string MetaReport(int tipo)
{
    const std::string r = CodificaReport(tipo, tagliato.x, tagliato.y, tagliato.bottone);
    return r.substr(0, r.size() / 2);
}

// Whole reports of a state, as many bytes as one gather takes.
std::string Gather(int tipo, const TStatoPuntatore& s)
{
    return TTavolettaPty::Raffica(tipo, s, TTavolettaPty::LunghezzaReport(tipo));
}

// Half a report, then more bytes, through the report path alone as the
// reader drives it, with the tick given: after a silence just longer than the
// allowed pause, or after a resume, the half is dropped and only the whole
// report that follows is heard; within the pause (the control) the half and
// its rest are one report.
TEST(ReportInterrotti, AGatherCutShortIsDroppedAfterASilenceOrAResume)
{
    enum TCaso { silenzio, ripresa, pausa };
    for (int tipo = 1; tipo <= 8; ++tipo) {
        for (TCaso caso : {silenzio, ripresa, pausa}) {
            SCOPED_TRACE("model " + std::to_string(tipo) + ", case " + std::to_string(caso));
            TDigitLink link;
            TGuardiaRaccolta guardia;
            TRegistratore reg;
            AzzeraDigitLink(link);
            Scrivi(link.tipoReport, tipo);
            Scrivi(link.lenReport, static_cast<std::int32_t>(TTavolettaPty::LunghezzaReport(tipo)));
            Scrivi(link.ntfy, &reg);
            const auto Leggi = [&](const std::string& byte, std::uint32_t adesso) {
                std::copy(byte.begin(), byte.end(), link.bufLettura);
                link.numLetti = static_cast<std::int32_t>(byte.size());
                ProcessaLettura(link, adesso, guardia);
            };
            const std::string meta = MetaReport(tipo);
            Leggi(meta, 1000);
            if (caso == ripresa) SegnalaRipresa(guardia);
            const std::uint32_t dopo = caso == ripresa ? 1001 : 1000 + pausaRaccolta + (caso == silenzio);
            if (caso == pausa) {
                Leggi(Gather(tipo, tagliato).substr(meta.size()), dopo);
                EXPECT_EQ(reg.Notifiche(), std::vector<TNotifica>{Pressione(2, tagliato.x, tagliato.y)});
            } else {
                Leggi(Gather(tipo, intero), dopo);
                EXPECT_EQ(reg.Notifiche(), std::vector<TNotifica>{Mossa(intero.x, intero.y)});
            }
        }
    }
}

class ReportInterrottiSuLinea : public TProvaSuLinea {
protected:
    ReportInterrottiSuLinea() : TProvaSuLinea(portaProva) {}
};

// On a pseudo-terminal, for every model: half a report, then either a hold
// (a dialog opening) during which more bytes reach the port and a resume, or
// a silence longer than a report. The target then hears the whole reports
// that follow, a move and a press, and nothing else.
TEST_F(ReportInterrottiSuLinea, NoModelJoinsAHalfReportWithTheNextOne)
{
    const TStatoPuntatore premuto{2468, 1357, 1};
    for (int tipo = 1; tipo <= 8; ++tipo) {
        for (bool ripresa : {true, false}) {
            SCOPED_TRACE("model " + std::to_string(tipo) + (ripresa ? ", hold and resume" : ", silence"));
            TTavolettaPty sim(portaProva);
            TRegistratore reg;
            CDigit d(Dati(tipo));
            ASSERT_TRUE(sim.Valida() && Collega(d, &reg));
            const std::string meta = MetaReport(tipo);
            ASSERT_TRUE(sim.Invia(meta));
            ASSERT_TRUE(AttendiFinche([&] {  // gathered: looked at under the delivery gate
                TCancelloConsegna cancello;
                return digitLink.numAccum == static_cast<std::int32_t>(meta.size());
            }));
            if (ripresa) {
                d.StopCommNotification();
                ASSERT_TRUE(sim.Invia(meta));
                ASSERT_TRUE(AttendiFinche([] { return InCoda() > 0; }));
                ASSERT_EQ(d.SetCommNotificationTo(&reg), 1);
            } else {
                tick.Avanza(pausaRaccolta + 1);
            }
            const std::size_t len = TTavolettaPty::LunghezzaReport(tipo);
            ASSERT_TRUE(SuonaFinoA(sim, tipo, intero, len, reg, 1));
            ASSERT_TRUE(SuonaFinoA(sim, tipo, premuto, len, reg, 2));
            EXPECT_EQ(reg.Notifiche(),
                      (std::vector<TNotifica>{Mossa(intero.x, intero.y), Pressione(1, premuto.x, premuto.y)}));
            d.StopCommNotification();
        }
    }
}

}  // namespace
