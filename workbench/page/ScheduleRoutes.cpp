#include <string>
#include <variant>

#include "BodyObject.h"
#include "ComposeSchedule.h"
#include "Numbers.h"
#include "PageRoutes.h"
#include "PageSchedule.h"
#include "ScheduleChanges.h"
#include "ScheduleJson.h"
#include "ScheduleLosses.h"
#include "ScheduleVariable.h"

namespace workbench {

namespace {

HttpResponse NoSchedule(PageCall const& call) {
    return Problem(404, "\"" + call.variable->config->name + "\" is not a schedule; its property is " +
                            call.variable->config->property->name);
}

void WriteRemark(JsonWriter& writer, std::string const& place, std::string const& reason) {
    writer.StartObject();
    WriteField(writer, "place", place);
    WriteField(writer, "reason", reason);
    writer.EndObject();
}

void WriteRemarks(JsonWriter& writer, char const* key, ScheduleRemarks const& remarks) {
    writer.Key(key);
    writer.StartArray();
    for (ScheduleRemark const& remark : remarks) {
        WriteRemark(writer, remark.place, remark.reason);
    }
    writer.EndArray();
}

void WriteLosses(JsonWriter& writer, std::vector<ScheduleLoss> const& losses) {
    writer.Key("losses");
    writer.StartArray();
    for (ScheduleLoss const& loss : losses) {
        WriteRemark(writer, loss.place, loss.reason);
    }
    writer.EndArray();
}

// The answer to a model: what would be written, and how that differs from what the device has.
template <typename Schedule>
std::string ComposedJson(Schedule const& schedule, Schedule const& before, ValueNames const& names) {
    ComposedSchedule const composed = Compose(schedule);
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("text");
    if (composed.mistakes.empty()) {
        WriteText(writer, composed.text);
    } else {
        writer.Null();
    }
    WriteRemarks(writer, "mistakes", composed.mistakes);
    WriteLosses(writer, Losses(schedule));
    writer.Key("changes");
    writer.StartArray();
    for (std::string const& change : Changes(before, schedule, names)) {
        WriteText(writer, change);
    }
    writer.EndArray();
    writer.Key("model");
    WriteSchedule(writer, Normalised(schedule), names);
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace

HttpResponse AnswerSchedule(PageCall const& call) {
    if (ScheduleKindOf(*call.variable->config) == ScheduleKind::None) {
        return NoSchedule(call);
    }
    auto const year = NumberParameter(call.request, "year", 0, FirstYear, LastYear);
    if (!year) {
        return NumberProblem(call.request, "year",
                             "a year from " + std::to_string(FirstYear) + " to " + std::to_string(LastYear));
    }
    HttpResponse response;
    response.body = ScheduleAnswer(call.plant, *call.variable, static_cast<unsigned>(*year));
    return response;
}

HttpResponse AnswerComposed(PageCall const& call) {
    PageVariable const& variable = *call.variable;
    ScheduleKind const kind = ScheduleKindOf(*variable.config);
    if (kind == ScheduleKind::None) {
        return NoSchedule(call);
    }
    BodyObject const body(call.request.body);
    rapidjson::Value const* const model = body.Member("model");
    if (!body.Mistake().empty() || !model) {
        return Problem(
            400, body.Mistake().empty() ? "model: a schedule is needed, as GET has it" : body.Mistake());
    }
    ScheduleOfJson const read = ReadScheduleJson(*model);
    if (!read.mistake.empty()) {
        return Problem(400, "model: " + read.mistake);
    }
    ValueNames const names = ScheduleNamesOf(*variable.block, *variable.config);
    std::string const text = ScheduleTextNow(call.plant, variable).value_or("");
    HttpResponse response;
    auto const* const weekly = std::get_if<WeeklySchedule>(&read.schedule);
    auto const* const exception = std::get_if<ExceptionSchedule>(&read.schedule);
    if (weekly && kind == ScheduleKind::Weekly) {
        response.body = ComposedJson(*weekly, ReadWeekly(text).schedule.value_or(WeeklySchedule()), names);
    } else if (exception && kind == ScheduleKind::Exception) {
        response.body =
            ComposedJson(*exception, ReadException(text).schedule.value_or(ExceptionSchedule()), names);
    } else {
        return Problem(
            400, std::string("model: kind: this variable has the kind \"") + KindOf(*variable.config) + "\"");
    }
    return response;
}

}  // namespace workbench
