// Linux's port list through the C interface: a device under two names is
// one port, listed by number; a port another process holds names it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "sim/tavoletta_pty.h"
#include "support/cartella_temporanea.h"
#include "support/ripeti.h"
#include "velmarin.h"

namespace {

std::vector<velmarin_port_info> Porte()
{
    std::vector<velmarin_port_info> porte(static_cast<std::size_t>(velmarin_list_ports(nullptr, 0)));
    porte.resize(static_cast<std::size_t>(velmarin_list_ports(porte.data(), static_cast<int>(porte.size()))));
    return porte;
}

TEST(ElencoPorte, ADeviceUnderTwoNamesIsOnePortAndTheListGoesByNumber)
{
    TTavolettaPty pty(5);
    ASSERT_TRUE(pty.Valida());
    TCartellaTemporanea cartella;
    const std::string collegamento = cartella.percorso + "/tavoletta";
    ASSERT_EQ(symlink(pty.PercorsoSlave().c_str(), collegamento.c_str()), 0);
    ASSERT_EQ(velmarin_map_port(6, collegamento.c_str()), 1);
    const std::vector<velmarin_port_info> porte = Porte();
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

TEST(ElencoPorte, APortAnotherProcessHoldsIsBusyWithItsHolder)
{
    TTavolettaPty pty(5);
    ASSERT_TRUE(pty.Valida());
    posix_spawn_file_actions_t azioni;
    posix_spawn_file_actions_init(&azioni);
    posix_spawn_file_actions_addopen(&azioni, 0, pty.PercorsoSlave().c_str(), O_RDONLY | O_NOCTTY, 0);
    char sleep[] = "sleep", sessanta[] = "60";
    char* argomenti[] = {sleep, sessanta, nullptr};
    pid_t figlio = 0;
    ASSERT_EQ(posix_spawnp(&figlio, "sleep", &azioni, nullptr, argomenti, environ), 0);
    posix_spawn_file_actions_destroy(&azioni);
    velmarin_port_info tenuta{};
    const bool occupata = AttendiFinche([&] {
        for (const velmarin_port_info& p : Porte())
            if (p.port == 5) tenuta = p;
        return tenuta.busy == 1;
    });
    kill(figlio, SIGTERM);
    waitpid(figlio, nullptr, 0);
    EXPECT_TRUE(occupata);
    EXPECT_EQ(std::string(tenuta.holder), "sleep (pid " + std::to_string(figlio) + ")");
}

}  // namespace
