#include "HttpRequest.h"

#include "JsonFields.h"

namespace workbench {

std::string HttpRequest::Header(std::string const& name) const {
    auto const [first, last] = headers.equal_range(name);
    std::string values;
    for (auto header = first; header != last; ++header) {
        values += header == first ? header->second : ", " + header->second;
    }
    return values;
}

std::string HttpRequest::Parameter(std::string const& name) const {
    auto const found = parameters.find(name);
    return found == parameters.end() ? std::string() : found->second;
}

HttpResponse Problem(int status, std::string const& text) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "error", text);
    writer.EndObject();
    HttpResponse response;
    response.status = status;
    response.body = JsonLine(buffer);
    return response;
}

}  // namespace workbench
