// Linux's port list: a device under two names is one port, listed by number (holders: StrumentoHost).
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "sim/tavoletta_pty.h"
#include "support/cartella_temporanea.h"
#include "velmarin.h"

namespace {

TEST(ElencoPorte, ADeviceUnderTwoNamesIsOnePortAndTheListGoesByNumber)
{
    TTavolettaPty pty(5);
    ASSERT_TRUE(pty.Valida());
    TCartellaTemporanea cartella;
    const std::string collegamento = cartella.percorso + "/tavoletta";
    ASSERT_EQ(symlink(pty.PercorsoSlave().c_str(), collegamento.c_str()), 0);
    ASSERT_EQ(velmarin_map_port(6, collegamento.c_str()), 1);
    std::vector<velmarin_port_info> porte(static_cast<std::size_t>(velmarin_list_ports(nullptr, 0)));
    porte.resize(static_cast<std::size_t>(velmarin_list_ports(porte.data(), static_cast<int>(porte.size()))));
    velmarin_map_port(6, nullptr);

    int volte = 0;
    for (std::size_t k = 0; k < porte.size(); ++k) {
        if (pty.PercorsoSlave() == porte[k].device || collegamento == porte[k].device) {
            ++volte;
            EXPECT_EQ(porte[k].port, 5);
            EXPECT_STREQ(porte[k].device, pty.PercorsoSlave().c_str());
        }
        if (k > 0 && porte[k].port) {
            EXPECT_LT(porte[k - 1].port, porte[k].port) << "sorted by port";
        }
    }
    EXPECT_EQ(volte, 1);
}

}  // namespace
