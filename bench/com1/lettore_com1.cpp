// The reader through COM1 on a simulated tablet (sim_comandata) that answers
// on standard input what this program asks of it on standard output: the
// same program on Linux and under Wine, so that the two systems' figures
// stand side by side. It measures the reader thread's CPU time over 10 s of
// a quiet line, and the time from a report written on the tablet's side to
// its NotifyMove (p50 and p99 of 40): one report of model 8, which only the
// quiet line after it closes, and streaming (a gather's worth at once).
//
// usage: lettore_com1 RESULTS [DEVICE]
//   DEVICE: what COM1 is mapped to, if anything
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <fstream>
#include <iostream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "digit.h"
#include "link/iodev.h"
#include "link/iodev_info.h"
#include "tablet/catalogo.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include "bench/tempo_lettore.h"
#endif

namespace {

using namespace std::chrono;

#if defined(_WIN32)
// Kernel and user time of the reader thread, as Windows keeps it.
nanoseconds TempoLettore()
{
    FILETIME creato, finito, nucleo, utente;
    if (!devInfo || !GetThreadTimes(reinterpret_cast<HANDLE>(devInfo->hThread), &creato, &finito, &nucleo, &utente))
        return {};
    auto cento_ns = [](FILETIME f) { return (static_cast<long long>(f.dwHighDateTime) << 32) | f.dwLowDateTime; };
    return nanoseconds((cento_ns(nucleo) + cento_ns(utente)) * 100);
}
#endif

std::string Chiedi(const std::string& comando)
{
    std::cout << comando << std::endl;
    std::string risposta;
    std::getline(std::cin, risposta);
    if (!risposta.empty() && risposta.back() == '\r') risposta.pop_back();
    return risposta;
}

class TContatore : public CDigitNtfy {
public:
    void NotifyMove(std::int32_t, std::int32_t) override
    {
        {
            std::lock_guard<std::mutex> g(mutex);
            ++mosse;
        }
        cv.notify_one();
    }
    void NotifyButton(std::int32_t, std::int32_t, std::int32_t) override {}

    bool Attendi(long quante)
    {
        std::unique_lock<std::mutex> g(mutex);
        return cv.wait_for(g, seconds(2), [&] { return mosse >= quante; });
    }

private:
    std::mutex mutex;
    std::condition_variable cv;
    long mosse = 0;
};

double Percentile(std::vector<double> v, double p)
{
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[static_cast<std::size_t>(p * static_cast<double>(v.size() - 1))];
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: lettore_com1 RESULTS [DEVICE]\n";
        return 2;
    }
    std::ofstream risultati(argv[1]);
    if (argc > 2) IODevMapPort(1, argv[2]);
    if (Chiedi("modello 8") != "ok") return 1;
    TDataDigit dati = CDigit().GetDataDigit();
    ImpostaDaCatalogo(dati, 8);
    dati.porta = 1;
    dati.reset = 1;  // no reset: programming costs no wait
    CDigit digit(dati);
    if (!digit.Init(nullptr)) {
        risultati << "COM1 does not open\n";
        return 1;
    }
    digit.SendInitString();
    TContatore target;
    digit.SetCommNotificationTo(&target);

    risultati << "quiet line from now" << std::endl;  // for who watches the rest of the system
    const nanoseconds prima = TempoLettore();
    std::this_thread::sleep_for(seconds(10));
    risultati << "reader CPU over 10 s of a quiet line: "
              << duration<double, std::milli>(TempoLettore() - prima).count() << " ms" << std::endl;

    long attese = 0;
    // 40 times: the tablet shows a new place with `comando`, the time until
    // the host hears it.
    auto Misura = [&](const char* comando, const char* cosa) {
        std::vector<double> latenze;
        for (int i = 1; i <= 40; ++i) {
            const auto inizio = steady_clock::now();
            ++attese;
            if (Chiedi(comando + std::to_string(100 * i + attese) + " 100 0") != "ok" || !target.Attendi(attese)) {
                risultati << cosa << ": report " << i << " not heard\n";
                return false;
            }
            latenze.push_back(duration<double, std::milli>(steady_clock::now() - inizio).count());
        }
        risultati << cosa << " to NotifyMove: p50 " << Percentile(latenze, 0.5) << " ms, p99 "
                  << Percentile(latenze, 0.99) << " ms\n";
        return true;
    };
    if (!Misura("uno ", "single report") || !Misura("stato ", "streaming")) return 1;
    digit.StopCommNotification();
    Chiedi("fine");
    return 0;
}
