#include "EdeWriter.h"

#include <algorithm>
#include <map>
#include <set>

#include "EdeCells.h"
#include "Enumerations.h"
#include "FieldValue.h"
#include "ObjectNames.h"
#include "Printable.h"
#include "UnitCode.h"

namespace workbench {

using standard::Datatype;
using standard::ObjectId;

namespace {

constexpr char const* Obligations =
    "#mandatory;mandatory;mandatory;mandatory;mandatory;optional;optional;optional;optional;optional;"
    "optional;"
    "optional;optional;optional;optional;optional;optional\r\n";

// A field of a row: in quotation marks where it has to be, without control characters.
std::string Field(std::string const& text) {
    std::string field = PlainText(text);
    bool const hasBlanks = !field.empty() && (field.front() == ' ' || field.back() == ' ');
    if (!hasBlanks && field.find_first_of(";\"") == std::string::npos) {
        return field;
    }
    for (std::size_t at = field.find('"'); at != std::string::npos; at = field.find('"', at + 2)) {
        field.insert(at, 1, '"');
    }
    return "\"" + field + "\"";
}

std::string Row(std::vector<std::string> const& fields) {
    std::string row;
    for (std::string const& field : fields) {
        row += (&field == fields.data() ? "" : ";") + Field(field);
    }
    return row + "\r\n";
}

std::string Encoded(std::string text) {
    bool const isAscii =
        std::all_of(text.begin(), text.end(), [](unsigned char octet) { return octet < 0x80; });
    return isAscii ? std::move(text) : "\xEF\xBB\xBF" + text;
}

struct Entry {
    ObjectRecord const* device;
    ObjectRecord const* object;
};

// What the rows refer to, in the order in which it occurs.
struct References {
    std::map<std::vector<std::string>, std::size_t> stateTexts;
    std::vector<std::vector<std::string>> stateRows;
    std::map<std::uint32_t, std::string> units;
    std::map<std::uint32_t, std::string> objectTypes;
};

class Writer {
public:
    explicit Writer(Inventory const& inventory) {
        for (DeviceRecord const& device : inventory.devices) {
            AddDevice(device);
        }
        CountNames();
    }

    EdeTexts Write(EdeHeading const& heading) {
        EdeTexts texts;
        texts.ede = HeadingText(heading);
        for (Entry const& entry : entries) {
            texts.ede += Row(FieldsOf(entry));
        }
        texts.ede = Encoded(std::move(texts.ede));
        texts.stateTexts = Encoded(StateTextsText());
        texts.units = Encoded(
            CodesText("#Encoding of BACnet Engineering Units\r\n#Code;Unit Text\r\n", references.units));
        texts.objectTypes = Encoded(
            CodesText("#Encoding of BACnet Object Types\r\n#Code;Object Type\r\n", references.objectTypes));
        texts.notes = std::move(notes);
        return texts;
    }

private:
    void AddDevice(DeviceRecord const& device) {
        std::string const number = std::to_string(device.Instance());
        if (!devices.insert(device.Instance()).second) {
            notes.push_back("device " + number +
                            " is there twice; the list has the first one, because a list names a device by "
                            "its instance alone");
            return;
        }
        if (!device.device.properties.empty() || !device.device.listed.empty()) {
            entries.push_back({&device.device, &device.device});
        }
        std::size_t const first = entries.size();
        for (ObjectRecord const& object : device.objects) {
            entries.push_back({&device.device, &object});
        }
        auto const begin = entries.begin() + static_cast<std::ptrdiff_t>(first);
        std::stable_sort(begin, entries.end(), [](Entry const& left, Entry const& right) {
            return left.object->id < right.object->id;
        });
        auto const end = std::unique(begin, entries.end(), [](Entry const& left, Entry const& right) {
            return left.object->id == right.object->id;
        });
        if (end != entries.end()) {
            notes.push_back("device " + number + " lists objects twice; the list has the first ones");
            entries.erase(end, entries.end());
        }
    }

    void CountNames() {
        for (Entry const& entry : entries) {
            ++nameCounts[NameOf(*entry.object)];
        }
    }

    // A key is unique in the list.
    std::string KeynameOf(Entry const& entry) const {
        std::string key = CellOf(*entry.object, EdeColumn::Keyname, *entry.device);
        if (key.empty()) {
            std::string const device = std::to_string(entry.device->id.instance);
            std::string const name = NameOf(*entry.object);
            bool const isUnique = !name.empty() && nameCounts.at(name) == 1;
            key = isUnique       ? name
                  : name.empty() ? device + "." + standard::ObjectText(entry.object->id)
                                 : device + "." + name;
        }
        // A first field that begins with "#" is a comment.
        return key.front() == '#' ? "_" + key : key;
    }

    std::vector<std::string> FieldsOf(Entry const& entry) {
        std::vector<std::string> fields;
        for (std::size_t i = 0; i < EdeColumnCount; ++i) {
            fields.push_back(CellOf(*entry.object, static_cast<EdeColumn>(i), *entry.device));
        }
        fields[static_cast<std::size_t>(EdeColumn::Keyname)] = KeynameOf(entry);
        std::string const reference = ReferenceOf(*entry.object);
        if (!reference.empty()) {
            fields[static_cast<std::size_t>(EdeColumn::StateTextReference)] = reference;
        }
        AddCodes(*entry.object);
        NoteColumns(*entry.object);
        return fields;
    }

    // The number of the texts of its states, from 1 on in the order of the rows.
    std::string ReferenceOf(ObjectRecord const& object) {
        std::vector<std::string> const texts = PlainStateTexts(object);
        if (texts.empty()) {
            return {};
        }
        auto const known = references.stateTexts.emplace(texts, references.stateTexts.size() + 1);
        if (known.second) {
            references.stateRows.push_back(texts);
        }
        return std::to_string(known.first->second);
    }

    static std::string Listed(ObjectRecord const& object, char const* heading) {
        auto const found = object.listed.find(heading);
        return found == object.listed.end() ? std::string() : found->second;
    }

    void AddCodes(ObjectRecord const& object) {
        std::string const typeName = Listed(object, TypeNameHeading);
        references.objectTypes.emplace(
            object.id.type, typeName.empty() ? standard::ObjectTypeText(object.id.type) : typeName);
        AddUnit(object, UnitCell(object));
    }

    void AddUnit(ObjectRecord const& object, std::string const& cell) {
        auto const unit = WholeNumberOf(cell, UINT16_MAX);
        if (unit) {
            auto const name = standard::NameOfEnumerated(Datatype::Units, *unit);
            std::string const text = Listed(object, UnitNameHeading);
            references.units.emplace(*unit, name            ? std::string(*name)
                                            : !text.empty() ? text
                                                            : "unit " + std::to_string(*unit));
        } else if (!cell.empty() && textUnits.insert(cell).second) {
            notes.push_back("the unit " + tools::Quoted(cell) +
                            " has no code; the list has its text in the column unit-code");
        }
    }

    void NoteColumns(ObjectRecord const& object) {
        for (auto const& column : object.listed) {
            if (!EdeLayout::IsHeading(column.first) && column.first != UnitNameHeading &&
                column.first != TypeNameHeading && further.insert(column.first).second) {
                notes.push_back("the column " + tools::Quoted(column.first) +
                                " is not one of layout 2.3 and is left out");
            }
        }
    }

    static std::string HeadingText(EdeHeading const& heading) {
        std::string text = "#Engineering-Data-Exchange\r\n";
        text += Row({"PROJECT_NAME", heading.projectName});
        text += Row({"VERSION_OF_REFERENCEFILE", heading.fileVersion});
        text += Row({"TIMESTAMP_OF_LAST_CHANGE", heading.timestamp});
        text += Row({"AUTHOR_OF_LAST_CHANGE", heading.author});
        text += Row({"VERSION_OF_LAYOUT", "2.3"});
        text += Obligations;
        std::vector<std::string> headings;
        for (std::size_t i = 0; i < EdeColumnCount; ++i) {
            headings.emplace_back(HeadingOf(static_cast<EdeColumn>(i)));
        }
        return text + "#" + Row(headings);
    }

    std::string StateTextsText() const {
        std::size_t most = 2;
        for (auto const& texts : references.stateRows) {
            most = std::max(most, texts.size());
        }
        std::vector<std::string> headings{"#Reference Number", "Text 1 or Inactive-Text",
                                          "Text 2 or Active-Text"};
        for (std::size_t i = 3; i <= most; ++i) {
            headings.push_back("Text " + std::to_string(i));
        }
        std::string text = "#State Text Reference\r\n" + Row(headings);
        for (std::size_t i = 0; i < references.stateRows.size(); ++i) {
            std::vector<std::string> fields{std::to_string(i + 1)};
            fields.insert(fields.end(), references.stateRows[i].begin(), references.stateRows[i].end());
            text += Row(fields);
        }
        return text;
    }

    static std::string CodesText(std::string text, std::map<std::uint32_t, std::string> const& codes) {
        for (auto const& code : codes) {
            text += Row({std::to_string(code.first), code.second});
        }
        return text;
    }

    std::vector<Entry> entries;
    std::set<std::uint32_t> devices;
    std::map<std::string, std::size_t> nameCounts;
    std::set<std::string> textUnits;
    std::set<std::string> further;
    References references;
    std::vector<std::string> notes;
};

}  // namespace

EdeTexts WriteEde(Inventory const& inventory, EdeHeading const& heading) {
    return Writer(inventory).Write(heading);
}

}  // namespace workbench
