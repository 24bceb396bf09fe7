#include "calibra_con_rapporto.h"

#include <chrono>

#include "ora_utc.h"
#include "rapporto_calibrazione.h"
#include "scrittura_file.h"

TCalibrazioneFatta CalibraConRapporto(CDigit& digit, bool griglia, const std::string& registro)
{
    TCalibrazioneFatta c;
    c.riuscita = griglia ? digit.CalibraGriglia(nullptr) : digit.CalibraPtSparsi(nullptr);
    TRapportoCalibrazione r;
    if (!c.riuscita || !RapportoDi(digit, r)) return c;
    c.id = "cal-" + TestoOra(std::chrono::system_clock::now());
    c.testo = Testo(r) + "calibration id " + c.id + "\n";
    if (registro.empty()) return c;
    if (AggiungiRiga(registro, Json(r, c.id), c.errore))
        c.testo += "report appended to " + registro + "\n";
    return c;
}
