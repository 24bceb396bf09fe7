// The set-up file: every field goes round; a missing, cut, spoiled or newer file leaves the record.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "file_impostazioni.h"
#include "support/cartella_temporanea.h"

namespace {

class FileImpostazioni : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(cartella.percorso.empty()); }
    void Scrivi(const std::string& testo) { std::ofstream(percorso) << testo; }

    TCartellaTemporanea cartella;
    const std::string percorso = cartella.percorso + "/velmarin/setup";
};

TDataDigit Esempio()
{
    TDataDigit d{};
    d.tipo = 6, d.porta = 3, d.velocita = 19200, d.parita = 'O', d.bitDati = 8, d.bitStop = 2, d.reset = 1;
    d.risoluzione = 2, d.numBottoni = 16;
    const std::uint8_t f[16] = {1, 6, 4, 8, 5, 2, 0, 0, 1, 8, 0, 0, 0, 0, 6, 5};
    std::memcpy(d.funzBott, f, sizeof f);
    d.limitiDefiniti = true, d.xMin = -120, d.yMin = 35, d.xMax = 41000, d.yMax = 39999;
    return d;
}

TEST_F(FileImpostazioni, EveryFieldGoesRound)
{
    std::string messaggio;
    TDataDigit vuoto{};
    EXPECT_EQ(LeggiImpostazioni(percorso, vuoto, messaggio), TEsitoImpostazioni::assente);
    for (bool limiti : {true, false}) {
        TDataDigit d = Esempio();
        d.limitiDefiniti = limiti;
        if (!limiti) d.xMin = d.yMin = d.xMax = d.yMax = 0;
        ASSERT_TRUE(ScriviImpostazioni(percorso, d, messaggio)) << messaggio;
        TDataDigit letto{};
        ASSERT_EQ(LeggiImpostazioni(percorso, letto, messaggio), TEsitoImpostazioni::letto) << messaggio;
        EXPECT_EQ(std::memcmp(&letto, &d, sizeof d), 0);
        // The same file with the line ends of a copy made on Windows.
        std::ifstream in(percorso);
        std::string crlf;
        for (char c; in.get(c);) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
        Scrivi(crlf);
        letto = {};
        ASSERT_EQ(LeggiImpostazioni(percorso, letto, messaggio), TEsitoImpostazioni::letto) << messaggio;
        EXPECT_EQ(std::memcmp(&letto, &d, sizeof d), 0);
    }
    // Under a file, or over a folder that holds one: refused, saying which step failed.
    const std::string sottoUnFile = percorso + "/setup", cartellaPiena = cartella.percorso + "/velmarin";
    EXPECT_FALSE(ScriviImpostazioni(sottoUnFile, Esempio(), messaggio));
    EXPECT_EQ(messaggio.rfind("cannot write " + sottoUnFile + ".new (", 0), 0u) << messaggio;
    EXPECT_FALSE(ScriviImpostazioni(cartellaPiena, Esempio(), messaggio));
    EXPECT_EQ(messaggio.rfind("cannot replace " + cartellaPiena + " (", 0), 0u) << messaggio;
    EXPECT_FALSE(std::filesystem::exists(cartellaPiena + ".new"));
}

// Each range at both its ends is read, and the value past each end refused.
TEST_F(FileImpostazioni, EachRangeTakesItsEndsAndRefusesWhatLiesBeyond)
{
    std::string buono, messaggio;
    ASSERT_TRUE(ScriviImpostazioni(percorso, Esempio(), messaggio));
    {
        std::ifstream in(percorso);
        buono.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    const std::string limiti = "limits -120 35 41000 39999", funzioni = "functions 1 6 4 8 5 2 0 0 1 8 0 0 0 0 6 5";
    const struct {
        std::string da, a;
        bool letto;
    } casi[] = {
        {"model 6", "model 1", true},       {"model 6", "model 8", true},       {"model 6", "model 0", false},
        {"model 6", "model 9", false},      {"port 3", "port 1", true},         {"port 3", "port 4", true},
        {"port 3", "port 0", false},        {"port 3", "port 5", false},        {"resolution 2", "resolution 1", true},
        {"resolution 2", "resolution 3", true}, {"resolution 2", "resolution 0", false},
        {"resolution 2", "resolution 4", false},
        {limiti, "limits -2147483648 -2147483648 2147483647 2147483647", true},
        {limiti, "limits -2147483649 0 1 1", false},  {limiti, "limits 0 0 2147483648 1", false},
        {funzioni, "functions 0 1 2 4 5 6 8 0 0 0 0 0 0 0 0 0", true},
        {funzioni, "functions 3 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0", false},
        {funzioni, "functions 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 7", false},
        {funzioni, "functions 9 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0", false},
    };
    for (const auto& c : casi) {
        std::string testo = buono;
        testo.replace(testo.find(c.da), c.da.size(), c.a);
        Scrivi(testo);
        TDataDigit d{};
        EXPECT_EQ(LeggiImpostazioni(percorso, d, messaggio) == TEsitoImpostazioni::letto, c.letto) << c.a << ": " << messaggio;
    }
}

TEST_F(FileImpostazioni, ABadFileLeavesTheRecordAndSaysWhy)
{
    std::string buono;
    ASSERT_TRUE(ScriviImpostazioni(percorso, Esempio(), buono));
    {
        std::ifstream in(percorso);
        buono.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    auto Sostituisci = [&](const std::string& da, const std::string& a) {
        std::string s = buono;
        s.replace(s.find(da), da.size(), a);
        return s;
    };
    const struct {
        std::string testo, messaggio;
    } casi[] = {
        {buono.substr(0, buono.find("functions")), "no functions line; the file is cut short"},
        {buono.substr(0, buono.find("limits") + 9), "bad limits value"},
        {Sostituisci("model 6", "model 9"), "line 3: bad model value: 9"},
        {Sostituisci("baud 19200", "baud 19201"), "bad baud value"},
        {Sostituisci("parity O", "parity X"), "bad parity value"},
        {Sostituisci("functions 1 6", "functions 1 7"), "bad functions value"},
        {Sostituisci("functions 1 6 4", "functions 1 6"), "bad functions value"},
        {Sostituisci("port 3", "port 3x"), "bad port value"},
        {Sostituisci("reset 1", "colour blue"), "unknown setting colour"},
        {buono + "model 6\n", "model is set twice"},
        {Sostituisci("version 1", "version 2"), "written by a newer velmarin-host (version 2;"},
        {Sostituisci("version 1", "version one"), "line 2: the version is not a number"},
        {std::string("\x7f" "ELF\x01\x02\0\0", 8), "holds binary data"},
        {Sostituisci("model 6", "model \x1b[2J6"), "holds binary data"},  // a terminal's escape, never echoed
        {Sostituisci("model 6", std::string("model 6\0", 8)), "holds binary data"},
        {buono + "#" + std::string(64 * 1024, 'x') + "\n", "is not a set-up file"},  // over 64 KiB
        {Sostituisci("model 6", "model \xc3\xa9\x7f" "6"), "bad model value: ???6"},
    };
    for (const auto& c : casi) {
        Scrivi(c.testo);
        TDataDigit d{};
        d.tipo = 2;
        std::string messaggio;
        EXPECT_EQ(LeggiImpostazioni(percorso, d, messaggio), TEsitoImpostazioni::errato) << c.testo;
        EXPECT_NE(messaggio.find(c.messaggio), std::string::npos) << messaggio;
        EXPECT_EQ(d.tipo, 2) << "the record is untouched: " << c.testo;
        EXPECT_EQ(d.limitiDefiniti, false);
    }
    std::filesystem::remove(percorso);
    std::filesystem::create_directory(percorso);
    TDataDigit d{};
    std::string messaggio;
    EXPECT_EQ(LeggiImpostazioni(percorso, d, messaggio), TEsitoImpostazioni::errato);
    EXPECT_NE(messaggio.find("is a folder"), std::string::npos) << messaggio;
}

TEST(PercorsoImpostazioni, FollowsTheOptionThenTheEnvironment)
{
    const std::string casa = std::getenv("HOME") ? std::getenv("HOME") : "";
    EXPECT_EQ(PercorsoImpostazioni("/x/y"), "/x/y");
    setenv("XDG_CONFIG_HOME", "/cfg", 1);
    EXPECT_EQ(PercorsoImpostazioni(""), "/cfg/velmarin/setup");
    setenv("XDG_CONFIG_HOME", "relative", 1);  // not absolute: ignored
    setenv("HOME", "/home/u", 1);
    EXPECT_EQ(PercorsoImpostazioni(""), "/home/u/.config/velmarin/setup");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", casa.c_str(), 1);
}

}  // namespace
