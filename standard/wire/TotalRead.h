#pragma once

#include <cstddef>
#include <optional>
#include <utility>

#include "Refusal.h"
#include "TagReader.h"

namespace standard {

// read(reader) of the parameters that begin at index `at` of the octets and end at their end. No value where
// a service would get a Reject. Never throws anything of this room.
template <class Read>
auto TotalRead(Octets const& octets, std::size_t at, Read read)
    -> std::optional<decltype(read(std::declval<TagReader&>()))> {
    if (at > octets.size()) {
        return std::nullopt;
    }
    try {
        TagReader reader(octets, at);
        auto result = read(reader);
        reader.ExpectEnd();
        return result;
    } catch (Reject const&) {
        return std::nullopt;
    } catch (EndOfOctets const&) {
        return std::nullopt;
    }
}

}  // namespace standard
