#pragma once

#include <map>
#include <memory>

#include "Exceptions.h"

// Parsers by the number that chooses them. Registries are filled once and only read from then on, by
// several threads at a time: a lookup must never insert.
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
