#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace workbench {

// What an import did not take over as it is in the file.
struct ImportLine {
    enum class Effect {
        RowNotUsed,     // the row makes no object
        ValueNotUsed,   // the row makes an object, without the value of this column; or a row of texts
        DeviceNotUsed,  // the device and its points have no address
        Note            // the value is used in another way than the file has it
    };

    std::string file;
    std::size_t line = 0;    // from 1; 0: the file as a whole
    std::size_t column = 0;  // the number of the field in its row, from 1; 0: the row as a whole
    std::string heading;     // of the column, such as "object-instance"; empty without a column
    Effect effect = Effect::RowNotUsed;
    std::string reason;
};

// What became of the rows of a point list. Nothing is left out without a line.
struct ImportReport {
    std::size_t rows = 0;    // without headings, comments and empty lines
    std::size_t points = 0;  // objects that were made, without Device objects
    std::size_t devices = 0;
    std::vector<ImportLine> lines;  // in the order of the files and of their rows

    std::size_t RowsNotUsed() const { return Count(ImportLine::Effect::RowNotUsed); }
    std::size_t ValuesNotUsed() const { return Count(ImportLine::Effect::ValueNotUsed); }
    std::size_t DevicesNotUsed() const { return Count(ImportLine::Effect::DeviceNotUsed); }
    // With --strict anything that is not used is an error; a note is not.
    bool IsWhole() const { return RowsNotUsed() + ValuesNotUsed() + DevicesNotUsed() == 0; }

private:
    std::size_t Count(ImportLine::Effect effect) const;
};

// "plant_EDE.csv:12: column 5 (object-instance): "x" is not a number; ...: row not used"
std::string ImportLineText(ImportLine const& line);
// All lines and "rows: 120, devices: 3, points: 117, rows not used: 3, values not used: 0", with line ends.
std::string ImportReportText(ImportReport const& report);
// One object for each line, and one with the counts, each on a line.
std::string ImportReportJson(ImportReport const& report);

}  // namespace workbench
