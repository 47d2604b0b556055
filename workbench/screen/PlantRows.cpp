#include "PlantRows.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace workbench {

namespace {

constexpr std::size_t MostCauses = 3;

auto Order(PlantRow const& row) {
    return std::make_tuple(row.block, row.kind, row.item);
}

}  // namespace

bool operator==(PlantRow const& left, PlantRow const& right) {
    return Order(left) == Order(right);
}

void PlantRows::Update(PlantState const& newPlant, long long now) {
    plant = newPlant;
    time = now;
    changes.Follow(plant.blocks);
    Build();
}

void PlantRows::Choose(RowChoice newChoice) {
    filteredFolds.clear();
    choice = std::move(newChoice);
    Build();
}

void PlantRows::Fold(std::size_t block, bool isFolded) {
    std::set<std::size_t>& changed = choice.IsAll() ? folds : filteredFolds;
    isFolded ? static_cast<void>(changed.insert(block)) : static_cast<void>(changed.erase(block));
    if (isFolded && selected && rows[*selected].block == block) {
        GoToHeadline();
    }
    Build();
}

void PlantRows::FoldAll() {
    std::set<std::size_t>& changed = choice.IsAll() ? folds : filteredFolds;
    bool const areFolded = changed.size() >= plant.blocks.size();
    changed.clear();
    for (std::size_t block = 0; block < plant.blocks.size() && !areFolded; ++block) {
        changed.insert(block);
    }
    GoToHeadline();
    Build();
}

// Before the lines of its block are folded away.
void PlantRows::GoToHeadline() {
    while (selected && rows[*selected].kind != PlantRow::Headline) {
        --*selected;
    }
}

void PlantRows::Build() {
    std::optional<PlantRow> const before = selected ? std::optional(rows[*selected]) : std::nullopt;
    rows.clear();
    found.assign(plant.blocks.size(), {});
    variableCount = shownCount = 0;
    for (std::size_t block = 0; block < plant.blocks.size(); ++block) {
        found[block] = search.Find(plant, block, choice, changes, time);
        variableCount += plant.blocks[block]->variables.size();
        shownCount += found[block].size();
        AddBlock(block);
    }
    Reselect(before);
}

void PlantRows::AddBlock(std::size_t block) {
    BlockSnapshot const& snapshot = *plant.blocks[block];
    bool const isFaultOfChoice = choice.filter.empty() && choice.onlyBad && IsFault(snapshot);
    if (found[block].empty() && !choice.IsAll() && !isFaultOfChoice) {
        return;
    }
    rows.push_back({PlantRow::Headline, block});
    std::size_t const most = IsFolded(block) ? 1 : MostCauses;
    std::size_t const causes = std::min(snapshot.causes.size(), most);
    for (std::size_t i = 0; i < causes; ++i) {
        bool const isRest = i + 1 == causes && causes > 1 && snapshot.causes.size() > causes;
        rows.push_back({PlantRow::CauseLine, block, isRest ? snapshot.causes.size() : i});
    }
    for (std::size_t i = 0; i < found[block].size() && !IsFolded(block); ++i) {
        rows.push_back({PlantRow::VariableLine, block, found[block][i]});
    }
}

void PlantRows::Reselect(std::optional<PlantRow> const& before) {
    selected.reset();
    if (rows.empty()) {
        return;
    }
    std::size_t row = 0;
    if (before) {
        auto const next =
            std::lower_bound(rows.begin(), rows.end(), *before,
                             [](auto const& left, auto const& right) { return Order(left) < Order(right); });
        row = static_cast<std::size_t>(next - rows.begin());
    }
    Select(row);
}

void PlantRows::Select(std::size_t row) {
    selected.reset();
    if (rows.empty()) {
        return;
    }
    std::size_t const last = rows.size() - 1;
    std::size_t nearest = std::min(row, last);
    while (nearest < last && rows[nearest].kind == PlantRow::CauseLine) {
        ++nearest;
    }
    while (rows[nearest].kind == PlantRow::CauseLine) {
        --nearest;  // a headline is the first line of all
    }
    selected = nearest;
}

void PlantRows::Move(long long lines) {
    if (!selected) {
        return;
    }
    auto const last = static_cast<long long>(rows.size()) - 1;
    long long row = std::clamp(static_cast<long long>(*selected) + lines, 0LL, last);
    while (lines < 0 && rows[static_cast<std::size_t>(row)].kind == PlantRow::CauseLine) {
        --row;
    }
    Select(static_cast<std::size_t>(row));
}

}  // namespace workbench
