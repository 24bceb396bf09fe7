#include "calibra_con_rapporto.h"

#include <fstream>

#include "rapporto_calibrazione.h"

bool CalibraConRapporto(CDigit& digit, bool griglia, const std::string& json, std::string& rapporto)
{
    const bool ok = griglia ? digit.CalibraGriglia(nullptr) : digit.CalibraPtSparsi(nullptr);
    rapporto.clear();
    TRapportoCalibrazione r;
    if (!ok || !RapportoDi(digit, r)) return ok;
    rapporto = Testo(r);
    if (!json.empty()) {
        std::ofstream f(json);
        f << Json(r);
        rapporto += f.flush() ? "report written to " + json + "\n" : "cannot write the report to " + json + "\n";
    }
    return ok;
}
