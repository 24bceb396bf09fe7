// The report formats byte by byte, then the simulated tablets' reports decoded back.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "reports/digit_link.h"
#include "sim/codifica_report.h"

namespace {

using namespace std::string_literals;
constexpr std::int32_t massimo32 = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t minimo32 = std::numeric_limits<std::int32_t>::min();
const std::string lunga(300, '5');  // a field longer than any line store

struct TCaso {
    const char* legenda;
    int formato;
    int lenReport;     // 0: the read's length; but in format 4 a shorter read is padded to it
    std::string byte;  // one read
    int esito;
    std::int32_t x, y, bottone;
    int accumDopo;     // bytes left gathered after the call; not 0: no padding
};

// Text reads are padded with spaces; binary ones with 0x00, which no sync test passes.
const TCaso casi[] = {
    {"f1 sync after two junk bytes, y negative", 1, 15, "\x01\x02\x91\x2C\x01\x40\x03"s, 1, 172, -448, 1, 0},
    {"f1 data byte with bit 7 counts as negative", 1, 15, "\x98\xC5\x00\x00\x00"s, 1, -59, 0, 0, 0},
    {"f1 bit 5 of b0 is ignored", 1, 15, "\xB8\x01\x00\x02\x00"s, 1, 1, 2, 0, 0},
    {"f1 0xC0 fails the sync test", 1, 15, "\xC0\x98\x01\x00\x02\x00"s, 1, 1, 2, 0, 0},
    {"f1 last usable sync at 10", 1, 15, std::string(10, '\0') + "\x98\x01\x00\x02\x00"s, 1, 1, 2, 0, 0},
    {"f1 sync at 11 lacks its tail", 1, 15, std::string(11, '\0') + "\x98\x01\x00\x02"s, 0, -1, -1, -1, 0},
    {"f1 no sync at all", 1, 15, "\x01\x7F\x40"s, 0, -1, -1, -1, 0},
    {"f1 first sync wins over a later report", 1, 15, "\x90\x01\x00\x02\x00\x98\x05\x00\x06\x00"s, 1, 1, -2, 0, 0},

    {"f5 worked example", 5, 20, "\x40\x21\x15\x0A\x00\x3F\x01\x00"s, 1, 661, 127, 1, 0},
    {"f5 b4 bit 5 rejects", 5, 20, "\x40\x21\x15\x0A\x23\x3F\x01\x00"s, 0, -1, -1, -1, 0},
    {"f5 b7 bit 5 rejects", 5, 20, "\x40\x21\x15\x0A\x00\x3F\x01\x20"s, 0, -1, -1, -1, 0},
    {"f5 bits 7..6 of data ignored", 5, 20, "\x40\xE1\xD5\xCA\x00\xFF\xC1\x00"s, 1, 661, 127, 1, 0},
    {"f5 last usable sync at 12", 5, 20, std::string(12, '\0') + "\x40\x01\x02\x00\x00\x03\x00\x00"s, 1, 2, 3, 1, 0},
    {"f5 sync at 13 lacks its tail", 5, 20, std::string(13, '\0') + "\x40\x01\x02\x00\x00\x03\x00"s, 0, -1, -1, -1, 0},
    {"f5 a 0x40 among the data cuts the report, the next is decoded", 5, 20, "\x40\x00\x01\x00\x20\x00\x40\x01\x15\x0A\x00\x3F\x01\x00"s, 1, 661, 127, 1, 0},

    {"f8 worked example", 8, 15, "\xC4\x02\x34\x00\x05\x06"s, 1, 308, 646, 1, 0},
    {"f8 a sync in b3 cuts the report, the next is decoded", 8, 15, "\xC4\x02\x34\x80\x00\x01\x00\x00\x02"s, 1, 1, 2, 0, 0},
    {"f8 a report cut at b5 with nothing whole behind", 8, 0, "\xC4\x02\x34\x00\x05\x86\x01"s, 0, -1, -1, -1, 0},
    {"f8 two button bits give no button", 8, 15, "\xCC\x02\x34\x00\x05\x06"s, 1, 308, 646, 0, 0},
    {"f8 button bit without bit 6 gives none", 8, 15, "\x84\x02\x34\x00\x05\x06"s, 1, 308, 646, 0, 0},
    {"f8 b3 bits 6..2 ignored, y top bits", 8, 15, "\x80\x00\x01\x7F\x00\x02"s, 1, 1, 49154, 0, 0},
    {"f8 last usable sync at 9", 8, 15, std::string(9, '\0') + "\x80\x00\x01\x00\x00\x02"s, 1, 1, 2, 0, 0},
    {"f8 short gather waits", 8, 15, "\xC4\x02\x34\x00\x05\x06"s + std::string(8, '\0'), 0, -1, -1, -1, 14},
    {"f8 sync at 10 lacks its tail", 8, 15, std::string(10, '\0') + "\x80\x00\x01\x00\x00"s, 0, -1, -1, -1, 0},

    {"f2 worked example", 2, 40, "0,3\r\n00123,00456,1\r\n00123,00456,1\r\n00123", 1, 123, 456, 1, 0},
    {"f2 a line of one comma is dropped, the next decoded", 2, 40, "9\n12,34\n5,6,7\n", 1, 5, 6, 7, 0},
    {"f2 one comma and nothing whole behind", 2, 40, "9\n12,34\n5,6\n", 0, -1, -1, -1, 0},
    {"f2 a third comma: a joined line", 2, 40, "\n1,2,3,4\n", 0, -1, -1, -1, 0},
    {"f2 signs and CR skipped", 2, 40, "\n-123,+45,0\r\n", 1, 123, 45, 0, 0},
    {"f2 line cut by the gather's end", 2, 0, "99\n123,456,1", 0, -1, -1, -1, 0},
    {"f2 no LF at all", 2, 40, "123,456,1", 0, -1, -1, -1, 0},
    {"f2 nothing behind the first LF", 2, 6, "1,2,3\n", 0, -1, -1, -1, 0},
    {"f2 a field without digits", 2, 40, "\n1,,0\n", 0, -1, -1, -1, 0},
    {"f2 five digits and code 16", 2, 40, "\n99999,00001,16\n", 1, 99999, 1, 16, 0},
    {"f2 six digits: a joined line", 2, 40, "\n123456,1,0\n", 0, -1, -1, -1, 0},
    {"f2 code 17 no cursor sends", 2, 40, "\n1,2,17\n", 0, -1, -1, -1, 0},
    {"f2 three-digit code", 2, 40, "\n1,2,001\n", 0, -1, -1, -1, 0},
    {"f2 short gather waits", 2, 40, "\n1,2,0\n", 0, -1, -1, -1, 7},
    {"f2 300-digit fields", 2, 0, "\n" + lunga + "," + lunga + "," + lunga + "\n", 0, -1, -1, -1, 0},

    {"f3 code 3 is button 3 too", 3, 40, "\n1,2,3\n", 1, 1, 2, 3, 0},
    {"f3 rejected line stays rejected", 3, 40, "\n1,2\n", 0, -1, -1, -1, 0},

    {"f4 worked example", 4, 40, "@D3+00123-00456\r\n", 1, 123, -456, 4, 0},
    {"f4 no D, no button", 4, 40, "@U3+00123-00456\r\n", 1, 123, -456, 0, 0},
    {"f4 letter A is button 1", 4, 40, "@DA+1+2\r\n", 1, 1, 2, 1, 0},
    {"f4 letter F is button 6", 4, 40, "@DF+1+2\r\n", 1, 1, 2, 6, 0},
    {"f4 letter G with D is no report", 4, 40, "@DG+1+2\r\n", 0, -1, -1, -1, 0},
    {"f4 junk before the @", 4, 40, "7+-\r\n@D1-5+6\r\n", 1, -5, 6, 2, 0},
    {"f4 digits before the first sign skipped", 4, 40, "@D1 99+5-6\r\n", 1, 5, -6, 2, 0},
    {"f4 a third sign: a joined line", 4, 40, "@D1+5-6+7\r\n", 0, -1, -1, -1, 0},
    {"f4 a sign without digits", 4, 40, "@D1-+2\r\n", 0, -1, -1, -1, 0},
    {"f4 ten digits saturate", 4, 40, "@U0+9999999999-9999999999\r\n", 1, massimo32, minimo32, 0, 0},
    {"f4 eleven digits", 4, 40, "@U0+99999999999-1\r\n", 0, -1, -1, -1, 0},
    {"f4 an @ cuts the line, the next is decoded", 4, 40, "@D1+001@U0+3-4\r\n", 1, 3, -4, 0, 0},
    {"f4 short line", 4, 40, "@D\n", 0, -1, -1, -1, 0},
    {"f4 one sign", 4, 40, "@D3+00123\r\n", 0, -1, -1, -1, 0},
    {"f4 bytes behind the line dropped", 4, 40, "@D1+1+2\r\n@D2+3+4\r\n", 1, 1, 2, 2, 0},
    {"f4 y beyond the 40-byte line", 4, 0, "@D1+" + lunga + "-" + lunga + "\r\n", 0, -1, -1, -1, 0},
    {"f4 unfinished line waits", 4, 40, "@D3+00123-004", 0, -1, -1, -1, 13},
    {"f4 no @ yet waits", 4, 40, "12345\r\n", 0, -1, -1, -1, 7},
    {"f4 full gather without a line is dropped", 4, 40, "@D3+" + std::string(36, '1'), 0, -1, -1, -1, 0},

    {"f6 narrow worked example", 6, 40, "\r@A,00123,00456\r", 1, 123, 456, 1, 0},
    {"f6 junk before the first CR", 6, 40, "56\r@P,00001,00002\r", 1, 1, 2, 16, 0},
    {"f6 second CR at c+13 rejected", 6, 40, "\r@A,00123,004\r", 0, -1, -1, -1, 0},
    {"f6 second CR at c+14: a cut line", 6, 40, "\r@A,00123,0045\r", 0, -1, -1, -1, 0},
    {"f6 a cut line dropped, the next decoded", 6, 40, "\r@A,001\r@B,00001,00002\r", 1, 1, 2, 2, 0},
    {"f6 button Q rejects, fields stored", 6, 40, "\r@Q,00123,00456\r", 0, 123, 456, -1, 0},
    {"f6 status byte fails its test", 6, 40, "\rPA,00123,00456\r", 0, -1, -1, -1, 0},
    {"f6 no comma at c+3", 6, 40, "\r@A;00123,00456\r", 0, -1, -1, -1, 0},
    {"f6 no layout comma", 6, 40, "\r@A,001230004567\r", 0, -1, -1, -1, 0},
    {"f6 wide comma wins over narrow", 6, 40, "\r@A,12345,,234567\r", 1, 12345, 234567, 1, 0},
    {"f6 narrow comma on a wide length", 6, 40, "\r@A,00123,0045678\r", 0, -1, -1, -1, 0},
    {"f6 x without digits", 6, 40, "\r@A,     ,00456\r", 0, -1, -1, -1, 0},
    {"f6 signs skipped in the columns", 6, 40, "\r@A,-0012,+0045\r", 1, 12, 45, 1, 0},
    {"f6 300 bytes before the second CR", 6, 0, "\r@A,00123,00456" + lunga + "\r", 0, -1, -1, -1, 0},
    {"f6 one CR only", 6, 40, "@A,00123,00456\r", 0, -1, -1, -1, 0},
    
    {"f7 worked example", 7, 40, "\r\nAB101234567890\r", 1, 1234, 56789, 2, 0},
    {"f7 letter A is button 1", 7, 40, "\rABA01234567890\r", 1, 1234, 56789, 1, 0},
    {"f7 letter B is no button", 7, 40, "\rABB01234567890\r", 1, 1234, 56789, 0, 0},
    {"f7 LF inside moves the columns up", 7, 40, "\rAB1012\n3456789\r", 1, 1234, 56789, 2, 0},
    {"f7 no digit in x", 7, 40, "\rAB1abcde56789\r", 0, -1, -1, -1, 0},
    {"f7 no digit in y", 7, 40, "\rAB101234-----\r", 0, -1, -1, -1, 0},
    {"f7 twelve characters, y from four", 7, 40, "\rAB1012345678\r", 1, 1234, 5678, 2, 0},
    {"f7 eleven characters", 7, 40, "\rAB101234567\r", 0, -1, -1, -1, 0},
    {"f7 300 bytes before the second CR", 7, 0, "\rAB10123456789" + lunga + "\r", 0, -1, -1, -1, 0},
    {"f7 fifteen characters: a joined line", 7, 40, "\rAB1012345678900\r", 0, -1, -1, -1, 0},
    {"f7 one CR only", 7, 40, "AB101234567890\r", 0, -1, -1, -1, 0},
    {"f7 an empty line is dropped, the next decoded", 7, 40, "\r\rAB101234567890\r", 1, 1234, 56789, 2, 0},
};

// One read through the report path; stale digits behind it catch a decoder that reads past.
void Consegna(int formato, int lenReport, const std::string& lettura)
{
    AzzeraDigitLink(digitLink);
    std::memset(digitLink.bufReport, '7', sizeof digitLink.bufReport);
    Scrivi(digitLink.tipoReport, formato);
    Scrivi(digitLink.lenReport, lenReport);
    std::memcpy(digitLink.bufLettura, lettura.data(), lettura.size());
    digitLink.numLetti = static_cast<std::int32_t>(lettura.size());
}

TEST(Decodifica, EachReadGivesItsReport)
{
    for (const TCaso& c : casi) {
        SCOPED_TRACE(c.legenda);
        std::string lettura = c.byte;
        const int len = c.lenReport == 0 ? static_cast<int>(lettura.size()) : c.lenReport;
        const bool binario = c.formato == 1 || c.formato == 5 || c.formato == 8;
        if (c.formato != 4 && lettura.size() < static_cast<std::size_t>(len) && c.accumDopo == 0)
            lettura.resize(static_cast<std::size_t>(len), binario ? '\0' : ' ');
        Consegna(c.formato, len, lettura);
        EXPECT_EQ(ProcessaReport(digitLink), c.esito);
        EXPECT_EQ(Leggi(digitLink.xReport), c.x);
        EXPECT_EQ(Leggi(digitLink.yReport), c.y);
        EXPECT_EQ(Leggi(digitLink.bottone), c.bottone);
        EXPECT_EQ(digitLink.numAccum, c.accumDopo);
    }
}

// Every model's reports come back unchanged, fed a gather at a time as the reader does.
struct TModello {
    int tipo, lenReport;
    std::vector<std::int32_t> valori;  // for x and for y, the format's edges among them
    int bottoneMassimo;                // buttons 0..this come back unchanged
};

const TModello modelli[] = {
    {1, 15, {0, 1, -1, 127, 128, 12345, 16383, -16383}, 7},
    {2, 40, {0, 1, 9, 10, 12345, 99999}, 9},
    {3, 40, {0, 1, 12345, 99999}, 4},
    {4, 40, {0, 1, -1, 123456, -99999, massimo32, minimo32}, 10},
    {5, 20, {0, 1, 63, 64, 4096, 131071}, 31},
    {6, 40, {0, 1, 99999, 100000, 654321, 999999}, 16},
    {7, 40, {0, 1, 12345, 99999}, 10},
    {8, 15, {0, 1, 127, 128, 16384, 65535}, 4},
};

TEST(AndataRitorno, EncodedReportDecodesToItsValues)
{
    for (const TModello& m : modelli) {
        SCOPED_TRACE(m.tipo);
        for (std::int32_t x : m.valori)
            for (std::int32_t y : m.valori)
                for (std::int32_t b = 0; b <= m.bottoneMassimo; ++b) {
                    std::string flusso;
                    for (int r = 0; r < 6; ++r) flusso += CodificaReport(m.tipo, x, y, b);
                    Consegna(m.tipo, m.lenReport, "");
                    int esito = 0;
                    for (std::size_t pos = 0; esito == 0 && pos + m.lenReport <= flusso.size(); pos += m.lenReport) {
                        std::memcpy(digitLink.bufLettura, flusso.data() + pos, m.lenReport);
                        digitLink.numLetti = m.lenReport;
                        esito = ProcessaReport(digitLink);
                    }
                    const std::array<std::int32_t, 3> letti{Leggi(digitLink.xReport), Leggi(digitLink.yReport),
                                                            Leggi(digitLink.bottone)};
                    ASSERT_EQ(letti, (std::array<std::int32_t, 3>{x, y, b})) << x << " " << y << " " << b;
                }
    }
}

}  // namespace
