#include "calibra_con_rapporto.h"

#include <fstream>

#include "rapporto_calibrazione.h"
#include "registro_calibrazione.h"

bool CalibraConRapporto(CDigit& digit, bool griglia, const std::string& json, std::string& rapporto)
{
    TBackendDialoghi& prima = BackendDialoghi();
    TRegistroCalibrazione registro(prima, digit);
    ImpostaBackendDialoghi(&registro);
    const bool ok = griglia ? digit.CalibraGriglia(nullptr) : digit.CalibraPtSparsi(nullptr);
    ImpostaBackendDialoghi(&prima);

    rapporto.clear();
    if (!ok || !digit.IsCalibrato()) return ok;
    std::string testo, dati;
    if (griglia) {
        TRapportoGriglia r;
        if (RapportoGriglia(registro.Punti(), registro.Griglia(), r)) testo = Testo(r), dati = Json(r);
    } else {
        TRapportoPunti r;
        if (RapportoPunti(digit, registro.Punti(), r)) testo = Testo(r), dati = Json(r);
    }
    if (testo.empty()) {
        rapporto = "no calibration report: the host did not hear every point digitized\n";
        return ok;
    }
    rapporto = testo;
    if (!json.empty()) {
        std::ofstream f(json);
        f << dati;
        rapporto += f.flush() ? "report written to " + json + "\n" : "cannot write the report to " + json + "\n";
    }
    return ok;
}
