#include <algorithm>
#include <unordered_map>
#include <utility>

#include "EdeObject.h"
#include "FieldValue.h"
#include "ObjectNames.h"
#include "Printable.h"
#include "TextEncoding.h"

namespace workbench {

using standard::ObjectId;
using Effect = ImportLine::Effect;

namespace {

constexpr std::uint16_t DeviceType = 8;
constexpr std::uint32_t LargestInstance = ObjectId::LastInstance;

struct HeadingRow {
    char const* letters;
    std::string EdeHeading::*field;
};

constexpr HeadingRow HeadingRows[] = {{"projectname", &EdeHeading::projectName},
                                      {"versionofreferencefile", &EdeHeading::fileVersion},
                                      {"timestampoflastchange", &EdeHeading::timestamp},
                                      {"authoroflastchange", &EdeHeading::author},
                                      {"versionoflayout", &EdeHeading::layout}};

bool IsEmpty(CsvRow const& row) {
    return std::all_of(row.fields.begin(), row.fields.end(),
                       [](CsvField const& field) { return field.text.empty(); });
}

// "mandatory;mandatory;optional": a line above the headings in some files.
bool IsObligation(CsvRow const& row) {
    return row.fields.size() > 1 && LettersOf(row.fields[0].text) == "mandatory" &&
           LettersOf(row.fields[1].text) == "mandatory";
}

class EdeReader {
public:
    explicit EdeReader(EdeFiles const& files)
        : file(files.ede.name),
          references{Texts(files.stateTexts), Texts(files.units), Texts(files.objectTypes)} {}

    EdeImport Read(std::string const& content) {
        DecodedText const decoded = DecodeText(content);
        if (decoded.hasInvalidOctets) {
            Report(0, Effect::Note,
                   "has octets that are not characters of its encoding; they are read as U+FFFD");
        }
        ForEachRow(decoded.text, [this](CsvRow const& row, char separator) {
            if (IsEmpty(row) || TakeHeadingRow(row) || TakeHeadings(row) || IsObligation(row)) {
                return;
            }
            if (row.isComment) {
                NoteComment(row);
                return;
            }
            NoteCommas(row, separator);
            TakePoint(row);
        });
        Finish();
        return std::move(import);
    }

private:
    CodeTexts Texts(std::optional<EdeFile> const& codeFile) {
        return codeFile ? CodeTexts(*codeFile, import.report) : CodeTexts();
    }

    void Report(std::size_t line, Effect effect, std::string const& reason) {
        import.report.lines.push_back({file, line, 0, "", effect, reason});
    }

    bool TakeHeadingRow(CsvRow const& row) {
        if (hasHeadings) {
            return false;
        }
        std::string const letters = LettersOf(row.fields.front().text);
        for (HeadingRow const& heading : HeadingRows) {
            if (letters == heading.letters) {
                import.heading.*heading.field = row.fields.size() > 1 ? row.fields[1].text : "";
                return true;
            }
        }
        return false;
    }

    bool TakeHeadings(CsvRow const& row) {
        std::optional<EdeLayout> found = EdeLayout::ByHeading(row);
        if (!found) {
            return false;
        }
        layout = std::move(*found);
        hasHeadings = true;
        for (std::size_t const field : layout.unknownFields) {
            if (layout.headings[field].empty()) {
                continue;
            }
            bool const isSecond = EdeLayout::IsHeading(layout.headings[field]);
            import.report.lines.push_back({file, row.Line(), field + 1, layout.headings[field], Effect::Note,
                                           isSecond ? "is there twice; the first column is used"
                                                    : "is not a column of an EDE file; its texts are kept"});
        }
        return true;
    }

    // A comment that has the numbers of a point can be a key that begins with "#".
    void NoteComment(CsvRow const& row) {
        EdeRow const edeRow{file, row, layout, import.report};
        bool const isPoint = WholeNumberOf(edeRow.TextOf(EdeColumn::DeviceInstance), LargestInstance) &&
                             WholeNumberOf(edeRow.TextOf(EdeColumn::ObjectInstance), LargestInstance) &&
                             !edeRow.TextOf(EdeColumn::ObjectType).empty();
        if (isPoint) {
            Report(row.Line(), Effect::Note, "begins with \"#\": a comment, and its point is left out");
        }
    }

    // The values after an unprotected comma are in the wrong columns, and may look right there.
    void NoteCommas(CsvRow const& row, char separator) {
        if (hasHeadings && separator == ',' && row.fields.size() > layout.headings.size()) {
            Report(row.Line(), Effect::Note,
                   "has " + std::to_string(row.fields.size()) + " fields, and the headings have " +
                       std::to_string(layout.headings.size()) +
                       ": is a comma of a number or text not in quotation marks?");
        }
    }

    void TakePoint(CsvRow const& row) {
        if (!hasHeadings && row.fields.size() == 1) {
            Report(row.Line(), Effect::Note,
                   tools::Quoted(row.fields.front().text) + " is taken for a title");
            return;
        }
        ++import.report.rows;
        if (row.hasLooseQuotes) {
            Report(row.Line(), Effect::Note, "has a quotation mark without its counterpart; read as it is");
        }
        EdeRow const edeRow{file, row, layout, import.report};
        auto const identity = IdentityOf(edeRow, references.objectTypes);
        if (!identity) {
            return;
        }
        NoteLineEnds(edeRow);
        std::uint64_t const key = std::uint64_t{identity->device} << 32 | identity->object.Encoded();
        auto const known = lines.emplace(key, row.Line());
        if (!known.second) {
            Report(row.Line(), Effect::RowNotUsed,
                   standard::ObjectText(identity->object) + " of device " + std::to_string(identity->device) +
                       " is also in line " + std::to_string(known.first->second));
            return;
        }
        Add(edeRow, *identity);
    }

    // A missing quotation mark can make two rows one. Names have no line ends.
    void NoteLineEnds(EdeRow const& row) {
        for (EdeColumn const column : {EdeColumn::Keyname, EdeColumn::ObjectName}) {
            if (row.TextOf(column).find_first_of("\r\n") != std::string::npos) {
                row.Report(column, Effect::Note, "has a line end: is a quotation mark missing?");
            }
        }
    }

    void Add(EdeRow const& row, EdeIdentity const& identity) {
        bool const isDevice = identity.object.type == DeviceType;
        if (isDevice && identity.object.instance != identity.device) {
            row.Report(EdeColumn::ObjectInstance, Effect::RowNotUsed,
                       "a Device object has the instance of its device, which is " +
                           std::to_string(identity.device));
            return;
        }
        ObjectRecord object = ObjectOf(row, identity.object, references);
        CheckName(row, identity, object);
        DeviceRecord& device = DeviceOf(identity.device);
        if (isDevice) {
            device.device = std::move(object);
        } else {
            device.objects.push_back(std::move(object));
            ++import.report.points;
        }
    }

    // The name of an object is not empty and unique in its device (clause 12.1.1.2).
    void CheckName(EdeRow const& row, EdeIdentity const& identity, ObjectRecord const& object) {
        std::string const name = NameOf(object);
        if (name.empty()) {
            row.Report(EdeColumn::ObjectName, Effect::Note, "is empty; an object has a name");
            return;
        }
        auto const known = names.emplace(std::to_string(identity.device) + ":" + name, row.row.Line());
        if (!known.second) {
            row.Report(EdeColumn::ObjectName, Effect::Note,
                       tools::Quoted(name) + " is also the name of the object in line " +
                           std::to_string(known.first->second));
        }
    }

    DeviceRecord& DeviceOf(std::uint32_t instance) {
        auto const known = indices.emplace(instance, import.inventory.devices.size());
        if (known.second) {
            import.inventory.devices.emplace_back();
            import.inventory.devices.back().device.id = {DeviceType, instance};
        }
        return import.inventory.devices[known.first->second];
    }

    void Finish() {
        auto& devices = import.inventory.devices;
        std::sort(devices.begin(), devices.end(), [](DeviceRecord const& left, DeviceRecord const& right) {
            return left.Instance() < right.Instance();
        });
        import.report.devices = devices.size();
        if (import.report.points == 0 && import.report.devices == 0) {
            Report(0, Effect::Note, "has no row with a point");
        }
    }

    std::string const& file;
    EdeImport import;
    EdeReferences references;
    EdeLayout layout = EdeLayout::ByPosition();
    bool hasHeadings = false;
    std::unordered_map<std::uint64_t, std::size_t> lines;    // by device and object
    std::unordered_map<std::string, std::size_t> names;      // by device and name
    std::unordered_map<std::uint32_t, std::size_t> indices;  // of devices by instance
};

}  // namespace

EdeImport ReadEde(EdeFiles const& files) {
    return EdeReader(files).Read(files.ede.content);
}

}  // namespace workbench
