#include "gstatic.h"

#include <cstdio>
#include <vector>

GStatic::GStatic(GWnd* parent, int id, int, int)
    : GControl(parent, id, {TTipoElemento::statico, TTipoElemento::cornice}, "GStatic")
{
}

void GStatic::setValue(double value)
{
    const int n = std::snprintf(nullptr, 0, "%.3f", value);
    std::vector<char> buf(static_cast<std::size_t>(n > 0 ? n : 0) + 1);
    std::snprintf(buf.data(), buf.size(), "%.3f", value);
    setWindowText(buf.data());
}
