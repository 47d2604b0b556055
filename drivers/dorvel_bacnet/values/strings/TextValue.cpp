#include "TextValue.h"

#include <utility>

static_assert(sizeof(TextValue) <= AnswerStore::BlockSize, "a store has no room for it");

TextValue::TextValue(std::string text, EncodingTypeEnum textEncoding)
    : value(std::move(text)), encoding(textEncoding) {}

int TextValue::CompareText(TextValue const& other) const {
    if (encoding != other.encoding) {
        return static_cast<int>(encoding) - static_cast<int>(other.encoding);
    }
    int const order = value.compare(other.value);
    return static_cast<int>(order > 0) - static_cast<int>(order < 0);
}
