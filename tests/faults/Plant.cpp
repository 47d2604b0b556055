#include "Plant.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "DeviceFile.h"
#include "LogCapture.h"
#include "ProjectCodes.h"

extern "C" int InitAddin();

namespace test {

// A variable of the script: its type, the codes of its object type and property, the object's number, whether
// it is also written, and its value as a text.
struct VariableRow {
    int type;
    int elementType;
    int objectType;
    int property;
    int number;
    bool isWritten;
    char const* expected;
};

namespace {

constexpr int DataValue = 23;
constexpr int Float = 10;
constexpr int String = 12;

#define LONG_TEXT "a text that does not fit into one segment of fifty octets, nor into two of them"

constexpr VariableRow ReadRows[] = {
    {DataValue, Float, code::AnalogInput, code::PresentValue, 1, false, "21.5"},
    {DataValue, String, code::AnalogInput, code::Description, 1, false, LONG_TEXT},
    {Float, 0, code::AnalogValue, code::PresentValue, 1, false, "4.25"},
    {DataValue, String, code::AnalogValue, code::Description, 1, false, LONG_TEXT},
};
constexpr VariableRow WriteRows[] = {
    {DataValue, Float, code::AnalogOutput, code::PresentValue, 1, true, "36.5"},
};
// One object that is answered in segments, one that is not, one that is also written.
constexpr VariableRow MixedRows[] = {
    {DataValue, Float, code::AnalogInput, code::PresentValue, 1, false, "21.5"},
    {DataValue, String, code::AnalogInput, code::Description, 1, false, LONG_TEXT},
    {DataValue, Float, code::AnalogOutput, code::PresentValue, 1, true, "36.5"},
    {Float, 0, code::AnalogValue, code::PresentValue, 1, false, "4.25"},
};
constexpr VariableRow BystanderRows[] = {
    {DataValue, Float, code::AnalogInput, code::PresentValue, 7, false, "7.75"},
    {String, 0, code::AnalogInput, code::Description, 7, false, "the bystander"},
};

constexpr char SubjectObjects[] = R"( objects = {
    analog_input{instance = 1, name = "one", present_value = 21.5, description = ")" LONG_TEXT R"("},
    analog_value{instance = 1, name = "two", present_value = 4.25, description = ")" LONG_TEXT R"("},
    analog_output{instance = 1, name = "three", present_value = 36.5, relinquish_default = 36.5},
} })";
constexpr char BystanderDevice[] = R"(device{ name = "bystander", instance = 2, objects = {
    analog_input{instance = 7, name = "one", present_value = 7.75, description = "the bystander"},
} })";

#undef LONG_TEXT

// The data that differ from path to path.
struct PathRow {
    char const* fields;  // of the block
    char const* device;  // settings
    VariableRow const* variables;
    std::size_t count;
    Sizes sizes;
};

constexpr char Local[] = "MAC = '192.168.10.20:47808'";
constexpr char Routed[] = "MAC = '10:20', NetworkNumber = 5";

// Indexed by Path.
constexpr PathRow Paths[] = {
    {Local, "", ReadRows, std::size(ReadRows), {Plant::Attempts, 2, 1}},
    {Local, "max_apdu_length_accepted = 50,", ReadRows, std::size(ReadRows), {Plant::Attempts, 2, 3}},
    {Routed, "router = {network = 5, mac = '0A14'},", ReadRows, std::size(ReadRows), {Plant::Attempts, 2, 1}},
    {Local, "", WriteRows, std::size(WriteRows), {Plant::Attempts, 1, 1}},
    {Local, "max_apdu_length_accepted = 50,", MixedRows, std::size(MixedRows), {Plant::Attempts, 3, 3}},
};

PathRow const& RowOf(Path path) {
    return Paths[static_cast<std::size_t>(path)];
}

constexpr simulator::Endpoint SubjectEndpoint{0xC0A80A14, 47808};
constexpr simulator::Endpoint BystanderEndpoint{0xC0A80A15, 47808};

simulator::Device OnlyDevice(std::string const& text) {
    return simulator::ParseDeviceFile("test", text).at(0);
}

}  // namespace

Sizes Plant::SizesOf(Path path) {
    return RowOf(path).sizes;
}

Plant::Plant(Path pathOfSubject) : path(pathOfSubject) {
    StartDevices();
    world.Record(BystanderEndpoint);
    InitAddin();
    runtime.OpenLibraries();
    PathRow const& row = RowOf(path);
    AddBlock(subject, "Address = '192.168.10.20:47808', " + std::string(row.fields), row.variables,
             row.count);
    AddBlock(bystander, "Address = '192.168.10.21:47808', MAC = '192.168.10.21:47808'", BystanderRows,
             std::size(BystanderRows));
    runtime.SetCycleObserver([this](ScadaProtocol& block, unsigned long long, bool) {
        if (&block == subject.protocol) {
            subjectEnd = world.Elapsed();
        }
    });
}

void Plant::StartDevices() {
    std::string const head = "device{ name = 'subject', instance = 1,";
    station = &world.Place(SubjectEndpoint, OnlyDevice(head + RowOf(path).device + SubjectObjects));
    world.Place(BystanderEndpoint, OnlyDevice(BystanderDevice));
}

// A separate variable, so that a wrong value that was read is not written.
long long Plant::Setpoint(_OpcUa_BuiltInType type, char const* value) {
    long long const id = runtime.Variables().Declare("setpoint", type);
    OpcUa_VariantHlp variant;
    variant.SetUTF8String(value);
    variant.ChangeType(type);
    runtime.Variables().Write(id, "", variant, world.Now());
    return id;
}

void Plant::AddBlock(Block& block, std::string const& fields, VariableRow const* rows, std::size_t count) {
    VariableStore& store = runtime.Variables();
    block.faultItem = store.Declare("fault", OpcUaType_Boolean);
    block.errorItem = store.Declare("error", OpcUaType_String);
    block.connectItem = store.Declare("connect", OpcUaType_Boolean);
    std::string script = "BACnet.new{ " + fields + ", CountRepeat = " + std::to_string(Attempts) +
                         ", WriteCondition = 1, FaultItemId = " + std::to_string(block.faultItem) +
                         ", ErrorTextItemId = " + std::to_string(block.errorItem) +
                         ", ConnectItemId = " + std::to_string(block.connectItem) +
                         ", Priority = 8, Vars = { ";
    for (VariableRow const* row = rows; row != rows + count; ++row) {
        OpcUa_BuiltInTypeHlp const type(static_cast<_OpcUa_BuiltInType>(row->type),
                                        static_cast<_OpcUa_BuiltInType>(row->elementType));
        long long const id = store.Declare("variable", type);
        block.variables.push_back({id, row->type == DataValue, row->expected});
        auto const entry = [&script](char const* key, long long value) {
            script += std::string(key) + " = " + std::to_string(value) + ", ";
        };
        script += "{ ";
        entry("ReadId", id);
        entry("Type", row->type);
        entry("ElementType", row->elementType);
        entry("ObjectType", row->objectType);
        entry("ObjectProperties", row->property);
        entry("ObjectNumber", row->number);
        entry("WriteId", row->isWritten ? Setpoint(type.ElementType, row->expected) : 0);
        script += "}, ";
    }
    std::string const mistake = lua.Run(script + "} }");
    if (!mistake.empty()) {
        throw std::logic_error(mistake);
    }
    block.protocol = runtime.Blocks().back();
    runtime.Assign(*block.protocol, runtime.AddTask(std::to_string(runtime.Blocks().size()), {}));
    runtime.InitBlock(*block.protocol);
}

Plant::Cycle Plant::Run(long long pause) {
    world.Pass(pause);
    LogCapture const log;
    long long const start = world.Elapsed();
    long long const from = world.Now();
    runtime.RunOnce();
    Cycle cycle;
    cycle.report = ReportOf(subject, from);
    cycle.duration = subjectEnd - start;
    cycle.log = log.Text();
    cycle.isBystanderGood = ReportOf(bystander, from) == Report::Good;
    cycle.bystanderDuration = world.Elapsed() - subjectEnd;
    return cycle;
}

void Plant::CutOffAfter(long long datagrams) {
    world.CutOffAfter(SubjectEndpoint, datagrams);
}

void Plant::SetRoundTrip(long long milliseconds) {
    world.SetRoundTrip(SubjectEndpoint, milliseconds);
}

void Plant::Hold(long long milliseconds) {
    world.Hold(SubjectEndpoint, milliseconds);
}

void Plant::Inject(long long delay, simulator::Octets octets) {
    world.Inject(SubjectEndpoint, delay, std::move(octets));
}

void Plant::Settle() {
    Faults().Clear();
    constexpr long long pause = 60'000;  // longer than a device repeats its segments
    world.Pass(pause);
    CutOffAfter(0);
    while (world.Waiting() != 0) {
        Run();
    }
    CutOffAfter(Never);
    StartDevices();
    Run();
    Run();
}

long long Plant::ScriptOctets() {
    lua_gc(lua, LUA_GCCOLLECT);
    return lua_gc(lua, LUA_GCCOUNT) * 1024LL + lua_gc(lua, LUA_GCCOUNTB);
}

VariableState Plant::StateOf(long long id) {
    VariableState state;
    runtime.Variables().Read(id, "", state);
    return state;
}

std::string Plant::TextOf(long long id) {
    std::string text;
    StateOf(id).Value.GetString(text);
    return text;
}

Report Plant::ReportOf(Block const& block, long long from) {
    if (TextOf(block.faultItem) != "false") {
        return IsLost(block) ? Report::Fault : Report::Unclear;
    }
    if (TextOf(block.errorItem) != "" || TextOf(block.connectItem) != "true") {
        return Report::Unclear;
    }
    Report worst = Report::Good;
    for (Variable const& variable : block.variables) {
        VariableState const state = StateOf(variable.id);
        Report const one = state.Status != OpcUa_Good                 ? Report::Unclear
                           : TextOf(variable.id) != variable.expected ? Report::Wrong
                           : state.Time < from                        ? Report::Old
                                                                      : Report::Good;
        worst = std::max(worst, one);
    }
    return worst;
}

bool Plant::IsLost(Block const& block) {
    return TextOf(block.faultItem) == "true" && TextOf(block.errorItem) == "No connection" &&
           TextOf(block.connectItem) == "false" &&
           std::all_of(block.variables.begin(), block.variables.end(), [this](Variable const& variable) {
               return TextOf(variable.id) == variable.expected &&
                      StateOf(variable.id).Status == (variable.isDataValue ? OpcUa_Bad : OpcUa_Good);
           });
}

}  // namespace test
