// Point lists: the octets of an EDE file and of the file of state texts beside it. Every row makes an object
// or is in the report; what is written of the plant is read without a mistake and gives the same files again.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CsvText.h"
#include "EdeImport.h"
#include "EdeWriter.h"
#include "Require.h"
#include "TextEncoding.h"

using fuzz::Require;
using namespace workbench;

namespace {

void RequireLine(std::string const& text) {
    for (unsigned char const c : text) {
        Require(c >= 0x20 && c != 0x7F, "a message is one line");
    }
}

void RequireReport(EdeImport const& import) {
    std::size_t objects = 0;
    std::size_t devices = 0;
    for (DeviceRecord const& device : import.inventory.devices) {
        objects += device.objects.size();
        devices += device.device.properties.empty() && device.device.listed.empty() ? 0 : 1;
    }
    Require(objects == import.report.points, "the points are counted");
    std::size_t notUsed = 0;
    for (ImportLine const& line : import.report.lines) {
        RequireLine(ImportLineText(line));
        notUsed += line.effect == ImportLine::Effect::RowNotUsed && line.file == "e" ? 1 : 0;
    }
    // A row of a Device object without any value makes nothing that can be counted.
    Require(objects + devices + notUsed <= import.report.rows, "no row is used twice");
}

EdeImport Read(EdeTexts const& texts) {
    return ReadEde({{"e", texts.ede},
                    EdeFile{"s", texts.stateTexts},
                    EdeFile{"u", texts.units},
                    EdeFile{"o", texts.objectTypes}});
}

void RequireSameAgain(EdeImport const& import) {
    EdeTexts const first = WriteEde(import.inventory, import.heading);
    EdeImport const read = Read(first);
    Require(read.report.points == import.report.points, "what is written is read");
    EdeTexts const second = WriteEde(read.inventory, read.heading);
    Require(first.ede == second.ede, "the list is the same again");
    Require(first.stateTexts == second.stateTexts, "the state texts are the same again");
    Require(first.units == second.units, "the units are the same again");
    Require(first.objectTypes == second.objectTypes, "the object types are the same again");
}

void RequireRows(std::string const& octets) {
    std::size_t line = 0;
    for (CsvRow const& row : ReadCsv(DecodeText(octets).text).rows) {
        Require(!row.fields.empty(), "a row has a field");
        for (CsvField const& field : row.fields) {
            Require(field.line >= line, "lines do not go back");
            line = field.line;
        }
    }
}

}  // namespace

// The two files are separated by a zero octet and a line end.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const octets(reinterpret_cast<char const*>(data), size);
    std::size_t const end = octets.find(std::string("\0\n", 2));
    EdeFiles files{{"e", octets.substr(0, end)}, {}, {}, {}};
    if (end != std::string::npos) {
        files.stateTexts = EdeFile{"s", octets.substr(end + 2)};
        files.units = files.stateTexts;
        files.objectTypes = files.stateTexts;
    }
    RequireRows(octets);
    EdeImport const import = ReadEde(files);
    RequireReport(import);
    RequireSameAgain(import);
    return 0;
}
