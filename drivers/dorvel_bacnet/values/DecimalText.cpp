#include "DecimalText.h"

#include <locale.h>

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
    ClassicLocale const locale;
    return std::to_string(number);
}

double DecimalNumber(std::string const& text) {
    ClassicLocale const locale;
    return std::stod(text);
}
