#include "EdeColumns.h"

#include <algorithm>
#include <unordered_map>

namespace workbench {

namespace {

constexpr char const* Headings[] = {"keyname",
                                    "device obj.-instance",
                                    "object-name",
                                    "object-type",
                                    "object-instance",
                                    "description",
                                    "present-value-default",
                                    "min-present-value",
                                    "max-present-value",
                                    "settable",
                                    "supports COV",
                                    "hi-limit",
                                    "low-limit",
                                    "state-text-reference",
                                    "unit-code",
                                    "vendor-specific-address",
                                    "notification-class"};
static_assert(sizeof(Headings) / sizeof(Headings[0]) == EdeColumnCount);

struct Spelling {
    EdeColumn column;
    char const* letters;
};

// Spellings beyond those of layout 2.3.
constexpr Spelling Spellings[] = {
    {EdeColumn::Keyname, "key"},
    {EdeColumn::DeviceInstance, "deviceobjectinstance"},
    {EdeColumn::DeviceInstance, "deviceobjectinstancenumber"},
    {EdeColumn::DeviceInstance, "deviceinstance"},
    {EdeColumn::DeviceInstance, "deviceinstancenumber"},
    {EdeColumn::DeviceInstance, "deviceobject"},
    {EdeColumn::DeviceInstance, "deviceid"},
    {EdeColumn::DeviceInstance, "device"},
    {EdeColumn::ObjectName, "name"},
    {EdeColumn::ObjectName, "objname"},
    {EdeColumn::ObjectType, "objtype"},
    {EdeColumn::ObjectType, "type"},
    {EdeColumn::ObjectInstance, "objectinstancenumber"},
    {EdeColumn::ObjectInstance, "objinstance"},
    {EdeColumn::ObjectInstance, "instance"},
    {EdeColumn::ObjectInstance, "instancenumber"},
    {EdeColumn::Description, "desc"},
    {EdeColumn::Default, "presentvalue"},
    {EdeColumn::Default, "default"},
    {EdeColumn::Default, "defaultvalue"},
    {EdeColumn::Default, "relinquishdefault"},
    {EdeColumn::Minimum, "minpresvalue"},
    {EdeColumn::Minimum, "minimum"},
    {EdeColumn::Minimum, "min"},
    {EdeColumn::Maximum, "maxpresvalue"},
    {EdeColumn::Maximum, "maximum"},
    {EdeColumn::Maximum, "max"},
    {EdeColumn::Settable, "commandable"},
    {EdeColumn::Settable, "writable"},
    {EdeColumn::Settable, "writeable"},
    {EdeColumn::SupportsCov, "supportcov"},
    {EdeColumn::SupportsCov, "cov"},
    {EdeColumn::HighLimit, "highlimit"},
    {EdeColumn::LowLimit, "lolimit"},
    {EdeColumn::StateTextReference, "statetextref"},
    {EdeColumn::StateTextReference, "statetextreferenceno"},
    {EdeColumn::StateTextReference, "statetextreferencenumber"},
    {EdeColumn::StateTextReference, "statetext"},
    {EdeColumn::StateTextReference, "statetexts"},
    {EdeColumn::UnitCode, "unit"},
    {EdeColumn::UnitCode, "units"},
    {EdeColumn::UnitCode, "engineeringunit"},
    {EdeColumn::UnitCode, "engineeringunits"},
    {EdeColumn::VendorAddress, "vendorspecificaddres"},
    {EdeColumn::VendorAddress, "vendorspecificadress"},
    {EdeColumn::VendorAddress, "vendorspecificaddr"},
    {EdeColumn::VendorAddress, "vendoraddress"},
    {EdeColumn::NotificationClass, "notificationclassinstance"},
    {EdeColumn::NotificationClass, "notifclass"},
};

std::unordered_map<std::string, EdeColumn> AllSpellings() {
    std::unordered_map<std::string, EdeColumn> all;
    for (std::size_t i = 0; i < EdeColumnCount; ++i) {
        all.emplace(LettersOf(Headings[i]), static_cast<EdeColumn>(i));
    }
    for (Spelling const& spelling : Spellings) {
        all.emplace(spelling.letters, spelling.column);
    }
    return all;
}

std::optional<EdeColumn> ColumnOf(std::string const& letters) {
    static std::unordered_map<std::string, EdeColumn> const all = AllSpellings();
    auto const found = all.find(letters);
    return found == all.end() ? std::nullopt : std::optional(found->second);
}

// A row with a number is a point.
bool HasNumber(CsvRow const& row) {
    return std::any_of(row.fields.begin(), row.fields.end(), [](CsvField const& field) {
        return !field.text.empty() && field.text.find_first_not_of("0123456789") == std::string::npos;
    });
}

// The number of the state of a heading such as "state-text-1", "text 2" or "inactive-text"; 0 for others.
std::size_t StateOf(std::string const& letters) {
    if (letters == "inactivetext" || letters == "activetext") {
        return letters == "inactivetext" ? 1 : 2;
    }
    for (std::string_view const start : {"statetext", "text", "state"}) {
        std::string_view const rest =
            std::string_view(letters).substr(std::min(start.size(), letters.size()));
        if (std::string_view(letters).substr(0, start.size()) == start && !rest.empty() && rest.size() <= 3 &&
            rest.find_first_not_of("0123456789") == std::string_view::npos) {
            return std::stoul(std::string(rest));
        }
    }
    return 0;
}

}  // namespace

char const* HeadingOf(EdeColumn column) {
    return Headings[static_cast<std::size_t>(column)];
}

std::string LettersOf(std::string_view text) {
    std::string letters;
    for (char const c : text) {
        bool const isCapital = c >= 'A' && c <= 'Z';
        if (isCapital || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            letters += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return letters;
}

EdeLayout EdeLayout::ByPosition() {
    EdeLayout layout;
    for (std::size_t i = 0; i < EdeColumnCount; ++i) {
        layout.fields[i] = i;
        layout.headings.emplace_back(Headings[i]);
    }
    return layout;
}

std::optional<EdeLayout> EdeLayout::ByHeading(CsvRow const& row) {
    if (HasNumber(row)) {
        return std::nullopt;
    }
    EdeLayout layout;
    for (std::size_t i = 0; i < row.fields.size(); ++i) {
        std::string const letters = LettersOf(row.fields[i].text);
        layout.headings.push_back(row.fields[i].text);
        std::optional<EdeColumn> const column = ColumnOf(letters);
        if (column && !layout.FieldOf(*column)) {
            layout.fields[static_cast<std::size_t>(*column)] = i;
        } else if (std::size_t const state = StateOf(letters)) {
            layout.stateTexts.push_back({state, i});
        } else {
            layout.unknownFields.push_back(i);
        }
    }
    if (!layout.FieldOf(EdeColumn::DeviceInstance) || !layout.FieldOf(EdeColumn::ObjectType) ||
        !layout.FieldOf(EdeColumn::ObjectInstance)) {
        return std::nullopt;
    }
    return layout;
}

bool EdeLayout::IsHeading(std::string const& text) {
    return std::find(std::begin(Headings), std::end(Headings), text) != std::end(Headings);
}

}  // namespace workbench
