#include "utente_registrato.h"

#include <mutex>

#include "platform/winui.h"

namespace {

class TUtenteRegistrato : public TInterfacciaUtente {
public:
    int messageBox(HWND, const char*, const char*, unsigned flags) override { return (flags & MB_YESNO) ? IDYES : IDOK; }
    void beep(unsigned type) override
    {
        std::lock_guard<std::mutex> g(mutex);
        beeps.push_back(type);
    }
    std::mutex mutex;
    std::vector<unsigned> beeps;
};

TUtenteRegistrato utente;

}  // namespace

void RegistraUtente(bool registra)
{
    {
        std::lock_guard<std::mutex> g(utente.mutex);
        utente.beeps.clear();
    }
    ImpostaInterfacciaUtente(registra ? &utente : nullptr);
}

std::vector<unsigned> BeepRegistrati()
{
    std::lock_guard<std::mutex> g(utente.mutex);
    return utente.beeps;
}
