#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "HistoryCsv.h"
#include "NumberText.h"
#include "Numbers.h"
#include "PageRoutes.h"
#include "TimeText.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr long long Hour = 36000000000LL;
constexpr unsigned long long MostHours = 24 * 366;
constexpr std::size_t MostPoints = 4000;
constexpr std::size_t MostRows = 100000;
constexpr std::size_t MostVariables = 100;

long long Milliseconds(long long fileTime) {
    return (fileTime - UnixEpoch) / 10000;
}

struct Span {
    long long from;
    long long to;
};

std::optional<Span> SpanOf(HttpRequest const& request) {
    auto const hours = NumberParameter(request, "hours", 24, 1, MostHours);
    if (!hours) {
        return {};
    }
    long long const now = dorvel::Environment().Now();
    return Span{now - static_cast<long long>(*hours) * Hour, now};
}

HttpResponse HoursProblem(HttpRequest const& request) {
    return NumberProblem(request, "hours", "a whole number of hours from 1 to " + std::to_string(MostHours));
}

char const* NameOf(QualityKind quality) {
    static constexpr char const* names[] = {"good", "uncertain", "bad"};
    return names[static_cast<int>(quality)];
}

void WritePoint(JsonWriter& writer, Sample const& sample) {
    writer.StartArray();
    writer.Int64(Milliseconds(sample.time));
    if (std::isfinite(sample.value)) {
        std::string const number = tools::NumberText(sample.value);
        writer.RawValue(number.data(), number.size(), rapidjson::kNumberType);
    } else {
        writer.Null();
    }
    writer.String(NameOf(sample.quality));
    writer.EndArray();
}

std::string RowsOf(PagePlant const& plant, PageVariable const& variable, Span const& span) {
    return TrendRows(*variable.block, *variable.config,
                     plant.Run().trends.Samples(*variable.config, span.from, span.to, MostRows),
                     dorvel::Environment().LocalTimeDiff());
}

}  // namespace

HttpResponse AnswerTrend(PageCall const& call) {
    auto const span = SpanOf(call.request);
    if (!span) {
        return HoursProblem(call.request);
    }
    History const& trends = call.plant.Run().trends;
    VariableConfig const& variable = *call.variable->config;
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("from");
    writer.Int64(Milliseconds(span->from));
    writer.Key("to");
    writer.Int64(Milliseconds(span->to));
    writer.Key("oldest");
    if (long long const oldest = trends.Oldest(variable)) {
        writer.Int64(Milliseconds(oldest));
    } else {
        writer.Null();
    }
    writer.Key("points");
    writer.StartArray();
    for (Sample const& sample : trends.Samples(variable, span->from, span->to, MostPoints)) {
        WritePoint(writer, sample);
    }
    writer.EndArray();
    writer.EndObject();
    HttpResponse response;
    response.body = JsonLine(buffer);
    return response;
}

HttpResponse AnswerTrendCsv(PageCall const& call) {
    auto const span = SpanOf(call.request);
    return span ? CsvFile("trend-" + std::to_string(call.variable->id) + ".csv",
                          TrendHeader() + RowsOf(call.plant, *call.variable, *span))
                : HoursProblem(call.request);
}

HttpResponse AnswerTrendsCsv(PageCall const& call) {
    auto const span = SpanOf(call.request);
    if (!span) {
        return HoursProblem(call.request);
    }
    auto const [first, last] = call.request.parameters.equal_range("id");
    std::set<PageVariable const*> variables;
    for (auto id = first; id != last; ++id) {
        PageVariable const* const variable = FindVariable(call.plant, id->second);
        if (!variable) {
            return UnknownVariable(id->second);
        }
        variables.insert(variable);
    }
    if (variables.empty() || variables.size() > MostVariables) {
        return Problem(400, "id: the ids of 1 to " + std::to_string(MostVariables) +
                                " variables are needed, as in ?id=1&id=2&hours=24");
    }
    std::string text = TrendHeader();
    for (PageVariable const* const variable : variables) {
        text += RowsOf(call.plant, *variable, *span);
    }
    return CsvFile("trends.csv", text);
}

}  // namespace workbench
