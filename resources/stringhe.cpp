// The string table. Texts are UTF-8; "\n" is a line break.
#include "stringhe.h"

namespace {

struct TStringa {
    unsigned id;
    const char* testo;
};

constexpr TStringa tabella[] = {
    {10047, "Calibrazione Punti Sparsi"},
    {10048, "Calibrazione Griglia"},
    {10050, "il punto inferiore a sinistra"},
    {10051, "il punto superiore a destra"},
    {10052, "Scelta Tavoletta"},
    {10053, "Per effettuare la prova \noccorre prima definire i limiti"},
    {10056, "Tavoletta già calibrata \nModificando alcuni parametri si annulla la calibrazione !\n\nContinuo ?"},
    {10057, "Tavoletta già calibrata \nContinuando si annulla la calibrazione precedente !\n\nContinuo ?"},
    {10058, "Porta Seriale"},
    {10060, "ERRORE\nPorta non configurata"},
    {10062, " -"},
    {10063, "Conferma"},
    {10064, "Annulla - Fine funzione"},
    {10065, "Inizia Linea - Dis. Lib."},
    {10066, "Inizia Linea - Fine Ent."},
    {10067, "Inizia Polilinea - Dis. Lib."},
    {10068, "Inizia Polilinea - Fine Ent."},
    {10069, "Disconnessione non effettuata"},
    {10070, "Errore"},
    {10071, "Deallocazione fallita"},
    {10072, "Creazione parametri conness. non effettuata"},
};

}  // namespace

const char* TestoRisorsa(unsigned id)
{
    for (const TStringa& s : tabella)
        if (s.id == id) return s.testo;
    return nullptr;
}
