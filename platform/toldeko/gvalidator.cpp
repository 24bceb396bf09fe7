#include "gvalidator.h"

#include <cctype>

bool GFilterValidator::IsValidInput(const std::string& text) const
{
    for (char c : text)
        if (!insieme.Has(c)) return false;
    return true;
}

namespace {

bool Cifra(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

}  // namespace

bool GDoubleValidator::IsValidInput(const std::string& text) const
{
    std::size_t i = 0;
    const std::size_t n = text.size();
    if (i < n && (text[i] == '+' || text[i] == '-')) ++i;
    bool cifre = false;
    while (i < n && Cifra(text[i])) ++i, cifre = true;
    if (i < n && text[i] == '.') {
        ++i;
        while (i < n && Cifra(text[i])) ++i, cifre = true;
    }
    if (i < n && (text[i] == 'e' || text[i] == 'E')) {
        if (!cifre) return false;
        ++i;
        if (i < n && (text[i] == '+' || text[i] == '-')) ++i;
        while (i < n && Cifra(text[i])) ++i;
    }
    return i == n;
}
