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

// A field that is passed to the driver unchanged.
struct DriverField {
    enum { Peer, Device, Integer, Boolean } kind;
    char const* name;
    long long low = 0;
    long long high = 0;
};

constexpr DriverField DriverFields[] = {
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

// Fields of the driver that name variables of a controller, which the workbench does not have.
constexpr char const* ItemFields[] = {"FaultItemId", "ErrorTextItemId", "ExecuteItemId", "ConnectItemId",
                                      "WriteItemId"};

constexpr char const* WriteConditions[] = {"OnChange", "Always", "OnTrigger"};

std::vector<std::string> const& BlockFields() {
    static std::vector<std::string> const fields = [] {
        std::vector<std::string> names = {"Name", "Task", "WriteCondition", "Vars"};
        for (DriverField const& field : DriverFields) {
            names.emplace_back(field.name);
        }
        names.insert(names.end(), std::begin(ItemFields), std::end(ItemFields));
        return names;
    }();
    return fields;
}

void RefuseMistake(char const* name, std::string const& mistake) {
    if (!mistake.empty()) {
        FieldReader::Refuse(name, tools::Printable(mistake));
    }
}

BlockConfig::FieldValue DriverValue(FieldReader const& fields, DriverField const& field) {
    switch (field.kind) {
        case DriverField::Integer:
            return fields.Integer(field.name, field.low, field.high);
        case DriverField::Boolean:
            return *fields.OptionalBoolean(field.name);
        default:
            break;
    }
    bool const peer = field.kind == DriverField::Peer;
    std::string text = peer ? fields.Text(field.name) : *fields.OptionalText(field.name);
    RefuseMistake(field.name, peer ? MistakeInPeer(text) : MistakeInDeviceAddress(text));
    return text;
}

long long WriteCondition(FieldReader const& fields) {
    char const* const name = "WriteCondition";
    tools::ScriptValue const& value = fields.Required(name);
    if (!value.IsText()) {
        return fields.Integer(name, 0, 2);
    }
    for (int i = 0; i < 3; ++i) {
        if (value.text == WriteConditions[i]) {
            return i;
        }
    }
    std::vector<std::string> const names(std::begin(WriteConditions), std::end(WriteConditions));
    FieldReader::Refuse(name, value.Describe() +
                                  " is not a write condition; allowed are OnChange, Always and OnTrigger" +
                                  tools::DidYouMean(value.text, names));
}

std::vector<tools::ScriptValue> const& Entries(tools::ScriptValue const& list) {
    bool const isEmpty = list.list.empty() && list.fields.empty();
    if (!list.IsTable() || isEmpty) {
        FieldReader::Refuse("Vars", "expected a list of variables, got " +
                                        (list.IsTable() ? "an empty table" : list.Describe()));
    }
    if (!list.fields.empty()) {
        FieldReader::Refuse("Vars", "key " + tools::Quoted(list.fields.front().name) +
                                        " is not an index of the list; remove other keys and gaps");
    }
    return list.list;
}

VariableConfig Variable(tools::ScriptValue const& entry, bool taken) {
    if (taken) {
        throw ProjectError("the name is already taken; each variable of a block needs its own");
    }
    return CheckVariable(entry);
}

std::vector<VariableConfig> Variables(FieldReader const& fields) {
    std::vector<VariableConfig> variables;
    std::set<std::string> names;
    for (tools::ScriptValue const& entry : Entries(fields.Required("Vars"))) {
        std::string const name = NameOf(entry);
        bool const taken = !name.empty() && !names.insert(name).second;
        try {
            variables.push_back(Variable(entry, taken));
        } catch (ProjectError const& mistake) {
            std::string const which =
                name.empty() ? std::to_string(variables.size() + 1) : tools::Quoted(name);
            throw ProjectError("variable " + which + ": " + mistake.what(), name, taken ? 2 : 1);
        }
    }
    return variables;
}

BlockConfig Block(FieldReader const& fields) {
    BlockConfig block;
    block.name = fields.Text("Name");
    block.task = fields.Find("Task") ? fields.Text("Task") : "";
    for (char const* const item : ItemFields) {
        if (fields.Find(item)) {
            FieldReader::Refuse(
                item, "is for controllers, and the workbench has no variables of a controller; remove it");
        }
    }
    block.address = fields.Text("Address");
    for (DriverField const& field : DriverFields) {
        if (fields.Find(field.name)) {
            block.fields.emplace_back(field.name, DriverValue(fields, field));
        }
    }
    if (fields.Find("WriteCondition")) {
        long long const condition = WriteCondition(fields);
        block.writeCondition = static_cast<ProtocolWriteCondition>(condition);
        block.fields.emplace_back("WriteCondition", condition);
    }
    block.variables = Variables(fields);
    return block;
}

}  // namespace

TaskConfig CheckTask(tools::ScriptValue const& value) {
    return InContext("task: ", [&] {
        FieldReader const fields(value, {"Name", "Period"});
        TaskConfig task;
        task.name = fields.Text("Name");
        task.period =
            static_cast<int>(fields.OptionalInteger("Period", 1, LongestPeriod).value_or(task.period));
        return task;
    });
}

BlockConfig CheckBlock(tools::ScriptValue const& value) {
    std::string const name = NameOf(value);
    std::string const context = name.empty() ? "block: " : "block " + tools::Quoted(name) + ": ";
    return InContext(context, [&] { return Block(FieldReader(value, BlockFields())); });
}

}  // namespace workbench
