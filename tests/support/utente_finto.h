// A person at the dialogs for the object's life: the scripted backend, and a
// winui handler recording beeps and boxes and answering boxes from a queue.

#ifndef VELMARIN_TEST_UTENTE_FINTO_H
#define VELMARIN_TEST_UTENTE_FINTO_H

#include <deque>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "platform/toldeko/backend_script.h"
#include "platform/winui.h"

struct TMessaggio {
    HWND owner;
    std::string testo, titolo;
    unsigned flags;
    bool operator==(const TMessaggio& m) const
    {
        return owner == m.owner && testo == m.testo && titolo == m.titolo && flags == m.flags;
    }
};
inline std::ostream& operator<<(std::ostream& os, const TMessaggio& m)
{
    return os << m.owner << " \"" << m.titolo << "\" \"" << m.testo << "\" " << m.flags;
}

class TUtenteFinto : public TInterfacciaUtente {
public:
    TUtenteFinto()
    {
        ImpostaBackendDialoghi(&script);
        ImpostaInterfacciaUtente(this);
    }
    ~TUtenteFinto() override
    {
        ImpostaInterfacciaUtente(nullptr);
        ImpostaBackendDialoghi(nullptr);
    }

    TBackendScript script;

    // The answer to the next message box; with none queued, IDOK.
    void Rispondi(int risposta)
    {
        std::lock_guard<std::mutex> g(mutex);
        risposte.push_back(risposta);
    }
    std::vector<unsigned> Beep() const
    {
        std::lock_guard<std::mutex> g(mutex);
        return beeps;
    }
    std::vector<TMessaggio> Messaggi() const
    {
        std::lock_guard<std::mutex> g(mutex);
        return messaggi;
    }

    int messageBox(HWND owner, const char* text, const char* caption, unsigned flags) override
    {
        std::lock_guard<std::mutex> g(mutex);
        messaggi.push_back({owner, text ? text : "", caption ? caption : "", flags});
        if (risposte.empty()) return IDOK;
        const int r = risposte.front();
        risposte.pop_front();
        return r;
    }
    void beep(unsigned type) override
    {
        std::lock_guard<std::mutex> g(mutex);
        beeps.push_back(type);
    }

private:
    mutable std::mutex mutex;
    std::deque<int> risposte;
    std::vector<unsigned> beeps;
    std::vector<TMessaggio> messaggi;
};

#endif
