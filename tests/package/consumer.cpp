// Uses the installed interface: builds a tablet object and asks it questions.
#include <digit.h>

#include <cstdio>

int main()
{
    CDigit digit;
    TDataDigit dati{};
    digit.GetDataDigit(dati);
    const bool ok = !digit.IsScelto() && dati.numBottoni == 4 && digit.GetFunzButt(1) == funzNessuna;
    std::puts(ok ? "velmarin package ok" : "velmarin package wrong");
    return ok ? 0 : 1;
}
