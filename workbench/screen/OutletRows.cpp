#include "OutletRows.h"

#include <algorithm>

#include "OutletFormat.h"
#include "Printable.h"
#include "TableLine.h"
#include "TimeText.h"

namespace workbench {

namespace {

constexpr std::size_t HeightForLines = 16;
constexpr std::size_t WidestName = 16;
constexpr std::size_t HealthWidth = 10;  // of "starting" and the blanks after it

std::string AllInOne(std::vector<OutletState> const& outlets, Screen const& screen) {
    TableLine line(screen.width, screen.colour);
    for (OutletState const& outlet : outlets) {
        line.Add(tools::Printable(outlet.name) + " ");
        line.Add(HealthName(outlet.health), HealthColour(outlet.health));
        line.Add("  ");
    }
    return line.Text();
}

// The text is cut, so that its age is visible.
std::string LineOf(OutletState const& outlet, std::size_t nameWidth, Screen const& screen, long long now) {
    TableLine line(screen.width, screen.colour);
    line.Add(tools::FitTo(tools::Printable(outlet.name), nameWidth) + "  ");
    line.Add(tools::FitTo(HealthName(outlet.health), HealthWidth), HealthColour(outlet.health));
    std::string const age = "  " + AgeText(outlet.since, now);
    std::string text = tools::Printable(outlet.text);
    std::size_t const room = line.Left() > age.size() ? line.Left() - age.size() : 0;
    if (tools::DisplayWidth(text) > room) {
        text = tools::FitTo(text, room);
    }
    line.Add(text);
    line.Add(age, Colour::Dim);
    return line.Text();
}

}  // namespace

std::vector<std::string> OutletRows(std::vector<OutletState> const& outlets, Screen const& screen,
                                    long long now) {
    if (outlets.empty()) {
        return {};
    }
    if (screen.height < HeightForLines) {
        return {AllInOne(outlets, screen)};
    }
    std::size_t widest = 1;
    for (OutletState const& outlet : outlets) {
        widest = std::max(widest, tools::DisplayWidth(tools::Printable(outlet.name)));
    }
    std::vector<std::string> lines;
    for (OutletState const& outlet : outlets) {
        lines.push_back(LineOf(outlet, std::min(widest, WidestName), screen, now));
    }
    return lines;
}

}  // namespace workbench
