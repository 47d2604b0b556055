#include "EditLine.h"

#include <utility>

namespace workbench {

namespace {

constexpr std::size_t LongestLine = 4096;

bool IsContinuation(char octet) {
    return (static_cast<unsigned char>(octet) & 0xC0) == 0x80;
}

}  // namespace

bool EditLine::Handle(Key const& key) {
    switch (key.kind) {
        case KeyKind::Text:
            Insert(key.text);
            return true;
        case KeyKind::Backspace:
            Erase(Before(cursor), cursor);
            return true;
        case KeyKind::Delete:
            Erase(cursor, After(cursor));
            return true;
        case KeyKind::DeleteLine:
            Set({});
            return true;
        case KeyKind::Left:
            cursor = Before(cursor);
            return true;
        case KeyKind::Right:
            cursor = After(cursor);
            return true;
        case KeyKind::Home:
            cursor = 0;
            return true;
        case KeyKind::End:
            cursor = text.size();
            return true;
        default:
            return false;
    }
}

void EditLine::Set(std::string newText) {
    text = std::move(newText);
    cursor = text.size();
}

std::size_t EditLine::Before(std::size_t position) const {
    while (position > 0 && IsContinuation(text[position - 1])) {
        --position;
    }
    return position > 0 ? position - 1 : 0;
}

std::size_t EditLine::After(std::size_t position) const {
    position += position < text.size() ? 1 : 0;
    while (position < text.size() && IsContinuation(text[position])) {
        ++position;
    }
    return position;
}

void EditLine::Erase(std::size_t begin, std::size_t end) {
    text.erase(begin, end - begin);
    cursor = begin;
}

void EditLine::Insert(std::string const& character) {
    if (text.size() + character.size() <= LongestLine) {
        text.insert(cursor, character);
        cursor += character.size();
    }
}

}  // namespace workbench
