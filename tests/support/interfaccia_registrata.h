// A user-interface handler that records the boxes and beeps of the library
// instead of showing them, for the tests. Installed for its lifetime.
#ifndef VELMARIN_TEST_INTERFACCIA_REGISTRATA_H
#define VELMARIN_TEST_INTERFACCIA_REGISTRATA_H

#include <mutex>
#include <string>
#include <vector>

#include "platform/winui.h"

struct TBox {
    HWND owner;
    std::string testo, titolo;
    unsigned flags;
};

class TInterfacciaRegistrata : public TInterfacciaUtente {
public:
    TInterfacciaRegistrata() { ImpostaInterfacciaUtente(this); }
    ~TInterfacciaRegistrata() override { ImpostaInterfacciaUtente(nullptr); }

    int messageBox(HWND owner, const char* text, const char* caption, unsigned flags) override
    {
        std::lock_guard<std::mutex> g(mutex);
        box.push_back({owner, text ? text : "", caption ? caption : "", flags});
        return IDOK;
    }
    void beep(unsigned type) override
    {
        std::lock_guard<std::mutex> g(mutex);
        beep_.push_back(type);
    }
    std::vector<TBox> Box() const
    {
        std::lock_guard<std::mutex> g(mutex);
        return box;
    }
    std::vector<unsigned> Beep() const
    {
        std::lock_guard<std::mutex> g(mutex);
        return beep_;
    }

private:
    mutable std::mutex mutex;
    std::vector<TBox> box;
    std::vector<unsigned> beep_;
};

#endif
