#include "ValuesForPeople.h"

#include <utility>

#include "Printable.h"
#include "ScheduleVariable.h"
#include "ShownValue.h"
#include "ValueText.h"

namespace workbench {

namespace {

bool IsScheduleText(VariableConfig const& variable, OpcUa_Variant const& value) {
    return value.Datatype == OpcUaType_String && ScheduleKindOf(variable) != ScheduleKind::None;
}

}  // namespace

std::string ValueForPeople(BlockConfig const& block, VariableConfig const& variable,
                           OpcUa_Variant const& value, long long localDiff) {
    auto const words =
        IsScheduleText(variable, value)
            ? ScheduleForPeopleOf(variable, View(value.Value.Octets), ScheduleNamesOf(block, variable))
            : std::nullopt;
    return words ? tools::Printable(*words) : ShownValue(variable, value, localDiff);
}

std::string ValuesForPeople::Whole(BlockConfig const& block, VariableConfig const& variable,
                                   OpcUa_Variant const& value, long long localDiff) {
    Words const* const words = Find(block, variable, value, localDiff);
    return words ? words->whole : ShownValue(variable, value, localDiff);
}

std::string ValuesForPeople::Short(BlockConfig const& block, VariableConfig const& variable,
                                   OpcUa_Variant const& value, long long localDiff) {
    Words const* const words = Find(block, variable, value, localDiff);
    return words ? words->cut : ShownValue(variable, value, localDiff);
}

ValuesForPeople::Words const* ValuesForPeople::Find(BlockConfig const& block, VariableConfig const& variable,
                                                    OpcUa_Variant const& value, long long localDiff) {
    if (!IsScheduleText(variable, value)) {
        return nullptr;
    }
    std::string_view const text = View(value.Value.Octets);
    KnownWords& words = known[&variable];
    for (Words const& found : words) {
        if (found.text == text && !found.whole.empty()) {
            return &found;
        }
    }
    words[1] = std::move(words[0]);
    std::string whole = ValueForPeople(block, variable, value, localDiff);
    bool const isLong = tools::DisplayWidth(whole) > MostColumns;
    std::string cut = isLong ? tools::FitTo(whole, MostColumns) : whole;
    words[0] = {std::string(text), std::move(whole), std::move(cut)};
    return &words[0];
}

}  // namespace workbench
