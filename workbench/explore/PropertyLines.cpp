#include "PropertyLines.h"

#include <algorithm>
#include <utility>

#include "PropertyNames.h"
#include "Refusal.h"
#include "ScheduleLines.h"
#include "ValueWords.h"

namespace workbench {

namespace {

using standard::PropertyId;

constexpr PropertyId First[] = {PropertyId::Object_Name,    PropertyId::Description,
                                PropertyId::Present_Value,  PropertyId::Status_Flags,
                                PropertyId::Event_State,    PropertyId::Reliability,
                                PropertyId::Out_Of_Service, PropertyId::Units,
                                PropertyId::Priority_Array, PropertyId::Relinquish_Default};

bool IsMissing(standard::ReadResult const& result) {
    return result.failure && result.failure->kind == standard::Failure::Kind::Error &&
           result.failure->code == static_cast<std::uint32_t>(standard::ErrorCode::UnknownProperty);
}

std::vector<std::uint32_t> OrderOf(ObjectRecord const& object) {
    std::vector<std::uint32_t> order;
    for (PropertyId const property : First) {
        order.push_back(static_cast<std::uint32_t>(property));
    }
    for (auto const& entry : object.properties) {
        if (std::find(order.begin(), order.end(), entry.first) == order.end()) {
            order.push_back(entry.first);
        }
    }
    return order;
}

std::vector<std::string> TextsOf(ObjectRecord const& object, standard::ReadResult const& result) {
    if (!result.failure && !result.values.empty()) {
        switch (static_cast<PropertyId>(result.reference.property)) {
            case PropertyId::Priority_Array:
                return PriorityLines(object, true);
            case PropertyId::Weekly_Schedule:
                return WeeklyLines(result.values);
            case PropertyId::Exception_Schedule:
                return ExceptionLines(result.values);
            default:
                break;
        }
    }
    return {PropertyWords(object, result.reference.property)};
}

}  // namespace

std::vector<PropertyLine> PropertyLinesOf(ObjectRecord const& object) {
    std::vector<PropertyLine> lines;
    for (std::uint32_t const property : OrderOf(object)) {
        auto const found = object.properties.find(property);
        if (found == object.properties.end() || IsMissing(found->second)) {
            continue;
        }
        std::string name = standard::PropertyText(property);
        for (std::string& text : TextsOf(object, found->second)) {
            lines.push_back({property, std::exchange(name, ""), std::move(text)});
        }
    }
    return lines;
}

}  // namespace workbench
