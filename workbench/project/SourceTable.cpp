#include "SourceTable.h"

#include <algorithm>

namespace workbench {

SourceField const* SourceTable::Find(std::string_view name) const {
    auto const field = std::find_if(fields.begin(), fields.end(),
                                    [&](SourceField const& candidate) { return candidate.name == name; });
    return field == fields.end() ? nullptr : &*field;
}

Place SourcePlace::Of(std::string_view field) const {
    bool const isInTable = table && !(isNamedHere && field == "Name");
    std::string_view const outer = field.substr(0, field.find_first_of(".["));
    SourceField const* const found = isInTable ? table->Find(outer) : nullptr;
    return found ? Place{place.file, found->line} : place;
}

}  // namespace workbench
