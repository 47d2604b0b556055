// The drawing of a PlantScreen.

#include <algorithm>
#include <utility>

#include "DetailView.h"
#include "KeyTable.h"
#include "OutletRows.h"
#include "PlantScreen.h"
#include "Printable.h"
#include "SetRequest.h"
#include "TableLine.h"
#include "WrappedText.h"
#include "WriteState.h"

namespace workbench {

namespace {

constexpr std::size_t LinesBelow = 2;   // the status and the message
constexpr std::size_t LeastValue = 12;  // columns of a value that is cut in the message

std::string Line(std::string const& text, Screen const& screen, Colour colour = Colour::None) {
    TableLine line(screen.width, screen.colour);
    line.Add(text, colour);
    return line.Text();
}

std::string TooSmall(Screen const& screen) {
    return Line("Window " + std::to_string(screen.width) + "x" + std::to_string(screen.height) +
                    "; the table needs " + std::to_string(LeastWidth) + "x" + std::to_string(LeastHeight),
                {screen.width, screen.height, false});
}

std::vector<std::string> Printed(std::vector<std::string> const& texts, Screen const& screen) {
    std::vector<std::string> lines;
    for (std::string const& text : texts) {
        lines.push_back(Line(tools::Printable(text), screen));
    }
    return lines;
}

// The whole texts, each on as many lines as it needs.
std::vector<std::string> Whole(std::vector<std::string> const& texts, Screen const& screen) {
    std::vector<std::string> lines;
    for (std::string const& text : texts) {
        for (std::string& part : Wrapped(tools::Printable(text), screen.width)) {
            lines.push_back(std::move(part));
        }
    }
    return lines;
}

// The log below the table: a heading and the newest lines, at most a third of the screen.
std::vector<std::string> NewestLog(std::vector<std::string> const& log, Screen const& screen) {
    constexpr std::size_t most = 6;
    std::size_t const count = std::min({log.size(), most, screen.height / 4});
    if (count == 0) {
        return {};
    }
    std::vector<std::string> lines =
        Printed({log.end() - static_cast<std::ptrdiff_t>(count), log.end()}, screen);
    lines.insert(lines.begin(), Line("Log", screen, Colour::Dim));
    return lines;
}

// What Tab has found, in as many columns as fit; what does not fit is counted.
std::vector<std::string> CandidateLines(std::vector<std::string> const& names, Screen const& screen) {
    std::size_t const most = std::max<std::size_t>(screen.height / 3, 2);
    std::size_t widest = 1;
    for (std::string const& name : names) {
        widest = std::max(widest, tools::DisplayWidth(tools::Printable(name)) + 2);
    }
    std::size_t const perLine = std::max<std::size_t>((screen.width - 1) / widest, 1);
    std::size_t const lineCount = (names.size() + perLine - 1) / perLine;
    std::size_t const shownLines = lineCount <= most ? lineCount : most - 1;
    std::vector<std::string> lines;
    std::size_t next = 0;
    for (std::size_t i = 0; i < shownLines; ++i) {
        TableLine line(screen.width, screen.colour);
        for (std::size_t column = 0; column < perLine && next < names.size(); ++column) {
            line.Add(column == 0 ? "  " : "");
            line.Add(tools::FitTo(tools::Printable(names[next++]), std::min(widest, line.Left())),
                     Colour::Yellow);
        }
        lines.push_back(line.Text());
    }
    if (next < names.size()) {
        lines.push_back(
            Line("  ... " + std::to_string(names.size() - next) + " more; type some letters", screen));
    }
    return lines;
}

// Adds a text that a person edits, and the cursor in it. A text that is too long shows the part before the
// cursor.
void AddEdited(EditLine const& edited, Screen const& screen, TableLine& line, ScreenFrame& frame) {
    std::string const before = tools::Printable(edited.Text().substr(0, edited.Cursor()));
    std::string const after = tools::Printable(edited.Text().substr(edited.Cursor()));
    std::size_t const room = line.Left() > 1 ? line.Left() - 1 : 1;
    std::string shown = before;
    while (tools::DisplayWidth(shown) > room) {
        shown.erase(0, 1);
        while (!shown.empty() && (static_cast<unsigned char>(shown.front()) & 0xC0) == 0x80) {
            shown.erase(0, 1);
        }
    }
    line.Add(shown);
    frame.cursor =
        ScreenFrame::Place{frame.lines.size(), screen.width - std::max<std::size_t>(line.Left(), 1)};
    line.Add(after);
}

// "filter supply 21, only bad, only changed".
std::string ChoiceWords(RowChoice const& choice) {
    std::string words = choice.filter.empty() ? "" : "filter \"" + tools::Printable(choice.filter) + "\"";
    auto const add = [&](bool isOn, char const* word) {
        words += isOn ? (words.empty() ? "" : ", ") + std::string(word) : "";
    };
    add(choice.onlyBad, "only bad");
    add(choice.onlyChanged, "only changed");
    add(choice.onlyWritable, "only writable");
    return words;
}

std::string CountWords(PlantRows const& rows) {
    std::string const all = std::to_string(rows.VariableCount());
    return (rows.Choice().IsAll() ? all : std::to_string(rows.ShownCount()) + " of " + all) +
           (rows.VariableCount() == 1 ? " variable" : " variables");
}

}  // namespace

ScreenFrame PlantScreen::Draw(Screen const& screen) {
    if (screen.width < LeastWidth || screen.height < LeastHeight) {
        return {{TooSmall(screen)}, {}};
    }
    ScreenFrame frame;
    std::vector<std::string> const candidates = prompt.IsOpen() && !prompt.Candidates().empty()
                                                    ? CandidateLines(prompt.Candidates(), screen)
                                                    : std::vector<std::string>();
    std::size_t const height = screen.height - LinesBelow - candidates.size();
    frame.lines = Body(screen, height);
    frame.lines.resize(height);
    frame.lines.insert(frame.lines.end(), candidates.begin(), candidates.end());
    AddStatus(screen, frame);
    AddMessage(screen, frame);
    return frame;
}

std::vector<std::string> PlantScreen::Body(Screen const& screen, std::size_t height) {
    switch (view) {
        case View::Detail:
            return text.Draw(DetailLines(rows, detailBlock, detailVariable, facts, values, screen, time),
                             height);
        case View::Log:
            return text.Draw(Whole(log, screen), height);
        case View::Help:
            return text.Draw(HelpLines(screen), height);
        default:
            return TableWithLog(screen, height);
    }
}

std::vector<std::string> PlantScreen::TableWithLog(Screen const& screen, std::size_t height) {
    std::vector<std::string> below = OutletRows(rows.Plant().outlets, screen, time);
    for (std::string& line : NewestLog(log, screen)) {
        below.push_back(std::move(line));
    }
    below.resize(std::min(below.size(), height));
    std::size_t const tableHeight = height - below.size();
    std::vector<std::string> lines = table.Draw(rows, screen, tableHeight, values, time);
    if (rows.Rows().empty()) {
        lines.push_back(Line("    No variable is chosen; Esc shows all again", screen));
    }
    lines.resize(tableHeight);
    lines.insert(lines.end(), below.begin(), below.end());
    return lines;
}

void PlantScreen::AddStatus(Screen const& screen, ScreenFrame& frame) const {
    TableLine line(screen.width, screen.colour);
    if (isFiltering) {
        std::string const count = "  " + CountWords(rows);
        line.Add("Filter: ", Colour::Bold);
        AddEdited(filter, screen, line, frame);
        line.Add(count, Colour::Dim);
    } else if (view == View::Table) {
        line.Add(CountWords(rows), Colour::Dim);
        line.Add(rows.Choice().IsAll() ? "" : "  " + ChoiceWords(rows.Choice()), Colour::Yellow);
    } else {
        char const* const name = view == View::Log ? "Log" : view == View::Help ? "Keys" : "Details";
        line.Add(name + (", " + text.Where()), Colour::Dim);
    }
    frame.lines.push_back(line.Text());
}

void PlantScreen::AddMessage(Screen const& screen, ScreenFrame& frame) {
    TableLine line(screen.width, screen.colour);
    if (prompt.IsOpen()) {
        line.Add("Block.Variable = value: ", Colour::Bold);
        AddEdited(prompt.Line(), screen, line, frame);
    } else if (!answer.mistake.empty()) {
        line.Add(tools::Printable(answer.mistake), Colour::Red);
    } else if (!answer.target.empty()) {
        line.Add(Progress(screen.width), Colour::Dim);
    } else if (view == View::Table) {
        line.Add(prompt.HasNames() ? "? keys  / filter  Enter details  l log  s set"
                                   : "? keys  / filter  Enter details  l log",
                 Colour::Dim);
    } else {
        line.Add("q back  ? keys", Colour::Dim);
    }
    frame.lines.push_back(line.Text());
}

// The state of the variable that was set last, whose row may not be visible. A long value is cut, so that the
// state is visible.
std::string PlantScreen::Progress(std::size_t width) {
    for (SharedSnapshot const& block : rows.Plant().blocks) {
        for (VariableSnapshot const& variable : block->variables) {
            if (variable.config == answer.variable) {
                WriteState const& write = rows.Plant().WriteOf(variable);
                std::string value =
                    values.Short(*block->config, *variable.config, write.value, block->localDiff);
                std::string const target = tools::Printable(answer.target) + " = ";
                std::size_t const others = tools::DisplayWidth(target + WriteText("", write, true));
                std::size_t const room =
                    std::max<std::size_t>(width > others ? width - others : 0, LeastValue);
                if (tools::DisplayWidth(value) > room) {
                    value = tools::FitTo(value, room);
                }
                return target + WriteText(value, write, true);
            }
        }
    }
    return {};
}

}  // namespace workbench
