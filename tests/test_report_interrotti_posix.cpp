// A report cut short never joins the next one: not when the tablet falls
// silent in the middle of a report, not when delivery is held and resumed
// while a report was half gathered. For every model, what the target hears
// afterwards is only what the tablet sent whole.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "digit.h"
#include "link/iodev.h"
#include "link/raccolta_interrotta.h"
#include "reports/digit_link.h"
#include "sim/codifica_report.h"
#include "sim/tavoletta_pty.h"
#include "support/prova_su_linea.h"
#include "support/registratore.h"
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

std::string GatherIntero(int tipo)
{
    return TTavolettaPty::Raffica(tipo, intero, TTavolettaPty::LunghezzaReport(tipo));
}

// The report path alone, as a reader drives it, with the tick given.
struct TLettore {
    explicit TLettore(int tipo)
    {
        AzzeraDigitLink(link);
        Scrivi(link.tipoReport, tipo);
        Scrivi(link.lenReport, static_cast<std::int32_t>(TTavolettaPty::LunghezzaReport(tipo)));
        Scrivi(link.ntfy, &reg);
    }
    void Leggi(const std::string& byte, std::uint32_t adesso)
    {
        std::copy(byte.begin(), byte.end(), link.bufLettura);
        link.numLetti = static_cast<std::int32_t>(byte.size());
        ProcessaLettura(link, adesso, guardia);
    }
    TDigitLink link;
    TGuardiaRaccolta guardia;
    TRegistratore reg;
};

// Half a report, then a whole gather after a silence, after a resume, or
// (the control) within the pause a report may make: only a silence inside
// the allowed pause keeps the half, and then the two are one report.
TEST(ReportInterrotti, AGatherCutShortIsDroppedAfterASilenceOrAResume)
{
    for (int tipo = 1; tipo <= 8; ++tipo) {
        for (const char* caso : {"silenzio", "ripresa", "pausa"}) {
            TLettore l(tipo);
            const std::string meta = MetaReport(tipo);
            l.Leggi(meta, 1000);
            if (std::string(caso) == "ripresa") SegnalaRipresa(l.guardia);
            const std::uint32_t dopo = std::string(caso) == "silenzio" ? 1001 + pausaRaccolta : 1000 + pausaRaccolta;
            if (std::string(caso) == "pausa") {
                EXPECT_EQ(l.link.numAccum, static_cast<std::int32_t>(meta.size()));
                l.Leggi(TTavolettaPty::Raffica(tipo, tagliato, TTavolettaPty::LunghezzaReport(tipo)).substr(meta.size()),
                        dopo);
                EXPECT_EQ(l.reg.Notifiche(), std::vector<TNotifica>{Pressione(2, tagliato.x, tagliato.y)})
                    << "model " << tipo;
                continue;
            }
            l.Leggi(GatherIntero(tipo), caso == std::string("ripresa") ? 1001 : dopo);
            EXPECT_EQ(l.reg.Notifiche(), std::vector<TNotifica>{Mossa(intero.x, intero.y)})
                << "model " << tipo << ", " << caso;
        }
    }
}

class ReportInterrottiSuLinea : public TProvaSuLinea {
protected:
    ReportInterrottiSuLinea() : TProvaSuLinea(portaProva) {}

    // Model `tipo` connected and heard; half a report on the line, and
    // awaited until the reader has gathered it (looked at under the gate).
    bool MetaRaccolta(CDigit& d, TTavolettaPty& sim, int tipo)
    {
        if (!d.Init(nullptr)) return false;
        d.SendInitString();
        if (d.SetCommNotificationTo(&reg) != 1) return false;
        const std::string meta = MetaReport(tipo);
        return sim.Invia(meta) && AttendiFinche([&] {
                   TCancelloConsegna cancello;
                   return digitLink.numAccum == static_cast<std::int32_t>(meta.size());
               });
    }
    TRegistratore reg;
};

// On a pseudo-terminal, for every model: after half a report, a hold and a
// resume (a dialog opening) or a silence longer than a report, the target
// hears the whole report that follows and nothing else.
TEST_F(ReportInterrottiSuLinea, NoModelJoinsAHalfReportWithTheNextOne)
{
    for (int tipo = 1; tipo <= 8; ++tipo) {
        for (bool ripresa : {true, false}) {
            SCOPED_TRACE("model " + std::to_string(tipo) + (ripresa ? ", hold and resume" : ", silence"));
            TTavolettaPty sim(portaProva);
            ASSERT_TRUE(sim.Valida());
            reg.Svuota();
            CDigit d(Dati(tipo));
            ASSERT_TRUE(MetaRaccolta(d, sim, tipo));
            if (ripresa) {
                d.StopCommNotification();
                ASSERT_EQ(d.SetCommNotificationTo(&reg), 1);
            } else {
                tick.Avanza(pausaRaccolta + 1);
            }
            ASSERT_TRUE(SuonaFinoA(sim, tipo, intero, TTavolettaPty::LunghezzaReport(tipo), reg, 1));
            EXPECT_EQ(reg.Notifiche(), std::vector<TNotifica>{Mossa(intero.x, intero.y)});
            d.StopCommNotification();
        }
    }
}

}  // namespace
