// The workbench's loader of projects, with the real add-in: a text is a project, or loading it ends in a
// message of one line with the position of the mistake. Its check of the same text: every finding is of this
// text, on one line, and the place is in it.
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Addin.h"
#include "FindingFormat.h"
#include "LoadedProject.h"
#include "ProjectCheck.h"
#include "ProjectError.h"
#include "Require.h"
#include "SourceText.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

using fuzz::Require;

namespace {

// A host environment without a network.
class DeadNetwork final : public dorvel::HostEnvironment {
public:
    int Open(unsigned short) override { return 3; }
    unsigned short LocalPort(int) override { return 47809; }
    void Close(int) override {}
    bool Send(int, sockaddr_in const&, void const*, int) override { return true; }
    int Receive(int, sockaddr_in&, void*, int, int) override { return -1; }
    long long Now() override { return 133485408000000000; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 0; }
};

// Added before every text, on its first line. An input must not reach the disk or other programs. The time
// limit stops an endless function of Lua's library only by ending the process, which would end the fuzzer.
constexpr char Fence[] =
    "io, os, package, require, dofile, loadfile, print = nil "
    "string.find, string.match, string.gmatch, string.gsub, string.rep, table.move, table.concat = nil ";

tools::LuaLimits Limits() {
    tools::LuaLimits limits;
    limits.time = std::chrono::milliseconds(20);
    limits.memory = std::size_t{8} << 20;
    return limits;
}

bool HasLine(std::string const& message) {
    std::size_t const digits = message.find_first_not_of("0123456789", 2);
    return message.compare(0, 2, "p:") == 0 && digits > 2 && message.compare(digits, 2, ": ") == 0;
}

// A mistake that the workbench's own checks report has its line. Other errors have a position only if Lua
// adds one: a script can raise an error without a position, and a tail call has none.
void RequireMessage(std::string const& message) {
    Require(message.compare(0, 2, "p:") == 0, "a message begins with the file");
    for (unsigned char const c : message) {
        Require(c >= 0x20 && c != 0x7F, "a message is one line");
    }
    bool const isCheck = message.compare(0, 9, "p: block ") == 0 || message.compare(0, 9, "p: task: ") == 0 ||
                         message.compare(0, 8, "p: Set: ") == 0;
    Require(!isCheck || HasLine(message), "a mistake in a table has its line");
}

void Check(std::string const& text) {
    auto const lines = std::count(text.begin(), text.end(), '\n') + 1;
    auto const report = workbench::CheckProjectText("p", text, {{"host", "192.168.1.20:47808"}}, Limits());
    for (workbench::Finding const& finding : report.findings) {
        std::string const line = workbench::FindingText(finding, false);
        Require(finding.where.line >= 0 && finding.where.line <= lines, "the line is in the text");
        Require(line.find('\n') < line.size() - 1 && line.back() == '\n', "a finding has its lines");
        std::string const json = workbench::FindingJson(finding);
        for (unsigned char const c : json) {
            Require(c >= 0x20, "a finding in JSON is one line");
        }
    }
}

void Load(std::string const& text) {
    workbench::LoadedProject project("p", {{"host", "192.168.1.20:47808"}}, Limits());
    try {
        project.Load(workbench::SourceText(Fence + text));
    } catch (workbench::ProjectError const& mistake) {
        RequireMessage(mistake.what());
        return;
    }
    Require(!project.Blocks().empty() && !project.Tasks().empty(), "a project has blocks and tasks");
    for (workbench::BlockConfig const& block : project.Blocks()) {
        Require(block.protocol != nullptr && !block.name.empty() && !block.variables.empty(),
                "a block has a driver, a name and variables");
        Require(block.protocol->Vars.size() == block.variables.size(), "the driver has all variables");
    }
    project.TakeSets();
    project.CallDue();
    project.Runtime().RunOnce();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static int const added = dorvel::BACnet::Init();
    Require(added == 0, "the add-in starts");
    static DeadNetwork network;
    dorvel::SetEnvironment(&network);
    dorvel::SetLogSink([](std::string_view) {});
    std::string const text(reinterpret_cast<char const*>(data), size);
    Load(text);
    Check(Fence + text);
    return 0;
}
