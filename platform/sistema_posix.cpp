// The services on POSIX, our stand-ins: a box goes to standard error and is
// answered with its default button, a beep is silent, the cursor is only
// remembered, the string table is the one built into the library, the tick
// is the steady clock.
#include "platform/sistema.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

#include "resources/stringhe.h"

namespace {

constexpr unsigned mbTipi = 0x0F, mbSiNo = 0x04;
constexpr int idOk = 1, idSi = 6;

std::atomic<const void*> cursore{nullptr};

}  // namespace

int SistemaMessaggio(void*, const char* testo, const char* titolo, unsigned flags)
{
    std::fprintf(stderr, "[%s] %s\n", titolo ? titolo : "", testo ? testo : "");
    return (flags & mbTipi) == mbSiNo ? idSi : idOk;
}

void SistemaBeep(unsigned) {}

// The name itself stands for the cursor.
const void* SistemaCaricaCursore(void*, const char* nome) { return nome; }

const void* SistemaImpostaCursore(const void* nuovo) { return cursore.exchange(nuovo); }

const void* SistemaCursoreCorrente() { return cursore.load(); }

int SistemaStringa(void*, unsigned id, char* buf, int size)
{
    const char* testo = TestoRisorsa(id);
    if (!testo) {
        buf[0] = '\0';
        return 0;
    }
    std::snprintf(buf, static_cast<std::size_t>(size), "%s", testo);
    return static_cast<int>(std::strlen(buf));
}

std::uint32_t SistemaTick()
{
    using namespace std::chrono;
    const auto ms = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    return static_cast<std::uint32_t>(ms);
}

void SistemaAttesa(std::uint32_t ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }
