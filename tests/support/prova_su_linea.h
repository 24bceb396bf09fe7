// Tests on a simulated line: a model's record as the selection leaves it, and
// a fixture that answers boxes, fakes the waits and leaves nothing behind.
#ifndef VELMARIN_TEST_PROVA_SU_LINEA_H
#define VELMARIN_TEST_PROVA_SU_LINEA_H

#include <gtest/gtest.h>

#include "digit.h"
#include "link/iodev.h"
#include "link/iodev_info.h"
#include "reports/digit_link.h"
#include "tick_finto.h"
#include "utente_finto.h"
#include "tablet/catalogo.h"

// Model `tipo` on COM`porta` as catalogued (beyond it, as model 1), first resolution.

inline TDataDigit DatiModello(int tipo, int porta, int reset = 1)
{
    TDataDigit d = CDigit().GetDataDigit();
    ImpostaDaCatalogo(d, TipoInCatalogo(tipo) && tipo > 0 ? tipo : 1);
    d.tipo = static_cast<std::int16_t>(tipo);
    d.porta = static_cast<std::int16_t>(porta);
    d.reset = static_cast<std::int16_t>(reset);
    d.risoluzione = 1;
    return d;
}

class TProvaSuLinea : public ::testing::Test {
protected:
    // A failed open keeps its record, by design: a case before this one in
    // the same run may have left one, so the line starts clean as it ends.
    explicit TProvaSuLinea(int porta) : porta(porta) { Pulisci(); }
    void TearDown() override { Pulisci(); }
    void Pulisci() const
    {
        IODevDestroy();
        AzzeraDigitLink(digitLink);
        IODevMapPort(porta, nullptr);
    }
    TDataDigit Dati(int tipo, int reset = 1) const { return DatiModello(tipo, porta, reset); }
    // Connects `d` as a host does: Init, the model's commands, the target.
    static bool Collega(CDigit& d, CDigitNtfy* target)
    {
        if (!d.Init(nullptr)) return false;
        d.SendInitString();
        return d.SetCommNotificationTo(target) == 1;
    }

    const int porta;
    TUtenteFinto ui;
    TTickFinto tick;  // the tablet's waits cost no real time
};

#endif
