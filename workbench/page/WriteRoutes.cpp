#include <string>

#include "BodyObject.h"
#include "JsonFormat.h"
#include "PageRoutes.h"
#include "ProjectError.h"
#include "SetAnswer.h"
#include "SetRequest.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr std::size_t LongestValue = 1 << 20;

HttpResponse AnswerOf(int status, SetAnswer const& answer) {
    HttpResponse response;
    response.status = status;
    response.body = FormatJson(answer, dorvel::Environment().LocalTimeDiff());
    return response;
}

}  // namespace

// By the same path as a line at the prompt, so that both say the same.
HttpResponse AnswerWrite(PageCall const& call) {
    if (!call.plant.Run().hasWrites) {
        return Problem(403,
                       "this page is read-only; start dorvel-workbench run with --page-writes to set values");
    }
    BodyObject const body(call.request.body);
    if (!body.Mistake().empty()) {
        return Problem(400, body.Mistake());
    }
    auto const value = body.Text("value");
    if (!value || value->size() > LongestValue) {
        return Problem(400, "value: a text is needed, as in {\"value\":\"21.5\"}");
    }
    PageVariable const& variable = *call.variable;
    std::string const name = FullName(*variable.block, *variable.config);
    try {
        SetRequest const request = MakeSetRequest(*variable.block, *variable.config, *value);
        call.plant.Run().setter.Set(request);
        SetAnswer const answer{name, request.value, {}, variable.config};
        call.plant.Run().log.Add("page: " + AnswerText(answer, dorvel::Environment().LocalTimeDiff()));
        return AnswerOf(202, answer);
    } catch (ProjectError const& mistake) {
        return AnswerOf(400, {name, {}, mistake.what()});
    }
}

}  // namespace workbench
