// The services of winui.h: the library's handlers in front of what the
// platform does (sistema.h).
#include "winui.h"

#include <atomic>
#include <cstdint>

#include "platform/sistema.h"

// The platform's resource number of the wait cursor.
const char* const IDC_WAIT = reinterpret_cast<const char*>(std::uintptr_t{32514});

namespace {

class TInterfacciaPredefinita : public TInterfacciaUtente {
public:
    int messageBox(HWND owner, const char* text, const char* caption, unsigned flags) override
    {
        return SistemaMessaggio(owner, text, caption, flags);
    }
    void beep(unsigned type) override { SistemaBeep(type); }
};

TInterfacciaPredefinita predefinita;
std::atomic<TInterfacciaUtente*> interfaccia{&predefinita};
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

HCURSOR LoadCursorA(HINSTANCE instance, const char* name) { return SistemaCaricaCursore(instance, name); }

// The handler hears every change, so a front end can show that the library
// is busy.
HCURSOR SetCursor(HCURSOR nuovo)
{
    const HCURSOR prima = SistemaImpostaCursore(nuovo);
    if (prima != nuovo) interfaccia.load()->cursore(nuovo);
    return prima;
}

HCURSOR CursoreCorrente() { return SistemaCursoreCorrente(); }

int LoadStringA(HINSTANCE instance, unsigned id, char* buf, int size)
{
    if (!buf || size <= 0) return 0;
    return SistemaStringa(instance, id, buf, size);
}

void ImpostaSorgenteTick(TSorgenteTick sorgente) { sorgenteTick.store(sorgente); }

std::uint32_t GetTickCount()
{
    if (TSorgenteTick s = sorgenteTick.load()) return s();
    return SistemaTick();
}

// With an injected tick no real time needs to pass: each read moves it on.
// A yield there would give the processor away on every read, and a wait of
// two seconds would take thousands of time slices on a loaded machine.
void CediTick()
{
    if (!sorgenteTick.load()) SistemaAttesa(1);
}

void Sleep(std::uint32_t ms) { SistemaAttesa(ms); }
