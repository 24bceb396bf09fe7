#include "campo_testo.h"

#include <limits>

namespace {

// One past INT32_MAX: the magnitude of INT32_MIN, and the point beyond which
// no further digit can change the saturated value.
constexpr std::int64_t moduloMassimo = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;

}  // namespace

void TCampoDecimale::Segno(std::uint8_t segno)
{
    if (occupati_ >= capienza_) return;
    ++occupati_;
    negativo_ = (segno == '-');
}

void TCampoDecimale::Aggiungi(std::uint8_t c)
{
    if (!EUnaCifra(c) || occupati_ >= capienza_) return;
    ++occupati_;
    ++cifre_;
    if (modulo_ <= moduloMassimo) modulo_ = modulo_ * 10 + (c - '0');
}

std::int32_t TCampoDecimale::Valore() const
{
    const std::int64_t m = modulo_ > moduloMassimo ? moduloMassimo : modulo_;
    const std::int64_t v = negativo_ ? -m : m;
    if (v > std::numeric_limits<std::int32_t>::max()) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(v);
}

int TrovaNelGather(const TDigitLink& link, std::uint8_t c, int da)
{
    const int n = NumGather(link);
    for (int i = da < 0 ? 0 : da; i < n; ++i)
        if (link.bufReport[i] == c) return i;
    return -1;
}

void ColonneNelCampo(const TDigitLink& link, int da, int a, TCampoDecimale& campo)
{
    for (int pos = da; pos <= a; ++pos) campo.Aggiungi(ByteGather(link, pos));
}
