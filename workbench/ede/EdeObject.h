#pragma once

#include "CodeTexts.h"
#include "CsvText.h"
#include "EdeColumns.h"

namespace workbench {

// What the rows of an EDE file refer to.
struct EdeReferences {
    CodeTexts stateTexts;
    CodeTexts units;
    CodeTexts objectTypes;
};

// The file of a row, which field of it is which column, and where the report goes.
struct EdeRow {
    std::string const& file;
    CsvRow const& row;
    EdeLayout const& layout;
    ImportReport& report;

    // Empty for a column that the row does not have.
    std::string const& TextOf(EdeColumn column) const;
    // Adds a line about a column to the report.
    void Report(EdeColumn column, ImportLine::Effect effect, std::string const& reason) const;
    void Report(std::size_t field, std::string const& heading, ImportLine::Effect effect,
                std::string const& reason) const;
};

// The object's identifier and that of its device. No value, and lines in the report, if one of the numbers is
// missing or not one.
struct EdeIdentity {
    std::uint32_t device = 0;
    standard::ObjectId object;
};
std::optional<EdeIdentity> IdentityOf(EdeRow const& row, CodeTexts const& objectTypes);

// The object of a row with all its columns (EdeImport.h says where they are).
ObjectRecord ObjectOf(EdeRow const& row, standard::ObjectId const& id, EdeReferences const& references);

}  // namespace workbench
