#include "SimpleError.h"

#include "Octets.h"
#include "Tag.h"

namespace {

constexpr char EnumeratedNumber = 9;

std::vector<char> EnumeratedTag(int number) {
    return Tag(EnumeratedNumber, false, 1, {static_cast<char>(number)}, 0).GetBytes();
}

}  // namespace

SimpleError::SimpleError(ErrorClassEnum group, ErrorCodeEnum code) : errorClass(group), errorCode(code) {}

std::vector<char> SimpleError::GetBytes() const {
    std::vector<char> octets = EnumeratedTag(static_cast<int>(errorClass));
    AppendOctets(octets, EnumeratedTag(static_cast<int>(errorCode)));
    return octets;
}

bool SimpleError::Equals(ErrorBase& other) const {
    return Equals(dynamic_cast<SimpleError&>(other));
}

bool SimpleError::Equals(SimpleError& other) const {
    return errorClass == other.errorClass && errorCode == other.errorCode;
}
