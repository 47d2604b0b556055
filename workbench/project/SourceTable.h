#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Place.h"

namespace workbench {

// A field of a table as the source has it: Name = value.
struct SourceField {
    enum class Literal { None, Text, Number };

    std::string_view name;
    int line = 0;
    Literal kind = Literal::None;  // None: the value is not a single text or number
    std::string literal;
};

// A table constructor in a source, {...}, with its fields but not those of the tables inside.
struct SourceTable {
    std::size_t file = 0;   // index of the source
    std::size_t begin = 0;  // octets of the source, from the opening brace
    std::size_t end = 0;    // to the closing one
    int line = 0;
    int callLine = 0;      // of BACnet.new in front of it; 0 without
    bool isTask = false;   // after Task
    bool inBlock = false;  // inside a BACnet.new{...}
    bool isTaken = false;  // already found for a variable of another block
    std::vector<SourceField> fields;

    SourceField const* Find(std::string_view name) const;
};

// Where a block or a variable is written. Without a table, place is all that is known.
struct SourcePlace {
    Place place;
    SourceTable const* table = nullptr;
    bool isNamedHere = false;  // place is that of the name, which is not in the table

    // The place of one of its fields, or its own. "Point.KeyName" and "StateTexts[2]" are inside such fields.
    Place Of(std::string_view field) const;
};

// Where a block is written, and its variables, in the order of Vars.
struct BlockSource {
    SourcePlace block;
    std::vector<SourcePlace> variables;

    // The place of a variable by its index, or that of the block.
    SourcePlace const& Variable(std::size_t index) const {
        return index < variables.size() ? variables[index] : block;
    }
};

}  // namespace workbench
