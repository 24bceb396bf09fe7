#include "riproduttore.h"

TRiproduttore::TRiproduttore(TTavolettaPty& t, int tipo_, std::chrono::milliseconds passo_)
    : tavoletta(t), tipo(tipo_), passo(passo_)
{
}

TRiproduttore::~TRiproduttore() { Ferma(); }

void TRiproduttore::Percorso(const TPercorso& p, bool c)
{
    std::lock_guard<std::mutex> g(mutex);
    percorso = p;
    prossimo = 0;
    ciclico = c;
}

void TRiproduttore::Premi(std::int32_t x, std::int32_t y, int bottone)
{
    std::lock_guard<std::mutex> g(mutex);
    for (const TStatoPuntatore& s : PressioneBottone(x, y, bottone)) pressioni.push_back(s);
}

void TRiproduttore::VaiEPremi(std::int32_t x, std::int32_t y, int bottone, int passi)
{
    std::lock_guard<std::mutex> g(mutex);
    const TStatoPuntatore da = pressioni.empty() ? ultimo : pressioni.back();
    for (int i = 1; i <= passi; ++i)
        pressioni.push_back({da.x + static_cast<std::int32_t>((static_cast<std::int64_t>(x) - da.x) * i / passi),
                             da.y + static_cast<std::int32_t>((static_cast<std::int64_t>(y) - da.y) * i / passi), 0});
    for (const TStatoPuntatore& s : PressioneBottone(x, y, bottone)) pressioni.push_back(s);
}

void TRiproduttore::Avvia()
{
    std::lock_guard<std::mutex> g(mutex);
    if (!fermo) return;
    fermo = false;
    filo = std::thread([this] { Suona(); });
}

void TRiproduttore::Ferma()
{
    {
        std::lock_guard<std::mutex> g(mutex);
        fermo = true;
    }
    cv.notify_all();
    if (filo.joinable()) filo.join();
}

// Called with the lock held.
TStatoPuntatore TRiproduttore::Prossimo()
{
    if (!pressioni.empty()) {
        ultimo = pressioni.front();
        pressioni.pop_front();
    } else if (prossimo < percorso.size()) {
        ultimo = percorso[prossimo++];
        if (ciclico && prossimo == percorso.size()) prossimo = 0;
    } else {
        ultimo.bottone = 0;  // resting: the button is up
    }
    return ultimo;
}

void TRiproduttore::Suona()
{
    std::unique_lock<std::mutex> g(mutex);
    while (!fermo) {
        const TStatoPuntatore s = Prossimo();
        g.unlock();
        tavoletta.Gioca(tipo, s);
        g.lock();
        cv.wait_for(g, passo, [this] { return fermo; });
    }
}
