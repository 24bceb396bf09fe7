#include "winui.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

#include "resources/stringhe.h"

const char* const IDC_WAIT = "IDC_WAIT";

namespace {

class TInterfacciaPredefinita : public TInterfacciaUtente {
public:
    int messageBox(HWND, const char* text, const char* caption, unsigned flags) override
    {
        std::fprintf(stderr, "[%s] %s\n", caption ? caption : "", text ? text : "");
        return (flags & 0x0F) == MB_YESNO ? IDYES : IDOK;
    }
    void beep(unsigned) override {}
};

TInterfacciaPredefinita predefinita;
std::atomic<TInterfacciaUtente*> interfaccia{&predefinita};
std::atomic<HCURSOR> cursore{nullptr};
std::atomic<TSorgenteTick> sorgenteTick{nullptr};

}  // namespace

void ImpostaInterfacciaUtente(TInterfacciaUtente* handler)
{
    interfaccia.store(handler ? handler : &predefinita);
}

int MessageBoxA(HWND owner, const char* text, const char* caption, unsigned flags)
{
    return interfaccia.load()->messageBox(owner, text, caption, flags);
}

int MessageBeep(unsigned type)
{
    interfaccia.load()->beep(type);
    return 1;
}

HCURSOR LoadCursorA(HINSTANCE, const char* name) { return name; }

HCURSOR SetCursor(HCURSOR nuovo)
{
    const HCURSOR prima = cursore.exchange(nuovo);
    if (prima != nuovo) interfaccia.load()->cursore(nuovo);
    return prima;
}

HCURSOR CursoreCorrente() { return cursore.load(); }

int LoadStringA(HINSTANCE, unsigned id, char* buf, int size)
{
    if (!buf || size <= 0) return 0;
    const char* testo = TestoRisorsa(id);
    if (!testo) {
        buf[0] = '\0';
        return 0;
    }
    std::snprintf(buf, static_cast<std::size_t>(size), "%s", testo);
    return static_cast<int>(std::strlen(buf));
}

void ImpostaSorgenteTick(TSorgenteTick sorgente) { sorgenteTick.store(sorgente); }

std::uint32_t GetTickCount()
{
    if (TSorgenteTick s = sorgenteTick.load()) return s();
    using namespace std::chrono;
    const auto ms = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    return static_cast<std::uint32_t>(ms);
}

void Sleep(std::uint32_t ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }
