#include <climits>
#include <cstddef>
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
        std::vector<std::string> const& more = WorkbenchFieldsOfBlock();
        names.insert(names.end(), more.begin(), more.end());
        return names;
    }();
    return fields;
}

// The name of an unknown field stands for the known one that is near.
std::string MeantField(Finding const& mistake) {
    return mistake.code == FindingCode::UnknownField ? tools::Nearest(mistake.field, BlockFields())
                                                     : mistake.field;
}

void RefuseAddress(char const* name, std::string const& mistake) {
    if (!mistake.empty()) {
        FieldReader::Refuse(FindingCode::BadAddress, name, tools::Printable(mistake));
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
    RefuseAddress(field.name, peer ? MistakeInPeer(text) : MistakeInDeviceAddress(text));
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
    FieldReader::Refuse(FindingCode::UnknownName, name,
                        value.Describe() +
                            " is not a write condition; allowed are OnChange, Always and OnTrigger" +
                            tools::DidYouMean(value.text, names));
}

std::vector<tools::ScriptValue> const& Entries(tools::ScriptValue const& list) {
    bool const isEmpty = list.list.empty() && list.fields.empty();
    if (!list.IsTable() || isEmpty) {
        FieldReader::Refuse(
            FindingCode::WrongKind, "Vars",
            "expected a list of variables, got " + (list.IsTable() ? "an empty table" : list.Describe()));
    }
    if (!list.fields.empty()) {
        FieldReader::Refuse(FindingCode::UnreadableTable, "Vars",
                            "key " + tools::Quoted(list.fields.front().name) +
                                " is not an index of the list; remove other keys and gaps");
    }
    return list.list;
}

// Completes the mistakes of a variable, which begin at that index of the list.
void Attribute(Findings& mistakes, std::size_t first, std::string const& name, std::size_t index,
               SourcePlace const& where) {
    for (std::size_t i = first; i < mistakes.size(); ++i) {
        mistakes[i].variable = name;
        mistakes[i].subject = name.empty() ? "variable " + std::to_string(index + 1) : "";
        mistakes[i].where = where.Of(mistakes[i].field);
    }
}

void ReadVariables(FieldReader const& fields, BlockSource const& source, BlockConfig& block,
                   Findings& mistakes) {
    std::set<std::string> names;
    std::vector<tools::ScriptValue> const& entries = Entries(fields.Required("Vars"));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::string const name = NameOf(entries[i]);
        std::size_t const before = mistakes.size();
        if (!name.empty() && !names.insert(name).second) {
            Note(mistakes, [] {
                FieldReader::Refuse(FindingCode::NameTaken, "Name",
                                    "the name is already taken; each variable of a block needs its own");
            });
        }
        VariableConfig variable = CheckVariable(entries[i], mistakes);
        variable.where = source.Variable(i);
        Attribute(mistakes, before, name, i, variable.where);
        if (mistakes.size() == before) {
            block.variables.push_back(std::move(variable));
        }
    }
}

void ReadDriverFields(FieldReader const& fields, BlockConfig& block, Findings& mistakes) {
    for (DriverField const& field : DriverFields) {
        if (field.kind == DriverField::Peer || fields.Find(field.name)) {
            Note(mistakes, [&] { block.fields.emplace_back(field.name, DriverValue(fields, field)); });
        }
        if (field.kind == DriverField::Peer && !block.fields.empty()) {
            block.address = std::get<std::string>(block.fields.back().second);
        }
    }
    if (fields.Find("WriteCondition")) {
        Note(mistakes, [&] {
            long long const condition = WriteCondition(fields);
            block.writeCondition = static_cast<ProtocolWriteCondition>(condition);
            block.fields.emplace_back("WriteCondition", condition);
        });
    }
}

void ReadBlock(FieldReader const& fields, BlockSource const& source, BlockConfig& block, Findings& mistakes) {
    fields.FindUnknown(BlockFields(), mistakes);
    Note(mistakes, [&] { block.name = fields.Text("Name"); });
    Note(mistakes, [&] { block.task = fields.Find("Task") ? fields.Text("Task") : ""; });
    for (char const* const item : ItemFields) {
        if (fields.Find(item)) {
            Note(mistakes, [&] {
                FieldReader::Refuse(
                    FindingCode::ControllerField, item,
                    "is for controllers, and the workbench has no variables of a controller; remove it");
            });
        }
    }
    ReadDriverFields(fields, block, mistakes);
    ReadWorkbenchFields(fields, block, mistakes);
    Note(mistakes, [&] { ReadVariables(fields, source, block, mistakes); });
}

}  // namespace

TaskConfig CheckTask(tools::ScriptValue const& value, Place const& where, Findings& mistakes) {
    std::size_t const first = mistakes.size();
    TaskConfig task;
    task.where = where;
    Note(mistakes, [&] {
        FieldReader const fields(value);
        fields.FindUnknown({"Name", "Period"}, mistakes);
        Note(mistakes, [&] { task.name = fields.Text("Name"); });
        task.isPeriodKnown = Note(mistakes, [&] {
            task.period =
                static_cast<int>(fields.OptionalInteger("Period", 1, LongestPeriod).value_or(task.period));
        });
    });
    for (std::size_t i = first; i < mistakes.size(); ++i) {
        mistakes[i].subject = "task";
        mistakes[i].where = where;
    }
    return task;
}

BlockConfig CheckBlock(tools::ScriptValue const& value, BlockSource const& source, Findings& mistakes) {
    std::size_t const first = mistakes.size();
    BlockConfig block;
    block.where = source.block;
    Note(mistakes, [&] { ReadBlock(FieldReader(value), source, block, mistakes); });
    std::string const name = NameOf(value);
    for (std::size_t i = first; i < mistakes.size(); ++i) {
        Finding& mistake = mistakes[i];
        mistake.block = name;
        bool const isOfBlock = mistake.variable.empty() && mistake.subject.empty();
        if (name.empty()) {
            mistake.subject = mistake.subject.empty() ? "block" : "block: " + mistake.subject;
        }
        if (isOfBlock) {
            mistake.where = source.block.Of(mistake.field);
            block.refused.insert(MeantField(mistake));
        }
    }
    return block;
}

}  // namespace workbench
