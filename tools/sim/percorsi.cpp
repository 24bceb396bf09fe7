#include "percorsi.h"

#include <algorithm>
#include <climits>
#include <random>
#include <sstream>

namespace {

void Lato(TPercorso& p, std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1)
{
    constexpr int passi = 10;
    for (int i = 0; i < passi; ++i)
        p.push_back({x0 + (x1 - x0) * i / passi, y0 + (y1 - y0) * i / passi, 0});
}

void Angolo(TPercorso& p, std::int32_t x, std::int32_t y)
{
    const TPercorso premi = PressioneBottone(x, y, 1);
    p.insert(p.end(), premi.begin(), premi.end());
}

}  // namespace

TPercorso PressioneBottone(std::int32_t x, std::int32_t y, int bottone)
{
    return {{x, y, 0}, {x, y, bottone}, {x, y, bottone}, {x, y, bottone}, {x, y, bottone}, {x, y, 0}, {x, y, 0}};
}

TPercorso Figura(std::int32_t origine, std::int32_t lato)
{
    const std::int32_t a = origine, b = origine + lato;
    TPercorso p;
    Angolo(p, a, a);
    Lato(p, a, a, b, a);
    Angolo(p, b, a);
    Lato(p, b, a, b, b);
    Angolo(p, b, b);
    Lato(p, b, b, a, b);
    Angolo(p, a, b);
    Lato(p, a, b, a, a);
    return p;
}

TPercorso FiguraGriglia(int lato, std::int32_t origine, std::int32_t passo)
{
    TPercorso p;
    std::int32_t x0 = origine, y0 = origine;
    for (int i = 0; i <= lato; ++i) {
        for (int j = 0; j <= lato; ++j) {
            const std::int32_t x = origine + i * passo, y = origine + j * passo;
            Lato(p, x0, y0, x, y);
            Angolo(p, x, y);
            x0 = x;
            y0 = y;
        }
    }
    Lato(p, x0, y0, origine, origine);
    return p;
}

TPercorso PasseggiataCasuale(unsigned seme, int passi, std::int32_t lato, std::int32_t salto)
{
    std::mt19937 gen(seme);
    std::uniform_int_distribution<std::int32_t> passo(-salto, salto);
    std::uniform_int_distribution<int> caso(0, 49), bottone(1, 4);
    std::int32_t x = lato / 2, y = lato / 2;
    TPercorso p;
    for (int i = 0; i < passi; ++i) {
        x = std::min(lato, std::max(0, x + passo(gen)));
        y = std::min(lato, std::max(0, y + passo(gen)));
        if (caso(gen) == 0) {
            const TPercorso premi = PressioneBottone(x, y, bottone(gen));
            p.insert(p.end(), premi.begin(), premi.end());
        } else {
            p.push_back({x, y, 0});
        }
    }
    return p;
}

bool LeggiPercorso(std::istream& in, TPercorso& percorso, std::string& errore)
{
    std::string riga;
    for (int n = 1; std::getline(in, riga); ++n) {
        const std::size_t inizio = riga.find_first_not_of(" \t\r");
        if (inizio == std::string::npos || riga[inizio] == '#') continue;
        std::istringstream campi(riga);
        long long x = 0, y = 0;
        int b = 0;
        std::string resto;
        if (!(campi >> x >> y >> b) || (campi >> resto)) {
            errore = "line " + std::to_string(n) + ": expected \"x y button\"";
            return false;
        }
        if (x < INT32_MIN || x > INT32_MAX || y < INT32_MIN || y > INT32_MAX || b < 0 || b > 16) {
            errore = "line " + std::to_string(n) + ": value out of range";
            return false;
        }
        percorso.push_back({static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), b});
    }
    return true;
}
