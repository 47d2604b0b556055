#include <string>

#include "ObjectInspector.h"
#include "PageRoutes.h"
#include "TimeText.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

std::string InspectionJson(Inspection const& inspection, long long localDiff) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "state", InspectionName(inspection.state));
    WriteOptional(writer, "reason", inspection.reason);
    WriteOptional(writer, "time", inspection.time ? IsoTime(inspection.time, localDiff) : std::string());
    writer.Key("properties");
    writer.StartArray();
    for (Inspection::Property const& property : inspection.properties) {
        writer.StartObject();
        WriteField(writer, "name", property.name);
        WriteField(writer, "value", property.value);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    return JsonLine(buffer);
}

HttpResponse AnswerDevice(PageCall const& call) {
    PageVariable const& variable = *call.variable;
    HttpResponse response;
    response.body = InspectionJson(*call.plant.Inspector().Inspect(*variable.block, *variable.config),
                                   dorvel::Environment().LocalTimeDiff());
    return response;
}

}  // namespace workbench
