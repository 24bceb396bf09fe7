// What the dialog tests share: a person in front of the dialogs, and the
// check, after each test, that no dialog waited for input that never came
// and no queued action was left over.
#ifndef VELMARIN_TEST_PROVA_DIALOGHI_H
#define VELMARIN_TEST_PROVA_DIALOGHI_H

#include <gtest/gtest.h>

#include "utente_finto.h"

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

    TUtenteFinto utente;
    TBackendScript& script = utente.script;
};

#endif
