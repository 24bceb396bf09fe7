// The port list through the C interface: a mapped pseudo-terminal is a port
// of its number, the same device under a second name is listed once, and a
// process that holds it is named.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <vector>

#include "sim/tavoletta_pty.h"
#include "support/cartella_temporanea.h"
#include "velmarin.h"

namespace {

std::vector<velmarin_port_info> Porte()
{
    std::vector<velmarin_port_info> v(static_cast<std::size_t>(velmarin_list_ports(nullptr, 0)));
    v.resize(static_cast<std::size_t>(velmarin_list_ports(v.data(), static_cast<int>(v.size()))));
    return v;
}

const velmarin_port_info* Trova(const std::vector<velmarin_port_info>& porte, const std::string& dispositivo)
{
    for (const auto& p : porte)
        if (dispositivo == p.device) return &p;
    return nullptr;
}

// A child process that holds `percorso` open until the pipe closes.
struct TProcessoCheTiene {
    explicit TProcessoCheTiene(const std::string& percorso)
    {
        int pronto[2], fine[2];
        if (pipe(pronto) != 0 || pipe(fine) != 0) return;
        pid = fork();
        if (pid == 0) {
            close(fine[1]);  // else its own copy would keep the pipe open
            const int fd = open(percorso.c_str(), O_RDWR | O_NOCTTY);
            char c = fd >= 0 ? 'y' : 'n';
            (void)!write(pronto[1], &c, 1);
            (void)!read(fine[0], &c, 1);  // until the parent closes its end
            _exit(0);
        }
        close(pronto[1]);
        close(fine[0]);
        chiudi = fine[1];
        char c = 'n';
        tiene = read(pronto[0], &c, 1) == 1 && c == 'y';
        close(pronto[0]);
    }
    ~TProcessoCheTiene()
    {
        if (chiudi >= 0) close(chiudi);
        if (pid > 0) waitpid(pid, nullptr, 0);
    }
    pid_t pid = -1;
    int chiudi = -1;
    bool tiene = false;
};

TEST(ElencoPorte, AMappedLineIsListedOnceAndItsHolderNamed)
{
    TTavolettaPty pty(5);
    ASSERT_TRUE(pty.Valida());
    TCartellaTemporanea cartella;
    const std::string collegamento = cartella.percorso + "/tavoletta";
    ASSERT_EQ(symlink(pty.PercorsoSlave().c_str(), collegamento.c_str()), 0);
    ASSERT_EQ(velmarin_map_port(6, collegamento.c_str()), 1);

    auto porte = Porte();
    const velmarin_port_info* p = Trova(porte, pty.PercorsoSlave());
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->port, 5);
    EXPECT_STREQ(p->description, "COM5, mapped");
    EXPECT_EQ(p->busy, 0);
    EXPECT_EQ(Trova(porte, collegamento), nullptr) << "the same device under its second name";
    for (std::size_t k = 1; k < porte.size(); ++k) {
        if (porte[k].port) {
            EXPECT_LT(porte[k - 1].port, porte[k].port) << "sorted by port";
        }
    }

    {
        TProcessoCheTiene altro(pty.PercorsoSlave());
        ASSERT_TRUE(altro.tiene);
        porte = Porte();
        p = Trova(porte, pty.PercorsoSlave());
        ASSERT_NE(p, nullptr);
        EXPECT_EQ(p->busy, 1);
        // The child's own name as the system shows it: velmarin_tests, or
        // qemu-i386 where the tests run under the emulator.
        std::ifstream comm("/proc/" + std::to_string(altro.pid) + "/comm");
        std::string nome;
        std::getline(comm, nome);
        ASSERT_FALSE(nome.empty());
        EXPECT_EQ(std::string(p->holder), nome + " (pid " + std::to_string(altro.pid) + ")");
    }
    porte = Porte();
    EXPECT_EQ(Trova(porte, pty.PercorsoSlave())->busy, 0) << "once the other process let go";
    velmarin_map_port(6, nullptr);
}

}  // namespace
