#include "EdeObject.h"

#include <unordered_map>
#include <utility>

#include "FieldValue.h"
#include "ObjectNames.h"
#include "Printable.h"
#include "PropertyDatatype.h"
#include "StateTexts.h"
#include "UnitCode.h"

namespace workbench {

using standard::Datatype;
using standard::ObjectId;
using standard::PropertyId;
using Effect = ImportLine::Effect;

namespace {

// The last instance that an object can have; 4194303 is reserved (clause 12.11).
constexpr std::uint32_t LastInstance = ObjectId::LastInstance - 1;
constexpr std::uint32_t LastType = 1023;

struct Abbreviation {
    char const* letters;
    std::uint16_t type;
};

constexpr Abbreviation Abbreviations[] = {{"ai", 0},
                                          {"ao", 1},
                                          {"av", 2},
                                          {"bi", 3},
                                          {"bo", 4},
                                          {"bv", 5},
                                          {"cal", 6},
                                          {"dev", 8},
                                          {"msi", 13},
                                          {"mi", 13},
                                          {"mso", 14},
                                          {"mo", 14},
                                          {"nc", 15},
                                          {"sch", 17},
                                          {"sched", 17},
                                          {"msv", 19},
                                          {"mv", 19},
                                          {"multistateinput", 13},
                                          {"multistateoutput", 14},
                                          {"multistatevalue", 19},
                                          {"tl", 20},
                                          {"acc", 23},
                                          {"piv", 48},
                                          {"iv", 45},
                                          {"lav", 46}};

std::unordered_map<std::string, std::uint16_t> TypeNames() {
    // Types from 128 on are those of vendors (clause 23.1).
    constexpr std::uint16_t FirstOfVendors = 128;
    std::unordered_map<std::string, std::uint16_t> types;
    for (std::uint16_t type = 0; type < FirstOfVendors; ++type) {
        types.emplace(LettersOf(standard::ObjectTypeText(type)), type);
    }
    for (Abbreviation const& abbreviation : Abbreviations) {
        types.emplace(abbreviation.letters, abbreviation.type);
    }
    return types;
}

// By its number, its name of the standard, a usual abbreviation, or its text in the file of object types.
std::optional<std::uint32_t> TypeOf(std::string const& text, CodeTexts const& objectTypes) {
    static std::unordered_map<std::string, std::uint16_t> const types = TypeNames();
    if (auto const number = WholeNumberOf(text, LastType)) {
        return number;
    }
    auto const known = types.find(LettersOf(text));
    if (known != types.end()) {
        return known->second;
    }
    auto const listed = objectTypes.NumberOf(text);
    return listed && *listed <= LastType ? listed : std::nullopt;
}

// A column whose text is the value of a property, if the object's type has it.
struct ColumnProperty {
    EdeColumn column;
    PropertyId property;
};

constexpr ColumnProperty ColumnProperties[] = {
    {EdeColumn::Default, PropertyId::Relinquish_Default},
    {EdeColumn::Minimum, PropertyId::Min_Pres_Value},
    {EdeColumn::Maximum, PropertyId::Max_Pres_Value},
    {EdeColumn::HighLimit, PropertyId::High_Limit},
    {EdeColumn::LowLimit, PropertyId::Low_Limit},
    {EdeColumn::NotificationClass, PropertyId::Notification_Class},
};

// Fills one object from its row.
class ObjectBuilder {
public:
    ObjectBuilder(EdeRow const& edeRow, EdeReferences const& rowReferences, ObjectId const& id)
        : row(edeRow), references(rowReferences) {
        object.id = id;
    }

    ObjectRecord Build() {
        SetText(EdeColumn::ObjectName, PropertyId::Object_Name);
        SetText(EdeColumn::Description, PropertyId::Description);
        for (EdeColumn const column : {EdeColumn::Keyname, EdeColumn::VendorAddress}) {
            List(column);
        }
        SetAnswer(EdeColumn::Settable);
        SetAnswer(EdeColumn::SupportsCov);
        // The texts first: a default can be one of them.
        SetStateTexts(row, references.stateTexts, object);
        for (ColumnProperty const& pair : ColumnProperties) {
            SetValue(pair);
        }
        SetUnit(row, references.units, object);
        ListFurther();
        ListTypeName();
        return std::move(object);
    }

private:
    void List(EdeColumn column) {
        if (!row.TextOf(column).empty()) {
            object.listed[HeadingOf(column)] = row.TextOf(column);
        }
    }
    void SetText(EdeColumn column, PropertyId property) {
        if (!row.TextOf(column).empty()) {
            object.Set(property, {TextDatum(row.TextOf(column))});
        }
    }
    void SetAnswer(EdeColumn column) {
        std::string const& text = row.TextOf(column);
        auto const answer = AnswerOf(text);
        if (answer) {
            object.listed[HeadingOf(column)] = *answer ? "Y" : "N";
        } else if (!text.empty()) {
            List(column);
            row.Report(column, Effect::ValueNotUsed,
                       tools::Quoted(text) + " is not an answer; allowed are Y and N");
        }
    }
    void SetValue(ColumnProperty const& pair) {
        std::string const& text = row.TextOf(pair.column);
        if (text.empty() || IsStateCount(pair, text)) {
            return;
        }
        auto const datatype = standard::DatatypeOf(object.id.type, static_cast<std::uint32_t>(pair.property));
        auto value = datatype ? DatumOf(text, *datatype) : std::nullopt;
        if (datatype && !value && pair.column == EdeColumn::Default) {
            value = StateOf(object, text);
        }
        if (value) {
            object.Set(pair.property, {*value});
            return;
        }
        List(pair.column);
        if (datatype) {
            row.Report(pair.column, Effect::ValueNotUsed,
                       tools::Quoted(text) + " is not " + NameOf(*datatype) + "; kept as a text");
        }
    }
    // Multi-state objects have states from 1 to Number_Of_States in place of a minimum and a maximum.
    bool IsStateCount(ColumnProperty const& pair, std::string const& text) {
        bool const hasStates =
            standard::DatatypeOf(object.id.type, static_cast<std::uint32_t>(PropertyId::Number_Of_States))
                .has_value();
        if (!hasStates || (pair.column != EdeColumn::Minimum && pair.column != EdeColumn::Maximum)) {
            return false;
        }
        auto const number = WholeNumberOf(text, UINT32_MAX);
        if (pair.column == EdeColumn::Maximum && number && *number > 0) {
            SetNumberOfStates(*number);
            return true;
        }
        return number == 1u;
    }
    void SetNumberOfStates(std::uint32_t number) {
        auto const known = NumberOf(object, PropertyId::Number_Of_States);
        if (known && *known > number) {
            row.Report(EdeColumn::Maximum, Effect::ValueNotUsed,
                       std::to_string(number) + " is less than the number of state texts, which is " +
                           std::to_string(*known));
            return;
        }
        object.Set(PropertyId::Number_Of_States, {UnsignedDatum(number)});
    }
    // Fields without a column, by their heading in the file.
    void ListFurther() {
        for (std::size_t const field : row.layout.unknownFields) {
            if (field >= row.row.fields.size()) {
                break;
            }
            ListField(field, row.layout.headings[field]);
        }
        for (std::size_t i = row.layout.headings.size(); i < row.row.fields.size(); ++i) {
            ListField(i, "");
        }
    }
    void ListField(std::size_t field, std::string const& heading) {
        std::string const& text = row.row.fields[field].text;
        if (text.empty()) {
            return;
        }
        if (heading.empty()) {
            row.Report(field, heading, Effect::ValueNotUsed,
                       tools::Quoted(text) + " is in a column without a heading");
            return;
        }
        bool const isOurs =
            EdeLayout::IsHeading(heading) || heading == TypeNameHeading || heading == UnitNameHeading;
        if (isOurs || !object.listed.emplace(heading, text).second) {
            row.Report(field, heading, Effect::ValueNotUsed,
                       tools::Quoted(text) + " is in a further column with this heading");
        }
    }
    // A vendor's object types have the names that the list gives them.
    void ListTypeName() {
        auto const& texts = references.objectTypes.Of(object.id.type);
        if (object.id.type >= 128 && !texts.empty()) {
            object.listed[TypeNameHeading] = texts.front();
        }
    }

    EdeRow const& row;
    EdeReferences const& references;
    ObjectRecord object;
};

std::optional<std::uint32_t> InstanceOf(EdeRow const& row, EdeColumn column) {
    std::string const& text = row.TextOf(column);
    auto const number = WholeNumberOf(text, LastInstance);
    if (!number) {
        row.Report(
            column, Effect::RowNotUsed,
            tools::Quoted(text) + " is not an instance; allowed is 0 to " + std::to_string(LastInstance));
    }
    return number;
}

}  // namespace

std::string const& EdeRow::TextOf(EdeColumn column) const {
    static std::string const none;
    auto const field = layout.FieldOf(column);
    return field && *field < row.fields.size() ? row.fields[*field].text : none;
}

void EdeRow::Report(EdeColumn column, Effect effect, std::string const& reason) const {
    Report(layout.FieldOf(column).value_or(static_cast<std::size_t>(column)), HeadingOf(column), effect,
           reason);
}

void EdeRow::Report(std::size_t field, std::string const& heading, Effect effect,
                    std::string const& reason) const {
    std::size_t const line = field < row.fields.size() ? row.fields[field].line : row.Line();
    report.lines.push_back({file, line, field + 1, heading, effect, reason});
}

std::optional<EdeIdentity> IdentityOf(EdeRow const& row, CodeTexts const& objectTypes) {
    auto const device = InstanceOf(row, EdeColumn::DeviceInstance);
    if (!device) {
        return std::nullopt;
    }
    auto const type = TypeOf(row.TextOf(EdeColumn::ObjectType), objectTypes);
    if (!type) {
        row.Report(EdeColumn::ObjectType, Effect::RowNotUsed,
                   tools::Quoted(row.TextOf(EdeColumn::ObjectType)) +
                       " is not an object type; allowed are its number, 0 to 1023, and its name");
        return std::nullopt;
    }
    auto const instance = InstanceOf(row, EdeColumn::ObjectInstance);
    if (!instance) {
        return std::nullopt;
    }
    return EdeIdentity{*device, {static_cast<std::uint16_t>(*type), *instance}};
}

ObjectRecord ObjectOf(EdeRow const& row, ObjectId const& id, EdeReferences const& references) {
    return ObjectBuilder(row, references, id).Build();
}

}  // namespace workbench
