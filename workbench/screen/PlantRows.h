#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "PlantState.h"
#include "RowChoice.h"

namespace workbench {

// One line of the table. item is the index of the cause or of the variable; a cause beyond the last one
// stands for those that are not shown.
struct PlantRow {
    enum Kind { Headline, CauseLine, VariableLine };
    Kind kind;
    std::size_t block;
    std::size_t item = 0;
};

bool operator==(PlantRow const& left, PlantRow const& right);

// The lines of the table in their order, with a selected one, which is a headline or a variable. The
// selection stays with its variable while lines come and go; when it goes, the next one is selected.
class PlantRows {
public:
    // Makes the lines again from the newest cycles.
    void Update(PlantState const& newPlant, long long now);

    PlantState const& Plant() const { return plant; }
    ChangeTimes const& Changes() const { return changes; }
    std::vector<PlantRow> const& Rows() const { return rows; }
    std::size_t VariableCount() const { return variableCount; }  // of all blocks
    std::size_t ShownCount() const { return shownCount; }        // that are chosen, folded or not
    // Of the chosen variables of a block.
    std::size_t ShownOf(std::size_t block) const { return found[block].size(); }

    RowChoice const& Choice() const { return choice; }
    void Choose(RowChoice newChoice);

    bool IsFolded(std::size_t block) const { return Folds().count(block) > 0; }
    void Fold(std::size_t block, bool isFolded);
    // Folds all blocks, or unfolds them if all are folded.
    void FoldAll();

    // Empty lines have no selection.
    std::optional<std::size_t> Selected() const { return selected; }
    PlantRow const* SelectedRow() const { return selected ? &rows[*selected] : nullptr; }
    // The nearest line that can be selected.
    void Select(std::size_t row);
    void Move(long long lines);

private:
    // Blocks that are folded while a filter is on are forgotten with it: what it finds is not hidden.
    std::set<std::size_t> const& Folds() const { return choice.IsAll() ? folds : filteredFolds; }
    void GoToHeadline();
    void Build();
    void AddBlock(std::size_t block);
    void Reselect(std::optional<PlantRow> const& before);

    PlantState plant;
    long long time = 0;
    ChangeTimes changes;
    VariableSearch search;
    RowChoice choice;
    std::set<std::size_t> folds;
    std::set<std::size_t> filteredFolds;
    std::vector<PlantRow> rows;
    std::vector<std::vector<std::size_t>> found;  // by block
    std::size_t variableCount = 0;
    std::size_t shownCount = 0;
    std::optional<std::size_t> selected;
};

}  // namespace workbench
