// The library's start and its texts: the module started by the entry point
// with the library's instance, and every text of the string table as the
// platform loads it (on Windows from the resource that windres compiled) equal
// to the list it was made from.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/winui.h"
#include "resources/stringhe.h"
#include "tablet/modulo.h"

namespace {

TEST(TestiTest, EveryTextLoadsAsTheListHoldsItThroughTheModuleStartedAtLoad)
{
    ASSERT_NE(IstanzaLibreria(), nullptr);
    EXPECT_EQ(ModuloLibreria().instance(), IstanzaLibreria());
    int testi = 0;
    for (unsigned id = 10040; id <= 10080; ++id) {
        const char* atteso = TestoRisorsa(id);
        testi += atteso != nullptr;
        EXPECT_EQ(LoadResString(id), atteso ? atteso : "") << id;
        EXPECT_EQ(ModuloLibreria().loadString(id), atteso ? atteso : "") << id;
    }
    EXPECT_EQ(testi, 21);
    const std::string accento = "Tavoletta gi\xC3\xA0 calibrata \n";  // UTF-8, a line break
    EXPECT_EQ(LoadResString(10056).substr(0, accento.size()), accento);
}

TEST(TestiTest, AShortBufferTakesWhatFitsAndItsEnd)
{
    char buf[8];
    std::memset(buf, 'x', sizeof buf);
    EXPECT_EQ(LoadStringA(IstanzaLibreria(), 10070, buf, 4), 3);  // "Errore"
    EXPECT_STREQ(buf, "Err");
    EXPECT_EQ(buf[4], 'x');
    EXPECT_EQ(LoadStringA(IstanzaLibreria(), 10070, buf, 0), 0);
    EXPECT_EQ(LoadStringA(IstanzaLibreria(), 9999, buf, sizeof buf), 0);
    EXPECT_STREQ(buf, "");
}

}  // namespace
