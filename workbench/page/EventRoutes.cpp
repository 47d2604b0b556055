#include <string>
#include <vector>

#include "EventJson.h"
#include "HistoryCsv.h"
#include "Numbers.h"
#include "PageRoutes.h"

namespace workbench {

HttpResponse AnswerEvents(PageCall const& call) {
    auto const after = NumberParameter(call.request, "after", 0, 0, LargestNumber);
    if (!after) {
        return NumberProblem(call.request, "after", "the id of an event, 0 or more");
    }
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("events");
    writer.StartArray();
    for (Event const& event : call.plant.Run().memory.events.Since(*after)) {
        WriteEvent(writer, event);
    }
    writer.EndArray();
    writer.EndObject();
    HttpResponse response;
    response.body = JsonLine(buffer);
    return response;
}

HttpResponse AnswerEventsCsv(PageCall const& call) {
    return CsvFile("events.csv", EventsCsv(call.plant.Run().memory.events.Since(0)));
}

}  // namespace workbench
