#include "fif/genre_codes.h"

#include <array>

namespace {

constexpr auto codes = std::to_array<QStringView>({
    u"ALT",
    u"BLU",
    u"CLS",
    u"CNT",
    u"DAN",
    u"ELE",
    u"FLK",
    u"GOS",
    u"HIP",
    u"JAZ",
    u"MET",
    u"NAG",
    u"POP",
    u"RAP",
    u"RNB",
    u"ROC",
    u"OTH",
});

} // namespace

QString genre_code(int position)
{
    if (position < 0 || position >= static_cast<int>(codes.size()))
        return {};
    return codes[static_cast<std::size_t>(position)].toString();
}
