#include "RecordExport.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "CsvCells.h"
#include "JsonFields.h"
#include "NumberText.h"
#include "RecordTime.h"
#include "TimeText.h"

namespace workbench {

namespace {

// Of a file that something else has written, times may be any.
constexpr long long Year1 = -62135596800000;
constexpr long long Year9999 = 253402300799999;

std::string TimeOf(long long any) {
    long long const time = std::clamp(any, Year1, Year9999);
    return time == 0 ? std::string() : IsoTime(FileTimeOf(time), LocalDiffAt(time) * 10000);
}

char const* NameOf(QualityKind quality) {
    return quality == QualityKind::Good ? "good" : quality == QualityKind::Uncertain ? "uncertain" : "bad";
}

// States of a Boolean and of a binary object count from 0, those of a multi-state object from 1.
std::string StateOf(RecordedVariable const& variable, double value) {
    bool const isMultiState = variable.object.find("multi-state") == 0;
    double const index = value - (isMultiState ? 1 : 0);
    bool const isState =
        index >= 0 && index < static_cast<double>(variable.states.size()) && std::trunc(index) == index;
    return isState ? variable.states[static_cast<std::size_t>(index)] : std::string();
}

bool IsBoolean(RecordedVariable const& variable) {
    return variable.type == "Boolean" || variable.type == "DataValue(Boolean)";
}

bool Matches(char const* pattern, char const* text) {
    for (; *pattern != '*'; ++pattern, ++text) {
        if (*pattern != *text) {
            return false;
        }
        if (*text == '\0') {
            return true;
        }
    }
    while (*pattern == '*') {
        ++pattern;
    }
    if (*pattern == '\0') {
        return true;
    }
    for (; *text != '\0'; ++text) {
        if (Matches(pattern, text)) {
            return true;
        }
    }
    return false;
}

void WriteRowValue(JsonWriter& writer, RecordedVariable const& variable, RecordRow const& row) {
    writer.Key("value");
    if (row.isText) {
        WriteText(writer, row.text);
    } else if (std::isnan(row.number)) {
        writer.Null();
    } else if (IsBoolean(variable)) {
        writer.Bool(row.number != 0);
    } else if (std::isinf(row.number)) {
        WriteText(writer, tools::NumberText(row.number));
    } else {
        std::string const number = tools::NumberText(row.number);
        writer.RawValue(number.data(), number.size(), rapidjson::kNumberType);
    }
}

std::string RowJson(RecordedVariable const& variable, RecordRow const& row) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "time", TimeOf(row.time));
    WriteField(writer, "block", variable.block);
    WriteField(writer, "variable", variable.name);
    WriteRowValue(writer, variable, row);
    WriteOptional(writer, "unit", variable.unit);
    WriteOptional(writer, "stateText", StateOf(variable, row.number));
    WriteField(writer, "quality", NameOf(row.quality));
    writer.EndObject();
    return JsonLine(buffer);
}

std::string ValueCell(RecordRow const& row) {
    if (row.isText) {
        return CsvSafeText(row.text);
    }
    return std::isnan(row.number) ? std::string() : tools::NumberText(row.number);
}

}  // namespace

std::vector<RecordedVariable> MatchingVariables(std::vector<RecordedVariable> const& variables,
                                                std::vector<std::string> const& patterns,
                                                std::vector<std::string>& unknown) {
    if (patterns.empty()) {
        return variables;
    }
    std::vector<bool> isChosen(variables.size());
    for (std::string const& pattern : patterns) {
        bool isKnown = false;
        for (std::size_t i = 0; i < variables.size(); ++i) {
            std::string const name = variables[i].block + "." + variables[i].name;
            if (Matches(pattern.c_str(), name.c_str())) {
                isChosen[i] = true;
                isKnown = true;
            }
        }
        if (!isKnown) {
            unknown.push_back(pattern);
        }
    }
    std::vector<RecordedVariable> chosen;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        if (isChosen[i]) {
            chosen.push_back(variables[i]);
        }
    }
    return chosen;
}

std::string RowsHeader(RecordFormat format) {
    return format == RecordFormat::Json
               ? std::string()
               : CsvLine({"time", "block", "variable", "value", "unit", "state_text", "quality"});
}

std::string RowText(RecordedVariable const& variable, RecordRow const& row, RecordFormat format) {
    if (format == RecordFormat::Json) {
        return RowJson(variable, row);
    }
    return CsvLine({TimeOf(row.time), CsvSafeText(variable.block), CsvSafeText(variable.name), ValueCell(row),
                    CsvSafeText(variable.unit), CsvSafeText(StateOf(variable, row.number)),
                    NameOf(row.quality)});
}

std::string EventsHeader(RecordFormat format) {
    return format == RecordFormat::Json ? std::string()
                                        : CsvLine({"id", "time", "event", "block", "variable", "text"});
}

std::string EventText(RecordedEvent const& event, RecordFormat format) {
    if (format == RecordFormat::Csv) {
        return CsvLine({std::to_string(event.id), TimeOf(event.time), event.event, CsvSafeText(event.block),
                        CsvSafeText(event.variable), CsvSafeText(event.text)});
    }
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("id");
    writer.Int64(event.id);
    WriteField(writer, "time", TimeOf(event.time));
    WriteField(writer, "event", event.event);
    WriteOptional(writer, "block", event.block);
    WriteOptional(writer, "variable", event.variable);
    WriteField(writer, "text", event.text);
    writer.EndObject();
    return JsonLine(buffer);
}

std::string ListHeader(RecordFormat format) {
    return format == RecordFormat::Json ? std::string()
                                        : CsvLine({"block", "variable", "object", "property", "type", "unit",
                                                   "oldest", "newest", "description"});
}

std::string ListText(RecordedVariable const& variable, long long oldest, long long newest,
                     RecordFormat format) {
    if (format == RecordFormat::Csv) {
        return CsvLine({CsvSafeText(variable.block), CsvSafeText(variable.name), variable.object,
                        variable.property, variable.type, CsvSafeText(variable.unit), TimeOf(oldest),
                        TimeOf(newest), CsvSafeText(variable.description)});
    }
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "block", variable.block);
    WriteField(writer, "variable", variable.name);
    WriteField(writer, "object", variable.object);
    WriteField(writer, "property", variable.property);
    WriteField(writer, "type", variable.type);
    WriteOptional(writer, "unit", variable.unit);
    WriteOptional(writer, "oldest", TimeOf(oldest));
    WriteOptional(writer, "newest", TimeOf(newest));
    WriteOptional(writer, "description", variable.description);
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace workbench
