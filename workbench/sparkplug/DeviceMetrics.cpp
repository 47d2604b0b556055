#include "DeviceMetrics.h"

#include <rapidjson/stringbuffer.h>

#include <utility>

#include "JsonFields.h"
#include "Printable.h"
#include "PublishedQuality.h"
#include "ShownValue.h"
#include "SparkplugValues.h"
#include "Units.h"
#include "ValueText.h"

namespace workbench {

namespace {

constexpr std::size_t LongestPropertyText = 1000;

void AddText(SparkplugMetric& metric, char const* key, std::string const& text) {
    if (!text.empty() && text.size() <= LongestPropertyText) {
        metric.properties.push_back({key, SparkplugType::String, tools::ValidUtf8(text)});
    }
}

// A description says something when it is cut, too.
std::string Cut(std::string const& text) {
    return text.size() > LongestPropertyText ? tools::Printable(text, LongestPropertyText - 3) : text;
}

void AddNumber(SparkplugMetric& metric, char const* key, std::optional<double> const& number) {
    if (number) {
        metric.properties.push_back({key, SparkplugType::Double, *number});
    }
}

// {"1":"manual","2":"automatic"}.
std::string StatesText(VariableConfig const& variable) {
    States const states = StatesOf(variable);
    if (states == States::None || variable.stateTexts.empty()) {
        return {};
    }
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    int number = states == States::FromOne ? 1 : 0;
    for (std::string const& text : variable.stateTexts) {
        WriteField(writer, std::to_string(number++).c_str(), text);
    }
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

void AddQuality(SparkplugMetric& metric, std::uint32_t code) {
    metric.properties.push_back({"Quality", SparkplugType::Int32, code});
}

void AddStatus(SparkplugMetric& metric, VariableSnapshot const& variable) {
    AddText(
        metric, "status",
        Cut(variable.suspect.empty() ? QualityText(variable.state.Status) : "suspect: " + variable.suspect));
}

void AddFacts(SparkplugMetric& metric, VariableConfig const& variable, BirthDetail detail) {
    if (HasUnit(variable)) {
        AddText(metric, "engUnit", UnitText(variable.unit));
    }
    AddNumber(metric, "engLow", variable.point.minimum);
    AddNumber(metric, "engHigh", variable.point.maximum);
    if (detail == BirthDetail::Whole) {
        AddText(metric, "description", Cut(variable.description));
        AddText(metric, "object", ObjectText(variable));
        AddText(metric, "property", variable.property->name);
        AddText(metric, "states", StatesText(variable));
    }
}

void SetValue(SparkplugMetric& metric, SparkplugValue value) {
    metric.isNull = std::holds_alternative<std::monostate>(value);
    metric.value = std::move(value);
}

SparkplugMetric MetricOf(VariableView const& view) {
    SparkplugMetric metric;
    metric.alias = view.alias;
    long long const time = view.variable.state.Time;
    metric.timestamp = SparkplugTime(time != 0 ? time : view.block.time);
    _OpcUa_BuiltInType const type = ValueType(*view.variable.config);
    metric.type = SparkplugTypeOf(type);
    SetValue(metric, WireValue(view.variable.state.Value, type));
    return metric;
}

}  // namespace

std::uint32_t QualityCodeOf(BlockSnapshot const& block, VariableSnapshot const& variable) {
    return QualityCode(PublishedQuality(block, variable), !variable.suspect.empty());
}

bool IsLeftOut(VariableSnapshot const& variable, BirthDetail detail) {
    OpcUa_VariantHlp const& value = variable.state.Value;
    bool const hasOctets = value.GetType() == OpcUaType_String || value.GetType() == OpcUaType_ByteString;
    return detail == BirthDetail::WithoutLongValues && hasOctets &&
           View(value.Value.Octets).size() > LongestBirthValue;
}

SparkplugMetric BirthMetric(VariableView const& view, std::string const& name, bool isSettable,
                            BirthDetail detail) {
    SparkplugMetric metric = MetricOf(view);
    metric.name = name;
    if (IsLeftOut(view.variable, detail)) {
        SetValue(metric, {});
    }
    std::uint32_t const code = QualityCodeOf(view.block, view.variable);
    AddQuality(metric, code);
    if (code != QualityGood) {
        AddStatus(metric, view.variable);
    }
    AddFacts(metric, *view.variable.config, detail);
    metric.properties.push_back({"readOnly", SparkplugType::Boolean, !isSettable});
    return metric;
}

SparkplugMetric DataMetric(VariableView const& view, bool wasGood) {
    SparkplugMetric metric = MetricOf(view);
    std::uint32_t const code = QualityCodeOf(view.block, view.variable);
    if (code != QualityGood || !wasGood) {
        AddQuality(metric, code);
        AddStatus(metric, view.variable);
    }
    return metric;
}

}  // namespace workbench
