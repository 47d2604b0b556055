#include "DetailView.h"

#include <algorithm>
#include <cmath>

#include "DetailText.h"
#include "QualityText.h"
#include "SetRequest.h"
#include "ShownValue.h"
#include "Sparkline.h"
#include "StateColours.h"
#include "TimeText.h"
#include "TypeName.h"
#include "Units.h"

namespace workbench {

namespace {

std::string TimeWords(long long time, long long localDiff, long long now) {
    return time == 0 ? "" : IsoTime(time, localDiff) + ", " + AgeText(time, now) + " ago";
}

std::string UnitWords(VariableConfig const& variable) {
    std::string const symbol = UnitText(variable.unit);
    return symbol == variable.unit || symbol.empty() ? variable.unit : symbol + ", " + variable.unit;
}

// "1 off, 2 automatic".
std::string StateWords(VariableConfig const& variable) {
    constexpr std::size_t most = 100;
    std::size_t const first = StatesOf(variable) == States::FromOne ? 1 : 0;
    std::size_t const count = std::min(variable.stateTexts.size(), most);
    std::string words;
    for (std::size_t i = 0; i < count; ++i) {
        words += (i > 0 ? ", " : "") + std::to_string(first + i) + " " + variable.stateTexts[i];
    }
    return count < variable.stateTexts.size() ? words + " and more" : words;
}

void AddNow(VariableSnapshot const& variable, BlockSnapshot const& block, WriteState const& write,
            ValuesForPeople& values, DetailText& text) {
    VariableState const& state = variable.state;
    VariableConfig const& config = *variable.config;
    std::string const words = values.Whole(*block.config, config, state.Value, block.localDiff);
    std::string const shown = ShownValue(config, state.Value, block.localDiff);
    text.Add("Value", words, variable.suspect.empty() ? Colour::Bold : Colour::Red);
    text.Add("As a text", shown == words ? "" : shown, Colour::Dim);
    text.Add("Quality", QualityText(state.Status) + ", " + StatusText(state.Status),
             QualityColour(state.Status));
    text.Add("Suspect", variable.suspect, Colour::Red);
    bool const isSet = write.stage != WriteStage::None;
    text.Add("Write",
             isSet ? WriteText(values.Whole(*block.config, config, write.value, block.localDiff), write, true)
             : config.write ? "nothing set in this run"
                            : "cannot be set",
             WriteColour(write.stage));
}

void AddTimes(VariableState const& state, long long changed, long long localDiff, long long now,
              DetailText& text) {
    text.Add("Time", TimeWords(state.Time, localDiff, now));
    text.Add("Last change", TimeWords(changed, localDiff, now));
}

void AddPoint(PointFields const& point, DetailText& text) {
    text.Add("Object name", point.objectName);
    text.Add("Key name", point.keyName);
    text.Add("Vendor address", point.vendorAddress);
    text.Add("Default", point.defaultValue);
}

void AddProject(VariableConfig const& variable, DetailText& text) {
    text.Add("Object", ObjectText(variable));
    text.Add("Property", variable.property->name);
    text.Add("Type", TypeName(variable.type));
    text.Add("Unit", UnitWords(variable));
    text.Add("States", StateWords(variable));
    text.Add("Description", variable.description);
    AddPoint(variable.point, text);
}

void AddBlock(BlockSnapshot const& block, DetailText& text) {
    text.Add("Block", block.config->name);
    text.Add("State", StateText(block), BlockColour(block));
    for (Cause const& cause : block.causes) {
        text.Add("", cause.text, IsFault(block) ? Colour::Red : Colour::Yellow);
    }
    text.Add("Address", block.config->address);
    text.Add("Device", block.config->deviceInstance ? std::to_string(*block.config->deviceInstance) : "");
    text.Add("Task", block.config->task);
    text.Add("Cycle", std::to_string(block.cycle));
}

// A sample has the value of a Float as a double, with digits that it does not have.
std::string NumberWords(VariableConfig const& variable, double number, long long localDiff) {
    OpcUa_VariantHlp value;
    if (ValueType(variable) == OpcUaType_Float) {
        value.SetFloat(static_cast<float>(number));
    } else {
        value.SetDouble(number);
    }
    return ShownValue(variable, value, localDiff);
}

// The line, and between which values and times it is.
void AddTrend(VariableConfig const& variable, VariableFacts const& facts, long long localDiff,
              DetailText& text) {
    std::string const line = Sparkline(facts.trend, facts.trendFrom, facts.trendTo, text.Width());
    if (line.empty()) {
        return;
    }
    std::vector<double> numbers;
    for (Sample const& sample : facts.trend) {
        if (std::isfinite(sample.value) && sample.quality != QualityKind::Bad) {
            numbers.push_back(sample.value);
        }
    }
    auto const [least, greatest] = std::minmax_element(numbers.begin(), numbers.end());
    text.Title("Trend");
    text.Add(ClockTime(facts.trendFrom, localDiff), line, Colour::Green);
    text.Add("to " + ClockTime(facts.trendTo, localDiff),
             NumberWords(variable, *least, localDiff) + " to " + NumberWords(variable, *greatest, localDiff));
}

void AddEvents(std::vector<Event> const& events, DetailText& text) {
    if (events.empty()) {
        return;
    }
    text.Title("Events");
    for (auto event = events.rbegin(); event != events.rend(); ++event) {
        text.Add(ClockTime(event->time, event->localDiff), event->text);
    }
}

void AddLog(std::vector<LogLine> const& log, DetailText& text) {
    if (log.empty()) {
        return;
    }
    text.Title("Log");
    for (auto line = log.rbegin(); line != log.rend(); ++line) {
        text.Add(ClockTime(line->time, line->localDiff), line->text);
    }
}

// What the device says of the object, by the standard and not through the driver.
void AddInspection(Inspection const& inspection, long long localDiff, long long now, DetailText& text) {
    text.Title("The object as its device describes it");
    if (inspection.state == InspectionState::Failed || !inspection.reason.empty()) {
        text.Add(InspectionName(inspection.state), inspection.reason, Colour::Yellow);
    } else if (inspection.properties.empty()) {
        text.Line("being read ...", Colour::Dim);
    }
    text.Add("Read", TimeWords(inspection.time, localDiff, now));
    for (Inspection::Property const& property : inspection.properties) {
        text.AddLong(property.name, property.value);
    }
}

}  // namespace

std::vector<std::string> DetailLines(PlantRows const& rows, std::size_t block, std::size_t variable,
                                     VariableFacts const& facts, ValuesForPeople& values,
                                     Screen const& screen, long long now) {
    BlockSnapshot const& snapshot = *rows.Plant().blocks[block];
    VariableSnapshot const& shown = snapshot.variables[variable];
    DetailText text(screen);
    text.Title(FullName(*snapshot.config, *shown.config));
    AddNow(shown, snapshot, rows.Plant().WriteOf(shown), values, text);
    AddTimes(shown.state, rows.Changes().Of(block, variable), snapshot.localDiff, now, text);
    AddProject(*shown.config, text);
    AddBlock(snapshot, text);
    AddTrend(*shown.config, facts, snapshot.localDiff, text);
    AddEvents(facts.events, text);
    AddLog(facts.log, text);
    if (facts.inspection) {
        AddInspection(*facts.inspection, snapshot.localDiff, now, text);
    }
    return text.Lines();
}

}  // namespace workbench
