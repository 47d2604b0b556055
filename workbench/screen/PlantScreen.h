#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "EditLine.h"
#include "Key.h"
#include "PlantRows.h"
#include "Prompt.h"
#include "Screen.h"
#include "ScreenFrame.h"
#include "ScrolledText.h"
#include "SetAnswer.h"
#include "TableView.h"
#include "ValuesForPeople.h"
#include "VariableFacts.h"

namespace workbench {

// The screen of a run: a table of all variables, the details of one, the log and the help, with the keys that
// move in them. Knows no terminal and no time; for one thread.
class PlantScreen {
public:
    // What may be typed in the line for values.
    explicit PlantScreen(std::vector<std::string> completions) : prompt(std::move(completions)) {}

    // The newest state of everything that is shown. now is a file time.
    void Update(PlantState const& plant, std::vector<std::string> const& newestLog, long long now);
    // The variable whose details are open, and its block; none without one. They show the facts from then on.
    std::optional<std::pair<BlockConfig const*, VariableConfig const*>> Detailed() const;
    void SetFacts(VariableFacts newFacts) { facts = std::move(newFacts); }
    // The answer to a value that was set, which stays below the table until the next one.
    void SetAnswerLine(SetAnswer const& newAnswer) { answer = newAnswer; }

    // Returns the line that the person has entered: a value to be set, or a command; empty mostly.
    std::string Handle(Key const& key);

    // As many lines as the screen has, or fewer. A screen that is too small shows a message.
    ScreenFrame Draw(Screen const& screen);

private:
    enum class View { Table, Detail, Log, Help };

    void HandleTable(Key const& key);
    void HandleLetter(Key const& key);
    void HandleFilter(Key const& key);
    void Open(View newView);
    void OpenSelected();
    void OpenPrompt();
    void Click(std::size_t line);
    void Choose(bool RowChoice::*toggle);
    void ShowAll();

    std::vector<std::string> Body(Screen const& screen, std::size_t height);
    std::vector<std::string> TableWithLog(Screen const& screen, std::size_t height);
    void AddStatus(Screen const& screen, ScreenFrame& frame) const;
    void AddMessage(Screen const& screen, ScreenFrame& frame);
    std::string Progress(std::size_t width);

    PlantRows rows;
    TableView table;
    ValuesForPeople values;
    ScrolledText text;
    Prompt prompt;
    EditLine filter;
    bool isFiltering = false;
    View view = View::Table;
    std::size_t detailBlock = 0;
    std::size_t detailVariable = 0;
    VariableFacts facts;
    std::vector<std::string> log;
    SetAnswer answer;
    long long time = 0;
};

}  // namespace workbench
