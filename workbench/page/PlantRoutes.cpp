#include "OutletFormat.h"
#include "PageRoutes.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

std::string OutletsField(PagePlant const& plant) {
    OutletList const* const outlets = plant.Run().outlets;
    std::string const object = OutletsJson(outlets ? outlets->States() : std::vector<OutletState>(),
                                           dorvel::Environment().LocalTimeDiff());
    return object.substr(1, object.size() - 2);
}

}  // namespace

HttpResponse AnswerSession(PageCall const& call) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "token", call.session.token);
    writer.Key("writes");
    writer.Bool(call.plant.Run().hasWrites);
    WriteField(writer, "version", call.plant.Run().version);
    writer.EndObject();
    HttpResponse response;
    response.body = JsonLine(buffer);
    return response;
}

HttpResponse AnswerPlant(PageCall const& call) {
    HttpResponse response;
    response.body = PlantJson(call.plant);
    return response;
}

HttpResponse AnswerValues(PageCall const& call) {
    PlantBoard const& board = call.plant.Run().memory.board;
    HttpResponse response;
    // Before the blocks, so that it is never too new for them.
    response.body = "{\"generation\":" + std::to_string(board.Generation()) + ",\"blocks\":[";
    bool isFirst = true;
    for (SharedSnapshot const& block : board.All()) {
        response.body += isFirst ? "" : ",";
        response.body += *call.plant.Stream().WholeBlock(block);
        isFirst = false;
    }
    response.body += "]," + OutletsField(call.plant) + "}\n";
    return response;
}

HttpResponse AnswerStream(PageCall const&) {
    HttpResponse response;
    response.type = "text/event-stream";
    response.isStream = true;
    // A proxy must not collect events before it passes them on.
    response.headers.emplace_back("X-Accel-Buffering", "no");
    return response;
}

}  // namespace workbench
