#include "CommandPage.h"

#include "HelpText.h"
#include "Roff.h"

namespace tools {

namespace {

std::string Sentence(std::string const& text) {
    return text.empty() || text.back() == '.' ? text : text + ".";
}

std::string ArgumentRoff(ManualArgument const& argument) {
    std::string const name = RoffItalic(argument.name) + (argument.isRepeated ? "..." : "");
    return argument.isRequired ? name : "[" + name + "]";
}

// "\fB-D\fR, \fB--define\fR \fINAME=VALUE\fR"
std::string OptionRoff(ManualOption const& option) {
    std::string roff;
    for (std::string const& name : option.names) {
        roff += (roff.empty() ? "" : ", ") + RoffBold(name);
    }
    if (option.value.empty()) {
        return roff;
    }
    std::string const value = RoffItalic(option.value) + (option.takesMore ? "..." : "");
    return roff + " " + (option.isValueOptional ? "[" + value + "]" : value);
}

void AddOptions(ManPage& page, std::vector<ManualOption> const& options) {
    if (!options.empty()) {
        page.Section("Options");
        for (ManualOption const& option : options) {
            page.Tagged(OptionRoff(option), RoffProse(option.text));
        }
    }
}

void AddBlock(ManPage& page, HelpBlock const& block) {
    switch (block.kind) {
        case HelpBlock::Kind::Paragraph:
            page.Paragraph(RoffProse(block.text));
            break;
        case HelpBlock::Kind::Code:
            page.Code(block.lines);
            break;
        case HelpBlock::Kind::Table:
            for (auto const& row : block.rows) {
                page.Tagged(RoffBold(row.first), RoffProse(row.second));
            }
            break;
    }
}

void AddDescription(ManPage& page, ManualCommand const& command, HelpSection const& text) {
    page.Section("Description");
    if (text.blocks.empty()) {
        page.Paragraph(RoffProse(Sentence(command.brief)));
    }
    for (HelpBlock const& block : text.blocks) {
        AddBlock(page, block);
    }
    for (ManualArgument const& argument : command.arguments) {
        page.Tagged(RoffItalic(argument.name), RoffProse(argument.text));
    }
}

// The examples, the exit codes and whatever else there is.
void AddSections(ManPage& page, std::vector<HelpSection> const& sections) {
    for (std::size_t i = 1; i < sections.size(); ++i) {
        page.Section(sections[i].title == "Exit codes" ? "Exit status" : sections[i].title);
        for (HelpBlock const& block : sections[i].blocks) {
            AddBlock(page, block);
        }
    }
}

void AddSynopsis(ManPage& page, std::string const& words, ManualCommand const& command) {
    page.Section("Synopsis");
    std::string roff = RoffBold(words) + " [" + RoffItalic("OPTION") + "...]";
    for (ManualArgument const& argument : command.arguments) {
        roff += " " + ArgumentRoff(argument);
    }
    page.Paragraph(roff);
}

PageFileText ProgramPage(ManualProgram const& program, ManualEdition const& edition) {
    ManPage page(program.name, 1, program.brief, edition);
    std::vector<std::string> related;
    if (program.commands.empty()) {
        AddSynopsis(page, program.name, program);
    } else {
        page.Section("Synopsis");
        page.Paragraph(RoffBold(program.name) + " " + RoffItalic("COMMAND") + " [" + RoffItalic("OPTION") +
                       "...] [" + RoffItalic("ARGUMENT") + "...]");
    }
    std::vector<HelpSection> const sections = ReadHelpText(program.notes);
    AddDescription(page, program, sections.front());
    if (!program.commands.empty()) {
        page.Section("Commands");
    }
    for (ManualCommand const& command : program.commands) {
        page.Tagged(RoffBold(command.name), RoffProse(Sentence(command.brief)));
        related.push_back(program.name + "-" + command.name + "(1)");
    }
    AddOptions(page, program.options);
    AddSections(page, sections);
    related.insert(related.end(), program.related.begin(), program.related.end());
    page.SeeAlso(related);
    return {program.name + ".1", page.Text()};
}

PageFileText PageOfCommand(ManualProgram const& program, ManualCommand const& command,
                           ManualEdition const& edition) {
    std::string const name = program.name + "-" + command.name;
    ManPage page(name, 1, command.brief, edition);
    AddSynopsis(page, program.name + " " + command.name, command);
    std::vector<HelpSection> const sections = ReadHelpText(command.notes);
    AddDescription(page, command, sections.front());
    AddOptions(page, command.options);
    AddSections(page, sections);
    std::vector<std::string> related = {program.name + "(1)"};
    related.insert(related.end(), program.related.begin(), program.related.end());
    page.SeeAlso(related);
    return {name + ".1", page.Text()};
}

}  // namespace

std::vector<PageFileText> CommandPages(ManualProgram const& program, ManualEdition const& edition) {
    std::vector<PageFileText> pages = {ProgramPage(program, edition)};
    for (ManualCommand const& command : program.commands) {
        pages.push_back(PageOfCommand(program, command, edition));
    }
    return pages;
}

}  // namespace tools
