#include "PlantScreen.h"

#include <utility>

#include "SetRequest.h"

namespace workbench {

void PlantScreen::Update(PlantState const& plant, std::vector<std::string> const& newestLog, long long now) {
    rows.Update(plant, now);
    time = now;
    // Lines that a person reads stay where they are.
    if (view != View::Log || text.IsAtEnd()) {
        log = newestLog;
    }
}

std::optional<std::pair<BlockConfig const*, VariableConfig const*>> PlantScreen::Detailed() const {
    if (view != View::Detail) {
        return std::nullopt;
    }
    BlockSnapshot const& block = *rows.Plant().blocks[detailBlock];
    return std::pair(block.config, block.variables[detailVariable].config);
}

std::string PlantScreen::Handle(Key const& key) {
    if (prompt.IsOpen()) {
        return prompt.Handle(key);
    }
    if (isFiltering) {
        HandleFilter(key);
    } else if (view == View::Table) {
        HandleTable(key);
    } else if (!text.Handle(key)) {
        HandleLetter(key);
    }
    return {};
}

void PlantScreen::HandleTable(Key const& key) {
    switch (key.kind) {
        case KeyKind::Enter:
            OpenSelected();
            return;
        case KeyKind::Left:
        case KeyKind::Right:
            if (PlantRow const* const row = rows.SelectedRow()) {
                rows.Fold(row->block, key.kind == KeyKind::Left);
            }
            return;
        case KeyKind::Escape:
            ShowAll();
            return;
        case KeyKind::Click:
            Click(key.line);
            return;
        default:
            break;
    }
    if (long long const lines = Movement(key, table.Page())) {
        rows.Move(lines);
    } else {
        HandleLetter(key);
    }
}

// The keys of the table that are letters, and those that every view has.
void PlantScreen::HandleLetter(Key const& key) {
    bool const isTable = view == View::Table;
    std::string const letter = key.kind == KeyKind::Escape ? "q" : key.text;
    if (letter == "q") {
        Open(View::Table);
    } else if (letter == "?") {
        Open(View::Help);
    } else if (letter == "l") {
        Open(View::Log);
    } else if (letter == "s" || letter == ":") {
        OpenPrompt();
    } else if (letter == "/") {
        Open(View::Table);
        isFiltering = true;
    } else if (letter == "b" && isTable) {
        Choose(&RowChoice::onlyBad);
    } else if (letter == "c" && isTable) {
        Choose(&RowChoice::onlyChanged);
    } else if (letter == "w" && isTable) {
        Choose(&RowChoice::onlyWritable);
    } else if (letter == "a" && isTable) {
        ShowAll();
    } else if (letter == "f" && isTable) {
        rows.FoldAll();
    }
}

void PlantScreen::HandleFilter(Key const& key) {
    RowChoice choice = rows.Choice();
    switch (key.kind) {
        case KeyKind::Enter:
            isFiltering = false;
            return;
        case KeyKind::Escape:
            isFiltering = false;
            filter.Set({});
            break;
        case KeyKind::Up:
        case KeyKind::Down:
        case KeyKind::PageUp:
        case KeyKind::PageDown:
        case KeyKind::WheelUp:
        case KeyKind::WheelDown:
            rows.Move(Movement(key, table.Page()));
            return;
        default:
            filter.Handle(key);
    }
    if (choice.filter != filter.Text()) {
        choice.filter = filter.Text();
        rows.Choose(std::move(choice));
        table.Narrow();
    }
}

void PlantScreen::Open(View newView) {
    view = newView;
    text.Open(newView == View::Log);
}

void PlantScreen::OpenSelected() {
    PlantRow const* const row = rows.SelectedRow();
    if (!row) {
        return;
    }
    if (row->kind == PlantRow::Headline) {
        rows.Fold(row->block, !rows.IsFolded(row->block));
        return;
    }
    detailBlock = row->block;
    detailVariable = row->item;
    facts = {};
    Open(View::Detail);
}

void PlantScreen::OpenPrompt() {
    PlantRow const* const row = rows.SelectedRow();
    bool const isVariable = row && row->kind == PlantRow::VariableLine;
    std::string beginning;
    if (view == View::Detail || (view == View::Table && isVariable)) {
        BlockSnapshot const& block = *rows.Plant().blocks[view == View::Detail ? detailBlock : row->block];
        VariableConfig const& variable =
            *block.variables[view == View::Detail ? detailVariable : row->item].config;
        beginning = variable.write ? FullName(*block.config, variable) + " = " : "";
    }
    prompt.Open(beginning);
}

void PlantScreen::Click(std::size_t line) {
    auto const row = table.RowAt(line);
    if (!row || *row >= rows.Rows().size()) {
        return;
    }
    bool const isOpened = rows.Selected() == row;
    rows.Select(*row);
    if (isOpened) {
        OpenSelected();
    }
}

void PlantScreen::Choose(bool RowChoice::*toggle) {
    RowChoice choice = rows.Choice();
    choice.*toggle = !(choice.*toggle);
    rows.Choose(std::move(choice));
    table.Narrow();
}

void PlantScreen::ShowAll() {
    filter.Set({});
    rows.Choose({});
    table.Narrow();
}

}  // namespace workbench
