#include "Datum.h"

#include <cmath>
#include <tuple>

namespace standard {

namespace {

bool AreEqual(double left, double right) {
    return left == right ||
           (std::isnan(left) && std::isnan(right) && std::signbit(left) == std::signbit(right));
}

}  // namespace

bool operator==(Datum const& left, Datum const& right) {
    auto const fields = [](Datum const& datum) {
        return std::tie(datum.kind, datum.tag, datum.isContext, datum.number, datum.calendar, datum.text,
                        datum.octets, datum.children);
    };
    return AreEqual(left.real, right.real) && fields(left) == fields(right);
}

}  // namespace standard
