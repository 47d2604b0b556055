#include "PropertyReader.h"

#include "ConstructedReader.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "ScheduleReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

ValuePtr readOne(Datatype datatype, ScriptValue const& value) {
    return isConstructed(datatype) ? readConstructed(datatype, value) : readPrimitive(datatype, value);
}

std::vector<ValuePtr> readElements(Datatype datatype, ScriptValue const& value) {
    std::vector<ValuePtr> elements;
    for (ScriptValue const& element : checks::list(value)) {
        try {
            elements.push_back(readOne(datatype, element));
        } catch (Mistake const& mistake) {
            throw mistake.in("element " + std::to_string(elements.size() + 1));
        }
    }
    return elements;
}

}  // namespace

std::vector<ValuePtr> readValues(PropertyRow const& row, ScriptValue const& value) {
    switch (row.datatype) {
        case Datatype::DailySchedule:
            return readWeeklySchedule(value);
        case Datatype::SpecialEvent:
            return readExceptionSchedule(value);
        case Datatype::Priority:
            throw Mistake("cannot be given: it follows from present_value and relinquish_default");
        default:
            break;
    }
    if (row.shape == Shape::Single) {
        return {readOne(row.datatype, value)};
    }
    return readElements(row.datatype, value);
}

}  // namespace simulator
