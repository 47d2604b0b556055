#pragma once

#include <map>
#include <memory>

#include "Exceptions.h"

// Parsers by the number that selects them. A registry is filled once and then read by several threads, so a
// lookup must not insert.
template <class Choice, class Parser>
using ParserRegistry = std::map<Choice, std::shared_ptr<Parser>>;

// The parser of the choice. Throws FormatErrorException when there is none.
template <class Choice, class Parser>
Parser& FindParser(ParserRegistry<Choice, Parser> const& registry, Choice choice) {
    auto const entry = registry.find(choice);
    if (entry == registry.end()) {
        throw FormatErrorException();
    }
    return *entry->second;
}
