// The fields that only the workbench has: units, texts, and what point lists say of an object.
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "FieldReader.h"
#include "NumberText.h"
#include "Printable.h"
#include "ProjectChecks.h"

namespace workbench {

namespace {

// 4194303 is no device, but every one (ASHRAE 135 clause 12.11).
constexpr long long LargestDevice = 4194302;

struct PointText {
    char const* name;
    std::string PointFields::*member;
};

struct PointNumber {
    char const* name;
    std::optional<double> PointFields::*member;
};

struct PointAnswer {
    char const* name;
    std::optional<bool> PointFields::*member;
};

constexpr PointText PointTexts[] = {{"KeyName", &PointFields::keyName},
                                    {"ObjectName", &PointFields::objectName},
                                    {"VendorAddress", &PointFields::vendorAddress}};
constexpr PointNumber PointNumbers[] = {{"Minimum", &PointFields::minimum},
                                        {"Maximum", &PointFields::maximum},
                                        {"HighLimit", &PointFields::highLimit},
                                        {"LowLimit", &PointFields::lowLimit}};
constexpr PointAnswer PointAnswers[] = {{"Settable", &PointFields::settable}, {"Cov", &PointFields::cov}};

std::vector<std::string> const& PointFieldNames() {
    static std::vector<std::string> const names = [] {
        std::vector<std::string> all = {"Default", "NotificationClass"};
        for (PointText const& text : PointTexts) {
            all.emplace_back(text.name);
        }
        for (PointNumber const& number : PointNumbers) {
            all.emplace_back(number.name);
        }
        for (PointAnswer const& answer : PointAnswers) {
            all.emplace_back(answer.name);
        }
        return all;
    }();
    return names;
}

[[noreturn]] void Refuse(std::string const& name, std::string const& mistake) {
    FieldReader::Refuse(FindingCode::WorkbenchField, name, mistake);
}

// Notes a mistake as one of these fields, with what stands around the field in front of its name.
template <typename Function>
void NoteOwn(Findings& mistakes, std::string const& around, Function function) {
    Note(mistakes, [&] {
        try {
            function();
        } catch (FieldError const& mistake) {
            Refuse(around + mistake.Field(), mistake.what());
        }
    });
}

std::string CheckedText(std::string const& name, std::string const& text, std::size_t longest) {
    if (text.size() > longest) {
        Refuse(name, tools::Quoted(text) + " has " + std::to_string(text.size()) +
                         " octets; allowed are up to " + std::to_string(longest));
    }
    if (tools::ValidUtf8(text) != text) {
        Refuse(name, tools::Quoted(text) + " is not UTF-8; save the file in that encoding");
    }
    return text;
}

std::string ShortText(FieldReader const& fields, char const* name, std::size_t longest) {
    return CheckedText(name, fields.OptionalText(name).value_or(""), longest);
}

double Number(FieldReader const& fields, char const* name) {
    tools::ScriptValue const& value = fields.Required(name);
    if (!value.IsNumber()) {
        Refuse(name, "expected a number, got " + value.Describe());
    }
    if (!std::isfinite(value.number)) {
        Refuse(name, value.Describe() + " is out of range; allowed are finite numbers");
    }
    return value.number;
}

std::vector<std::string> StateTexts(FieldReader const& fields) {
    tools::ScriptValue const& value = fields.Required("StateTexts");
    if (!value.IsTable() || !value.fields.empty() || value.list.empty()) {
        Refuse("StateTexts", "expected a list of texts such as {\"off\", \"on\"}, got " +
                                 (value.IsTable() && !value.fields.empty()
                                      ? "a table with the key " + tools::Quoted(value.fields.front().name)
                                  : value.IsTable() ? "an empty table"
                                                    : value.Describe()));
    }
    if (value.list.size() > MostStateTexts) {
        Refuse("StateTexts", "has " + std::to_string(value.list.size()) + " texts; allowed are up to " +
                                 std::to_string(MostStateTexts));
    }
    std::vector<std::string> texts;
    for (tools::ScriptValue const& entry : value.list) {
        std::string const name = "StateTexts[" + std::to_string(texts.size() + 1) + "]";
        if (!entry.IsText()) {
            Refuse(name, "expected a text, got " + entry.Describe());
        }
        texts.push_back(CheckedText(name, entry.text, LongestPointText));
    }
    return texts;
}

// The value as a point list has it.
std::string DefaultText(FieldReader const& fields) {
    tools::ScriptValue const& value = fields.Required("Default");
    if (value.IsText()) {
        return CheckedText("Default", value.text, LongestPointText);
    }
    if (!value.IsBoolean() && !value.IsNumber()) {
        Refuse("Default", "expected a number, a text or a boolean, got " + value.Describe());
    }
    return value.IsBoolean() ? value.Describe() : tools::NumberText(Number(fields, "Default"));
}

void ReadPoint(FieldReader const& fields, PointFields& point, Findings& mistakes) {
    auto const ifPresent = [&](char const* name, auto function) {
        if (fields.Find(name)) {
            NoteOwn(mistakes, "Point.", function);
        }
    };
    for (PointText const& text : PointTexts) {
        ifPresent(text.name, [&] { point.*text.member = ShortText(fields, text.name, LongestPointText); });
    }
    for (PointNumber const& number : PointNumbers) {
        ifPresent(number.name, [&] { point.*number.member = Number(fields, number.name); });
    }
    for (PointAnswer const& answer : PointAnswers) {
        ifPresent(answer.name, [&] { point.*answer.member = fields.OptionalBoolean(answer.name); });
    }
    ifPresent("Default", [&] { point.defaultValue = DefaultText(fields); });
    ifPresent("NotificationClass", [&] {
        point.notificationClass =
            static_cast<std::uint32_t>(fields.Integer("NotificationClass", 0, LargestDevice));
    });
}

void CheckPoint(tools::ScriptValue const& value, PointFields& point, Findings& mistakes) {
    NoteOwn(mistakes, "Point", [&] {
        FieldReader const fields(value);
        Findings unknown;
        fields.FindUnknown(PointFieldNames(), unknown);
        for (Finding& mistake : unknown) {
            NoteOwn(mistakes, "Point.", [&] { Refuse(mistake.field, mistake.message); });
        }
        ReadPoint(fields, point, mistakes);
    });
}

}  // namespace

std::vector<std::string> const& WorkbenchFieldsOfVariable() {
    static std::vector<std::string> const names = {"Unit", "StateTexts", "Description", "Point"};
    return names;
}

std::vector<std::string> const& WorkbenchFieldsOfBlock() {
    static std::vector<std::string> const names = {"DeviceInstance"};
    return names;
}

void ReadWorkbenchFields(FieldReader const& fields, VariableConfig& variable, Findings& mistakes) {
    if (fields.Find("Unit")) {
        NoteOwn(mistakes, "", [&] { variable.unit = CheckedText("Unit", fields.Text("Unit"), LongestUnit); });
    }
    if (fields.Find("StateTexts")) {
        NoteOwn(mistakes, "", [&] { variable.stateTexts = StateTexts(fields); });
    }
    NoteOwn(mistakes, "", [&] { variable.description = ShortText(fields, "Description", LongestPointText); });
    if (tools::ScriptValue const* const point = fields.Find("Point")) {
        CheckPoint(*point, variable.point, mistakes);
    }
}

void ReadWorkbenchFields(FieldReader const& fields, BlockConfig& block, Findings& mistakes) {
    NoteOwn(mistakes, "", [&] {
        if (auto const instance = fields.OptionalInteger("DeviceInstance", 0, LargestDevice)) {
            block.deviceInstance = static_cast<std::uint32_t>(*instance);
        }
    });
}

}  // namespace workbench
