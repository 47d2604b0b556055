#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// One object type or property: the number that the driver is configured with, BACnet's own number, and the
// name that ASHRAE 135 gives it in its productions.
struct NameRow {
    int code;
    int bacnetNumber;
    char const* name;
};

// The names of one kind, ordered by code. The rows are constants of the program.
class NameTable {
public:
    constexpr NameTable(NameRow const* rows, std::size_t rowCount) : first(rows), count(rowCount) {}

    NameRow const* begin() const { return first; }
    NameRow const* end() const { return first + count; }

    // By a name in any usual spelling: letter case, blanks, underscores and hyphens do not matter.
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
