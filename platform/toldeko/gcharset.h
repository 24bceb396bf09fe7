// GCharSet: a set of characters written as a text of characters and ranges,
// "0-9" standing for the ten digits. A '-' at either end stands for itself.
#ifndef TOLDEKO_GCHARSET_H
#define TOLDEKO_GCHARSET_H

#include <bitset>

class GCharSet {
public:
    explicit GCharSet(const char* text = "");
    bool Has(char c) const { return insieme.test(static_cast<unsigned char>(c)); }

private:
    std::bitset<256> insieme;
};

#endif
