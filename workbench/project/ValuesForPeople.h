#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "Project.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

// As ShownValue (ShownValue.h); a schedule as people type it (ScheduleForPeople.h), if its text can be read.
std::string ValueForPeople(BlockConfig const& block, VariableConfig const& variable,
                           OpcUa_Variant const& value, long long localDiff);

// The same for what is drawn often. A schedule is read again only when its text is another one: the value and
// what was set for it are kept for each variable. For one thread; the project must outlive it.
class ValuesForPeople {
public:
    std::string Whole(BlockConfig const& block, VariableConfig const& variable, OpcUa_Variant const& value,
                      long long localDiff);
    // For a cell of a table: the words of a schedule end with "…" after MostColumns.
    std::string Short(BlockConfig const& block, VariableConfig const& variable, OpcUa_Variant const& value,
                      long long localDiff);

    static constexpr std::size_t MostColumns = 500;

private:
    struct Words {
        std::string text;  // of the driver
        std::string whole;
        std::string cut;
    };
    // The newest first.
    using KnownWords = std::array<Words, 2>;

    Words const* Find(BlockConfig const& block, VariableConfig const& variable, OpcUa_Variant const& value,
                      long long localDiff);

    std::map<VariableConfig const*, KnownWords> known;
};

}  // namespace workbench
