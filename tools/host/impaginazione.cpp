#include "impaginazione.h"

#include <algorithm>

#include "platform/toldeko/disegno_testo.h"

namespace {

int Celle(const std::string& s) { return static_cast<int>(CelleTesto(s).size()); }

std::string Taglia(const std::string& s, int larghezza)
{
    std::vector<std::string> c = CelleTesto(s);
    if (static_cast<int>(c.size()) <= larghezza) return s;
    c.resize(static_cast<std::size_t>(std::max(0, larghezza)));
    std::string r;
    for (const std::string& x : c) r += x;
    return r;
}

// `sopra` written over `riga` from cell `colonna` on.
std::string Sovrapponi(const std::string& riga, const std::string& sopra, int colonna)
{
    std::vector<std::string> c = CelleTesto(riga);
    const std::vector<std::string> s = CelleTesto(sopra);
    if (static_cast<int>(c.size()) < colonna + static_cast<int>(s.size()))
        c.resize(static_cast<std::size_t>(colonna) + s.size(), " ");
    std::copy(s.begin(), s.end(), c.begin() + colonna);
    std::string r;
    for (const std::string& x : c) r += x;
    return r;
}

struct TFinestra {
    int prima = 0, quante = 0;  // dialog lines shown
    bool sopra = false, sotto = false;  // marker lines
};

// Which of `n` lines fit in `posto` rows, around line `centro`.
TFinestra Scorri(int n, int posto, int centro)
{
    if (n <= posto) return {0, n, false, false};
    const int contenuto = std::max(1, posto - 2);
    int prima = std::min(std::max(0, centro - contenuto / 2), n - contenuto), quante = contenuto;
    // Cut on one side only, the other marker's row shows one line more.
    if (prima == 0) {
        quante = std::max(1, posto - 1);
    } else if (prima + contenuto == n) {
        quante = std::max(1, posto - 1);
        prima = n - quante;
    }
    return {prima, quante, prima > 0, prima + quante < n};
}

}  // namespace

std::vector<std::string> APiuRighe(const std::string& testo, int larghezza)
{
    std::vector<std::string> righe;
    std::string riga;
    std::size_t i = 0;
    while (i < testo.size()) {
        const std::size_t spazio = testo.find(' ', i);
        const std::string parola = testo.substr(i, spazio == std::string::npos ? std::string::npos : spazio - i);
        i = spazio == std::string::npos ? testo.size() : spazio + 1;
        const std::string prova = riga.empty() ? parola : riga + " " + parola;
        if (Celle(prova) <= larghezza || riga.empty()) {
            riga = prova;
        } else {
            righe.push_back(riga);
            riga = parola;
        }
    }
    if (!riga.empty() || righe.empty()) righe.push_back(riga);
    for (std::string& r : righe) r = Taglia(r, larghezza);
    return righe;
}

TSchermata Impagina(const TContenutoSchermo& c, int colonne, int righe)
{
    colonne = std::max(colonne, 20);
    righe = std::max(righe, 6);
    TSchermata s;
    if (!c.intestazione.empty()) s.righe.push_back(Taglia(c.intestazione, colonne));
    std::vector<std::string> sotto;
    for (const std::string& a : c.aiuto)
        for (const std::string& r : APiuRighe(a, colonne - 1)) sotto.push_back(" " + r);
    const std::vector<std::string> avviso =
        c.avviso.empty() ? std::vector<std::string>{} : APiuRighe(c.avviso, colonne - 1);

    const TMisura misura = MisuraPer(c.stato, colonne);
    const std::vector<std::string> dialogo = DisegnaDialogo(c.stato, misura);
    const int larghezza = dialogo.empty() ? 0 : misura.Colonna(c.stato.cx) + 2;
    const int rientro = std::min(2, std::max(0, colonne - larghezza));
    const bool conFuoco = c.fuoco >= 0 && c.fuoco < static_cast<int>(c.stato.elementi.size());
    const TPosizione p = conFuoco ? PosizioneControllo(c.stato.elementi[static_cast<std::size_t>(c.fuoco)], misura)
                                  : TPosizione{0, 0, 0};
    const int posto = righe - static_cast<int>(s.righe.size() + sotto.size() + avviso.size());
    const TFinestra f = Scorri(static_cast<int>(dialogo.size()), std::max(1, posto), p.riga);

    const std::string margine(static_cast<std::size_t>(rientro), ' ');
    if (f.sopra) s.righe.push_back(margine + "^^^ " + std::to_string(f.prima) + " more lines above ^^^");
    const int primaRiga = static_cast<int>(s.righe.size());
    for (int r = f.prima; r < f.prima + f.quante; ++r) s.righe.push_back(margine + dialogo[static_cast<std::size_t>(r)]);
    if (f.sotto)
        s.righe.push_back(margine + "vvv " + std::to_string(static_cast<int>(dialogo.size()) - f.prima - f.quante) +
                          " more lines below vvv");

    if (conFuoco && p.riga >= f.prima && p.riga < f.prima + f.quante) {
        s.rigaFuoco = primaRiga + p.riga - f.prima;
        s.colonnaFuoco = rientro + p.colonna;
        s.larghezzaFuoco = p.larghezza;
        const TStatoElemento& e = c.stato.elementi[static_cast<std::size_t>(c.fuoco)];
        if (e.tipo == TTipoElemento::edit) {
            s.rigaCursore = s.rigaFuoco;
            s.colonnaCursore = s.colonnaFuoco + 1 + std::min(Celle(e.testo), std::max(0, p.larghezza - 3));
        }
    }

    // The box stands in the middle of the dialog's rows, over them.
    if (!c.riquadro.empty()) {
        int largo = 0;
        for (const std::string& r : c.riquadro) largo = std::max(largo, Celle(r));
        const int col = std::max(0, (colonne - largo) / 2);
        const int alto = static_cast<int>(c.riquadro.size());
        const int zona = static_cast<int>(s.righe.size()) - primaRiga;
        int riga = primaRiga + std::max(0, (zona - alto) / 2);
        while (static_cast<int>(s.righe.size()) < riga + alto) s.righe.emplace_back();
        for (const std::string& r : c.riquadro) {
            s.righe[static_cast<std::size_t>(riga)] = Taglia(Sovrapponi(s.righe[static_cast<std::size_t>(riga)], r, col), colonne);
            ++riga;
        }
        s.rigaFuoco = s.rigaCursore = -1;  // the box has the keys now
    }
    s.righe.insert(s.righe.end(), sotto.begin(), sotto.end());
    if (!avviso.empty()) {
        s.rigaAvviso = static_cast<int>(s.righe.size());
        for (const std::string& a : avviso) s.righe.push_back(" " + a);
    }
    if (static_cast<int>(s.righe.size()) > righe) s.righe.resize(static_cast<std::size_t>(righe));
    return s;
}
