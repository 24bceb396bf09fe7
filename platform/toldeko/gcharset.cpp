#include "gcharset.h"

#include <cstring>

GCharSet::GCharSet(const char* text)
{
    if (!text) return;
    const std::size_t n = std::strlen(text);
    for (std::size_t i = 0; i < n; ++i) {
        const unsigned char da = static_cast<unsigned char>(text[i]);
        if (i + 2 < n && text[i + 1] == '-') {
            const unsigned char a = static_cast<unsigned char>(text[i + 2]);
            for (unsigned c = da; c <= a; ++c) insieme.set(c);
            i += 2;
        } else {
            insieme.set(da);
        }
    }
}
