// The dialog tests' person, a second thread playing the reader, and a check that nothing was left waiting.
#ifndef VELMARIN_TEST_PROVA_DIALOGHI_H
#define VELMARIN_TEST_PROVA_DIALOGHI_H

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

#include "digit.h"
#include "reports/digit_link.h"
#include "utente_finto.h"

// A press of a button, or a mere move when the button is 0.
struct TPressione {
    int bottone;
    std::int32_t x, y;
};

inline void Suona(CDigitNtfy& ntfy, const std::vector<TPressione>& pressioni)
{
    for (const TPressione& p : pressioni) {
        if (p.bottone == 0)
            ntfy.NotifyMove(p.x, p.y);
        else
            ntfy.NotifyButton(p.bottone, p.x, p.y);
    }
}

class TProvaDialoghi : public ::testing::Test {
protected:
    void TearDown() override
    {
        EXPECT_EQ(script.Scaduti(), 0) << "a dialog waited for input that never came";
        EXPECT_EQ(script.AzioniInAttesa(), 0u);
    }
    // The last dialog to close, as it showed itself then.
    TStatoDialogo UltimoChiuso() const
    {
        const auto chiusi = script.Chiusi();
        return chiusi.empty() ? TStatoDialogo{} : chiusi.back().stato;
    }
    // Runs `dialogo` here while `tavoletta` plays the reader on the target of dialog `modello`.
    int Esegui(unsigned modello, const std::function<int()>& dialogo,
               const std::function<void(CDigitNtfy&)>& tavoletta)
    {
        std::thread lettore([&] {
            CDigitNtfy* ntfy = script.AttendiDialogo(modello) ? Leggi(digitLink.ntfy) : nullptr;
            if (ntfy) return tavoletta(*ntfy);
            ADD_FAILURE() << "the dialog is no target";
            script.Esc();
        });
        const int risultato = dialogo();
        lettore.join();
        return risultato;
    }

    TUtenteFinto utente;
    TBackendScript& script = utente.script;
};

#endif
