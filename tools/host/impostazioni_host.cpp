#include "impostazioni_host.h"

#include "file_impostazioni.h"

bool CaricaImpostazioni(TOpzioniHost& o, TDataDigit& salvato, std::string& messaggio)
{
    const std::string percorso = PercorsoImpostazioni(o.gis.impostazioni);
    if (percorso.empty()) {
        messaggio.clear();
        return false;
    }
    CDigit vuoto;
    vuoto.GetDataDigit(salvato);
    switch (LeggiImpostazioni(percorso, salvato, messaggio)) {
    case TEsitoImpostazioni::assente: messaggio.clear(); return false;  // the first run
    case TEsitoImpostazioni::errato: messaggio += "; starting from the defaults (config writes a new one)"; return false;
    case TEsitoImpostazioni::letto: break;
    }
    if (o.tipoDato && o.tipo != salvato.tipo) {
        messaggio += ", which is for model " + std::to_string(salvato.tipo) + "; --model " + std::to_string(o.tipo) +
                     " starts from its defaults";
        return false;
    }
    o.tipo = salvato.tipo;
    if (!o.portaData) o.porta = salvato.porta;
    return true;
}

TDataDigit ApplicaImpostazioni(const TDataDigit& salvato, const TDataDigit& record, const TOpzioniHost& o)
{
    TDataDigit d = salvato;
    d.porta = static_cast<std::int16_t>(o.porta);
    if (!d.limitiDefiniti || o.limiti) {
        d.limitiDefiniti = record.limitiDefiniti;
        d.xMin = record.xMin, d.yMin = record.yMin, d.xMax = record.xMax, d.yMax = record.yMax;
    }
    return d;
}

bool SalvaImpostazioni(const TOpzioniHost& o, const TDataDigit& dati, std::string& messaggio)
{
    const std::string percorso = PercorsoImpostazioni(o.gis.impostazioni);
    if (percorso.empty()) {
        messaggio = "the set-up is not saved: neither XDG_CONFIG_HOME nor HOME is set";
        return false;
    }
    if (!ScriviImpostazioni(percorso, dati, messaggio)) return false;
    messaggio = "set-up saved to " + percorso;
    return true;
}
