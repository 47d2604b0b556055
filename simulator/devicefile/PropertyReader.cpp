#include "PropertyReader.h"

#include "ConstructedReader.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "RawReader.h"
#include "ScheduleReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

ValuePtr ReadOne(Datatype datatype, ScriptValue const& value) {
    if (auto raw = ReadRaw(value)) {
        return raw;
    }
    return IsConstructed(datatype) ? ReadConstructed(datatype, value) : ReadPrimitive(datatype, value);
}

std::vector<ValuePtr> ReadElements(Datatype datatype, ScriptValue const& value) {
    std::vector<ValuePtr> elements;
    for (ScriptValue const& element : checks::List(value)) {
        try {
            elements.push_back(ReadOne(datatype, element));
        } catch (Mistake const& mistake) {
            throw mistake.In("element " + std::to_string(elements.size() + 1));
        }
    }
    return elements;
}

}  // namespace

std::vector<ValuePtr> ReadValues(PropertyRow const& row, ScriptValue const& value) {
    switch (row.datatype) {
        case Datatype::DailySchedule:
            return ReadWeeklySchedule(value);
        case Datatype::SpecialEvent:
            return ReadExceptionSchedule(value);
        case Datatype::Priority:
            throw Mistake("cannot be given: it follows from present_value and relinquish_default");
        default:
            break;
    }
    if (row.shape == Shape::Single) {
        return {ReadOne(row.datatype, value)};
    }
    return ReadElements(row.datatype, value);
}

}  // namespace simulator
