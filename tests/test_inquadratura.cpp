// Reports in time, through the reader's own steps on the test's clock: for
// every model a report cut at each byte, then a whole one after 0 to 150 ms,
// a resume or noise, is never heard as anything not sent; a whole report
// after a pause always is.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "digit.h"
#include "link/raccolta_interrotta.h"
#include "reports/digit_link.h"
#include "reports/inquadratura.h"
#include "sim/codifica_report.h"
#include "sim/stato_puntatore.h"
#include "support/registratore.h"
#include "tablet/catalogo.h"

namespace {

constexpr std::uint32_t quieteLunga = 1000;  // ms: longer than any pause

// A line of model `tipo`, played read by read; a gap longer than the guard's
// limit brings the reader's quiet step first, as in its loop.
class TLinea {
public:
    TLinea(int tipo, std::int32_t velocita = 0)
    {
        TDataDigit d = CDigit().GetDataDigit();
        ImpostaDaCatalogo(d, tipo);
        if (velocita) d.velocita = static_cast<std::int16_t>(velocita);
        CDigit digit(d);
        digit.SendInitString();  // no port: the format and the length only
        ImpostaLineaGuardia(static_cast<std::uint32_t>(d.velocita), d.bitDati, d.parita != 'N', d.bitStop, guardia);
        Scrivi(digitLink.ntfy, &reg);
        SegnalaRipresa(guardia);  // a line just opened, then quiet
        Quiete(quieteLunga);
    }
    ~TLinea() { AzzeraDigitLink(digitLink); }

    // A read of `byte` that arrives `dopo` ms after the last event.
    void Leggi(const std::string& byte, std::uint32_t dopo)
    {
        Quiete(dopo);
        std::memcpy(digitLink.bufLettura, byte.data(), byte.size());
        digitLink.numLetti = static_cast<std::int32_t>(byte.size());
        ProcessaLettura(digitLink, adesso, guardia);
    }
    // `ms` of silence.
    void Quiete(std::uint32_t ms)
    {
        const int limite = AttesaQuiete(digitLink, adesso, guardia);
        if (limite >= 0 && static_cast<std::uint32_t>(limite) <= ms) ProcessaQuiete(digitLink, adesso + limite, guardia);
        adesso += ms;
    }
    void Riprendi() { SegnalaRipresa(guardia); }
    // The reader woken with no bytes (an empty event, another thread's call).
    void Sveglia() { ProcessaQuiete(digitLink, adesso, guardia); }

    TRegistratore reg;

private:
    TGuardiaRaccolta guardia;
    std::uint32_t adesso = 1000;
};

const TStatoPuntatore prima{1009, 2345, 0};     // whole, before the cut one
const TStatoPuntatore tagliato{1207, 3456, 2};  // cut short: a press that must never be heard
const TStatoPuntatore dopo{4321, 8765, 0};     // whole, after it

std::string Report(int tipo, const TStatoPuntatore& s) { return CodificaReport(tipo, s.x, s.y, s.bottone); }

// Formats whose reports mark their first byte: the report behind a cut one is
// found at once; in the others only a line end or a quiet line tells.
bool InizioProprio(int tipo) { return tipo == 1 || tipo == 4 || tipo == 5 || tipo == 8; }

std::string Caso(int tipo, std::size_t taglio, std::uint32_t pausa)
{
    return "model " + std::to_string(tipo) + ", cut after " + std::to_string(taglio) + " bytes, then " +
           std::to_string(pausa) + " ms";
}

TEST(Inquadratura, ACutReportIsNeverHeardAndTheWholeOneAfterAPauseAlwaysIs)
{
    for (int tipo = 1; tipo <= 8; ++tipo) {
        const std::string taglia = Report(tipo, tagliato);
        for (std::size_t k = 1; k < taglia.size(); ++k) {
            for (std::uint32_t pausa : {0u, 10u, 50u, 150u}) {
                SCOPED_TRACE(Caso(tipo, k, pausa));
                TLinea linea(tipo);
                linea.Leggi(Report(tipo, prima), 0);
                const std::string resto = Report(tipo, dopo);
                if (pausa == 0) {
                    linea.Leggi(taglia.substr(0, k) + resto, 200);
                } else {
                    linea.Leggi(taglia.substr(0, k), 200);
                    linea.Leggi(resto, pausa);
                }
                linea.Quiete(quieteLunga);
                const std::vector<TNotifica> udito = linea.reg.Notifiche();
                // Model 7's line ends at its CR; the LF behind it only parts
                // two lines, so a cut before the LF leaves the line whole.
                std::vector<TNotifica> inviato{Udito(prima), Udito(dopo)};
                if (tipo == 7 && k == taglia.size() - 1) inviato.insert(inviato.begin() + 1, Udito(tagliato));
                if (InizioProprio(tipo) || pausa == 150) EXPECT_EQ(udito, inviato);
                else EXPECT_TRUE(Sottosequenza(udito, inviato) && !udito.empty() && udito[0] == Udito(prima))
                    << ::testing::PrintToString(udito);
            }
        }
    }
}

// Noise between reports, a resume inside one: nothing heard not sent, and the
// next whole report after a pause heard.
TEST(Inquadratura, NoiseAndAResumeBetweenReportsInventNothing)
{
    const std::string rumori[] = {"\x05", "\x7F\x3F", "#!", "7", ",", "\r", "\n", "@", "\x90\x01", "\xC0"};
    for (int tipo = 1; tipo <= 8; ++tipo) {
        for (const std::string& rumore : rumori) {
            SCOPED_TRACE("model " + std::to_string(tipo) + ", noise " + ::testing::PrintToString(rumore));
            TLinea linea(tipo);
            linea.Leggi(Report(tipo, prima), 0);
            linea.Leggi(rumore + Report(tipo, tagliato), 200);
            linea.Leggi(Report(tipo, dopo), 150);
            linea.Quiete(quieteLunga);
            const std::vector<TNotifica> udito = linea.reg.Notifiche();
            EXPECT_TRUE(Sottosequenza(udito, {Udito(prima), Udito(tagliato), Udito(dopo)}))
                << ::testing::PrintToString(udito);
            EXPECT_EQ(udito.back(), Udito(dopo));
        }
        SCOPED_TRACE("model " + std::to_string(tipo) + ", resume inside a report");
        const std::string taglia = Report(tipo, tagliato);
        TLinea linea(tipo);
        linea.Leggi(taglia.substr(0, taglia.size() / 2), 0);
        linea.Riprendi();
        linea.Leggi(taglia.substr(taglia.size() / 2) + Report(tipo, dopo), 5);
        linea.Leggi(Report(tipo, prima), 150);
        linea.Quiete(quieteLunga);
        const std::vector<TNotifica> udito = linea.reg.Notifiche();
        EXPECT_TRUE(Sottosequenza(udito, {Udito(dopo), Udito(prima)})) << ::testing::PrintToString(udito);
        EXPECT_EQ(udito.back(), Udito(prima));
    }
    // A resume after a whole line, then a report without its first byte (the
    // hold dropped it): no line starts there, so nothing more is heard.
    for (int tipo = 1; tipo <= 8; ++tipo) {
        TLinea linea(tipo);
        linea.Leggi(Report(tipo, prima), 0);
        linea.Quiete(quieteLunga);
        linea.Riprendi();
        linea.Leggi(Report(tipo, tagliato).substr(1), 5);
        linea.Quiete(quieteLunga);
        EXPECT_EQ(linea.reg.Notifiche(), std::vector<TNotifica>{Udito(prima)}) << "model " << tipo;
    }
}

// A report split by a gap is one report within the pause, even if the reader
// wakes in the gap, and none beyond it. At 9600 baud every pause is at least
// 50 ms; at 4800 model 2's is 103 (3 x 15 x 11 bits).
TEST(Inquadratura, AGapInsideAReportKeepsItWithinThePauseAndDropsItBeyond)
{
    struct TGap {
        int tipo;
        std::int32_t velocita;
        std::uint32_t ms;
        bool udito;
    };
    std::vector<TGap> casi;
    for (int tipo = 1; tipo <= 8; ++tipo) {
        casi.push_back({tipo, 9600, 20, true});
        casi.push_back({tipo, 9600, 150, false});
    }
    casi.push_back({2, 4800, 90, true});
    casi.push_back({2, 4800, 120, false});
    for (const TGap& c : casi) {
        SCOPED_TRACE("model " + std::to_string(c.tipo) + " at " + std::to_string(c.velocita) + ", gap " +
                     std::to_string(c.ms) + " ms");
        TLinea linea(c.tipo, c.velocita);
        const std::string r = Report(c.tipo, tagliato);
        linea.Leggi(r.substr(0, r.size() / 2), 200);
        linea.Quiete(c.ms);
        linea.Sveglia();  // just before the rest comes: it closes nothing within the pause
        linea.Leggi(r.substr(r.size() / 2), 0);
        linea.Quiete(quieteLunga);
        EXPECT_EQ(linea.reg.Notifiche(), c.udito ? std::vector<TNotifica>{Udito(tagliato)} : std::vector<TNotifica>{});
    }
}

// The pause is three times a longest report on the line, in whole ms: a
// Rolley report is 17 characters; 7E2 is 11 bits a character, 8N1 ten.
TEST(Inquadratura, ThePauseIsThreeReportsOfTheLine)
{
    EXPECT_EQ(PausaLinea(6, 4800, BitCarattere(7, true, 2)), 117u);  // 3 * 17 * 11 / 4.8 = 116.9
    EXPECT_EQ(PausaLinea(6, 4800, BitCarattere(8, false, 1)), 107u);  // 106.25
    EXPECT_EQ(PausaLinea(6, 19200, BitCarattere(8, false, 1)), 50u);  // 26.6: never under 50
}

}  // namespace
