#include "DecimalText.h"

#include <locale.h>

#include <charconv>
#include <limits>

namespace {

// Sets the C locale for the calling thread while it lives; other threads keep theirs.
class ClassicLocale {
public:
    ClassicLocale() : previous(uselocale(Classic())) {}
    ~ClassicLocale() { uselocale(previous); }
    ClassicLocale(ClassicLocale const&) = delete;
    ClassicLocale& operator=(ClassicLocale const&) = delete;

private:
    static locale_t Classic() {
        static locale_t const classic = newlocale(LC_ALL_MASK, "C", nullptr);
        return classic;
    }

    locale_t previous;
};

}  // namespace

std::string DecimalText(double number) {
    constexpr int Decimals = 6;
    // Room for the sign, the digits of the largest number, the point and the decimals.
    char text[std::numeric_limits<double>::max_exponent10 + 3 + Decimals];
    auto const end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, Decimals);
    return std::string(text, end.ptr);
}

double DecimalNumber(std::string const& text) {
    ClassicLocale const locale;
    return std::stod(text);
}
