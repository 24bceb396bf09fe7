// Waits on a condition: repeats a step until it holds, with no fixed sleep.
#ifndef VELMARIN_TEST_RIPETI_H
#define VELMARIN_TEST_RIPETI_H

#include <chrono>
#include <thread>

// Runs `passo` every 100 ms until `fatto` holds, at most `limite`; says if it did.

template <class F, class P>
bool RipetiFinche(F fatto, P passo, std::chrono::milliseconds limite = std::chrono::seconds(5))
{
    using namespace std::chrono;
    const auto fine = steady_clock::now() + limite;
    while (!fatto() && steady_clock::now() < fine) {
        passo();
        const auto prossimo = steady_clock::now() + milliseconds(100);
        while (!fatto() && steady_clock::now() < prossimo) std::this_thread::sleep_for(milliseconds(2));
    }
    return fatto();
}

// Waits until `fatto` holds, at most `limite`.
template <class F>
bool AttendiFinche(F fatto, std::chrono::milliseconds limite = std::chrono::seconds(5))
{
    return RipetiFinche(fatto, [] {}, limite);
}

#endif
