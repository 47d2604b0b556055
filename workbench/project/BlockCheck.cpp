#include <climits>
#include <set>
#include <string>
#include <vector>

#include "AddressText.h"
#include "FieldReader.h"
#include "Printable.h"
#include "ProjectChecks.h"
#include "Suggestion.h"

namespace workbench {

namespace {

constexpr long long LongestPeriod = 24LL * 60 * 60 * 1000;

// A field that goes to the driver as it is.
struct DriverField {
    enum { Peer, Device, Integer, Boolean } Kind;
    char const* Name;
    long long Low = 0;
    long long High = 0;
};

constexpr DriverField driverFields[] = {
    {DriverField::Peer, "Address"},
    {DriverField::Device, "MAC"},
    {DriverField::Integer, "Timeout", 0, 65535},
    {DriverField::Integer, "CountRepeat", 1, 65535},
    {DriverField::Integer, "AddressNumber", INT_MIN, INT_MAX},
    {DriverField::Integer, "NetworkNumber", 0, 65535},
    {DriverField::Integer, "Priority", 0, 16},
    {DriverField::Boolean, "ExecuteOnSlave"},
    {DriverField::Boolean, "WriteOnSlave"},
};

// Fields of the driver that name variables of a controller; here the workbench keeps those.
constexpr char const* itemFields[] = {"FaultItemId", "ErrorTextItemId", "ExecuteItemId", "ConnectItemId",
                                      "WriteItemId"};

constexpr char const* writeConditions[] = {"OnChange", "Always", "OnTrigger"};

std::vector<std::string> const& BlockFields() {
    static std::vector<std::string> const fields = [] {
        std::vector<std::string> names = {"Name", "Task", "WriteCondition", "Vars"};
        for (DriverField const& field : driverFields) {
            names.emplace_back(field.Name);
        }
        names.insert(names.end(), std::begin(itemFields), std::end(itemFields));
        return names;
    }();
    return fields;
}

void RefuseMistake(char const* name, std::string const& mistake) {
    if (!mistake.empty()) {
        FieldReader::Refuse(name, Printable(mistake));
    }
}

BlockConfig::FieldValue DriverValue(FieldReader const& fields, DriverField const& field) {
    switch (field.Kind) {
        case DriverField::Integer:
            return fields.Integer(field.Name, field.Low, field.High);
        case DriverField::Boolean:
            return *fields.OptionalBoolean(field.Name);
        default:
            break;
    }
    bool const peer = field.Kind == DriverField::Peer;
    std::string text = peer ? fields.Text(field.Name) : *fields.OptionalText(field.Name);
    RefuseMistake(field.Name, peer ? MistakeInPeer(text) : MistakeInDeviceAddress(text));
    return text;
}

long long WriteCondition(FieldReader const& fields) {
    char const* const name = "WriteCondition";
    LuaValue const& value = fields.Required(name);
    auto const* text = value.As<std::string>();
    if (!text) {
        return fields.Integer(name, 0, 2);
    }
    for (int i = 0; i < 3; ++i) {
        if (*text == writeConditions[i]) {
            return i;
        }
    }
    std::vector<std::string> const names(std::begin(writeConditions), std::end(writeConditions));
    FieldReader::Refuse(name, Describe(value) + " is no write condition" + DidYouMean(*text, names));
}

// The entries of a list in order: Lua keeps its keys in any order, and a gap is a mistake.
std::vector<LuaValue const*> Entries(LuaValue const& list) {
    auto const* table = list.As<LuaTable>();
    if (!table || table->empty()) {
        FieldReader::Refuse("Vars", "a list of variables is wanted, not " +
                                        (table ? std::string("an empty table") : Describe(list)));
    }
    std::vector<LuaValue const*> entries(table->size(), nullptr);
    for (auto const& entry : *table) {
        auto const* place = entry.first.As<long long>();
        if (!place || *place < 1 || static_cast<unsigned long long>(*place) > entries.size()) {
            FieldReader::Refuse("Vars", "entry " + Describe(entry.first) + " is not part of the list");
        }
        entries[static_cast<std::size_t>(*place - 1)] = &entry.second;
    }
    return entries;
}

VariableConfig Variable(LuaValue const& entry, bool taken) {
    if (taken) {
        throw ProjectError("there is another one of that name");
    }
    return CheckVariable(entry);
}

std::vector<VariableConfig> Variables(FieldReader const& fields) {
    std::vector<VariableConfig> variables;
    std::set<std::string> names;
    for (LuaValue const* const entry : Entries(fields.Required("Vars"))) {
        std::string const name = NameOf(*entry);
        bool const taken = !name.empty() && !names.insert(name).second;
        try {
            variables.push_back(Variable(*entry, taken));
        } catch (ProjectError const& mistake) {
            std::string const which = name.empty() ? std::to_string(variables.size() + 1) : Describe({name});
            throw ProjectError("variable " + which + ": " + mistake.what(), name, taken ? 2 : 1);
        }
    }
    return variables;
}

BlockConfig Block(FieldReader const& fields) {
    BlockConfig block;
    block.Name = fields.Text("Name");
    block.Task = fields.Find("Task") ? fields.Text("Task") : "";
    for (char const* const item : itemFields) {
        if (fields.Find(item)) {
            FieldReader::Refuse(item, "names a variable of a controller, of which there is none here");
        }
    }
    block.Address = fields.Text("Address");
    for (DriverField const& field : driverFields) {
        if (fields.Find(field.Name)) {
            block.Fields.emplace_back(field.Name, DriverValue(fields, field));
        }
    }
    if (fields.Find("WriteCondition")) {
        long long const condition = WriteCondition(fields);
        block.WriteCondition = static_cast<ProtocolWriteCondition>(condition);
        block.Fields.emplace_back("WriteCondition", condition);
    }
    block.Variables = Variables(fields);
    return block;
}

}  // namespace

TaskConfig CheckTask(LuaValue const& value) {
    return InContext("task: ", [&] {
        FieldReader const fields(value, {"Name", "Period"});
        TaskConfig task;
        task.Name = fields.Text("Name");
        task.Period =
            static_cast<int>(fields.OptionalInteger("Period", 1, LongestPeriod).value_or(task.Period));
        return task;
    });
}

BlockConfig CheckBlock(LuaValue const& value) {
    std::string const name = NameOf(value);
    std::string const context = name.empty() ? "block: " : "block " + Describe({name}) + ": ";
    return InContext(context, [&] { return Block(FieldReader(value, BlockFields())); });
}

}  // namespace workbench
