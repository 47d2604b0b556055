#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// One object type or property: the code in the driver's configuration, BACnet's number, and the name in the
// productions of ASHRAE 135, clause 21.
struct NameRow {
    int code;
    int bacnetNumber;
    char const* name;
};

// The names of one kind, ordered by code. The rows have static storage.
class NameTable {
public:
    constexpr NameTable(NameRow const* rows, std::size_t rowCount) : first(rows), count(rowCount) {}

    NameRow const* begin() const { return first; }
    NameRow const* end() const { return first + count; }

    // Null for an unknown name. Letter case, blanks, underscores and hyphens do not matter.
    NameRow const* FindName(std::string_view name) const;
    NameRow const* FindCode(long long code) const;
    std::vector<std::string> Names() const;

private:
    NameRow const* first;
    std::size_t count;
};

NameTable const& ObjectTypes();
NameTable const& Properties();

}  // namespace workbench
