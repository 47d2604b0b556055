#include "RunCommand.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <sstream>

#include "ExitCode.h"
#include "FakeEnvironment.h"
#include "Hex.h"
#include "Projects.h"
#include "TemporaryFolder.h"
#include "dorvelshare/NLSocket.h"
#include "dorvelshare/Trace.h"

using namespace test;
using namespace workbench;

namespace {

// A run from project file to output, with the fake driver and a fake environment.
class RunCommand : public testing::Test {
protected:
    void SetUp() override {
        options.project = folder.Write("project.lua", "Task{Name='fast', Period=1}\n" + OneBlock);
        options.format = OutputFormat::Json;
        options.cycles = 3;
        world.time = 133549760960000000LL;
        dorvel::SetEnvironment(&world);
    }
    void TearDown() override {
        EXPECT_EQ(&dorvel::Environment(), &world);
        dorvel::SetEnvironment(nullptr);
    }

    int Run(int in = -1) { return RunProject(options, {out, err, false, false, in}); }

    // A run with lines on its standard input.
    int RunWith(std::string const& lines) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        EXPECT_EQ(write(ends[1], lines.data(), lines.size()), static_cast<ssize_t>(lines.size()));
        close(ends[1]);
        int const code = Run(ends[0]);
        close(ends[0]);
        return code;
    }

    // A project whose variable can be set, and a driver that writes it.
    void MakeWritable(std::string const& more = "") {
        std::string variable = Temperature;
        variable.insert(variable.size() - 1, ", Write=true");
        options.project =
            folder.Write("writable.lua", "Task{Name='fast', Period=1}\n" + more +
                                             Block(R"(Name="AHU", Address="1.2.3.4:47808")", variable));
        addIn.onCycle = [this](FakeDriver& driver) {
            driver.Deliver(0, device);
            driver.Report(false, "");
            driver.WritePhase([this](std::size_t, OpcUa_VariantHlp const& value) { device = value; });
        };
        options.cycles = 4;
    }

    // The states of the write, one word a cycle; "-" before it is set.
    std::string States() const {
        std::string states;
        for (std::string const& line : OutLines()) {
            rapidjson::Document document;
            document.Parse(line.c_str());
            if (document.HasMember("variables")) {
                auto const& variable = document["variables"][0];
                states += variable.HasMember("write") ? variable["write"]["state"].GetString() : "-";
                states += ' ';
            }
        }
        return states;
    }

    std::vector<std::string> OutLines() const {
        std::istringstream stream(out.str());
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    static void Poll(FakeDriver& driver) {
        driver.Deliver(0, Float(21.5f));
        driver.Report(false, "");
    }
    static void Fail(FakeDriver& driver) { driver.Report(true, "No connection"); }

    OpcUa_VariantHlp device = Float(20);
    FakeEnvironment world;
    FakeAddIn addIn{Poll};
    TemporaryFolder folder;
    RunOptions options;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(RunCommand, JsonHasOneObjectPerCycle) {
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(), "");
    auto const lines = OutLines();
    ASSERT_EQ(lines.size(), 3u);
    for (unsigned i = 0; i < 3; ++i) {
        rapidjson::Document document;
        ASSERT_FALSE(document.Parse(lines[i].c_str()).HasParseError());
        EXPECT_EQ(document["cycle"].GetUint(), i + 1);
        EXPECT_STREQ(document["block"].GetString(), "AHU");
        EXPECT_EQ(document["variables"][0]["value"].GetFloat(), 21.5f);
        EXPECT_STREQ(document["variables"][0]["time"].GetString(), "2024-03-15T12:34:56.000+01:00");
    }
}

TEST_F(RunCommand, PrintsPlainLinesWithoutATerminal) {
    options.format = OutputFormat::Auto;
    options.cycles = 2;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    auto const lines = OutLines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].front(), '#');
    EXPECT_NE(lines[2].find("\tAHU\t2\tOK\tT\tanalog-input 1\tpresent-value\t21.5\t"), std::string::npos);
}

TEST_F(RunCommand, AFaultSetsTheExitCodeOnlyWithFailOnFault) {
    addIn.onCycle = Fail;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_NE(out.str().find("\"fault\":true,\"error\":\"No connection\""), std::string::npos);
    options.failOn = {Trouble::Fault};
    EXPECT_EQ(Run(), tools::WorkbenchExit::Fault);
    addIn.onCycle = Poll;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
}

TEST_F(RunCommand, ABlockThatTheDriverDoesNotPollIsAFault) {
    addIn.onCycle = [](FakeDriver&) { logMsg("Error create device for poll\n"); };
    options.failOn = {Trouble::Fault};
    options.cycles = 1;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Fault);
    EXPECT_EQ(err.str(), "2024-03-15T12:34:56.000+01:00 [AHU] Error create device for poll\n");
    EXPECT_NE(out.str().find("\"fault\":true,\"error\":\"not polled\""), std::string::npos);
}

TEST_F(RunCommand, TheTraceIsOnOnlyDuringTheRun) {
    addIn.onCycle = [](FakeDriver& driver) {
        logMsgLn(IsEnableUserTrace() ? "traced" : "not traced");
        Poll(driver);
    };
    options.cycles = 1;
    options.trace = true;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(), "2024-03-15T12:34:56.000+01:00 [AHU] traced\n");
    EXPECT_FALSE(IsEnableUserTrace());
}

TEST_F(RunCommand, TheSummaryMeasuresTheTraffic) {
    addIn.onCycle = [this](FakeDriver& driver) {
        sockaddr_in peer = Address("10.0.0.2", 47808);
        world.Arrives(peer, "answer");
        NLSocket socket{};
        NLInitSocket(&socket);
        char buffer[100];
        NLSendReceive(&socket, &peer, "ask", 3, buffer, sizeof buffer, 1000, 0, 1, 0);
        NLCloseSocket(&socket);
        Poll(driver);
    };
    options.format = OutputFormat::Lines;
    options.summary = true;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_NE(out.str().find("cycles                3\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("objects polled        3  (in cycles without fault)\n"), std::string::npos);
    EXPECT_NE(out.str().find("requests              3\nanswers               3\n"), std::string::npos);
    EXPECT_NE(out.str().find("round trip        0.000 ms median, 0.000 ms maximum\n"), std::string::npos);
}

TEST_F(RunCommand, WithFormatNoneNothingIsOnStandardOutput) {
    addIn.onCycle = [](FakeDriver& driver) { Poll(driver); };
    options.format = OutputFormat::None;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(), "");
    options.summary = true;
    EXPECT_EQ(RunWith("standby off\nset AHU.Temperature = 1\n"), tools::WorkbenchExit::Ok);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find("cycles                3\n"), std::string::npos) << err.str();
    EXPECT_NE(err.str().find("AHU.Temperature"), std::string::npos);
}

TEST_F(RunCommand, TheSummaryIsNotAmongTheJsonLines) {
    addIn.onCycle = [](FakeDriver& driver) { Poll(driver); };
    options.summary = true;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(out.str().find("objects polled"), std::string::npos) << out.str();
    EXPECT_NE(err.str().find("objects polled"), std::string::npos) << err.str();
}

TEST_F(RunCommand, WhatStaysInTheDevicesIsSaidWithoutASummary) {
    MakeWritable();
    std::string variable = Temperature;
    variable.replace(variable.find("analog-input"), 12, "analog-value");
    options.project = folder.Write("held.lua", Block(R"(Name="AHU", Address="1.2.3.4:47808")", variable));
    auto const poll = addIn.onCycle;
    addIn.onCycle = [this, poll](FakeDriver& driver) {
        poll(driver);
        char buffer[100];
        sockaddr_in peer = Address("1.2.3.4", 47808);
        int const handle = dorvel::Environment().Open(0);
        auto const request = Hex("81 0A 00 18 01 04 00 04 01 0F 0C 00800001 19 55 3E 44 41AC0000 3F 49 08");
        dorvel::Environment().Send(handle, peer, request.data(), static_cast<int>(request.size()));
        world.Arrives(peer, std::string("\x81\x0A\x00\x09\x01\x00\x20\x01\x0F", 9));
        dorvel::Environment().Receive(handle, peer, buffer, sizeof buffer, 1000);
    };
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(
        err.str(),
        "warning: still in the device: AHU.T: analog-value 1 present-value = 21.5 at priority 8; release: "
        "WriteProperty analog-value 1 present-value, value Null, priority 8\n");
    err.str("");
    options.summary = false;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(), "") << "--no-summary";
    options.summary = true;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str().find("warning: "), std::string::npos) << "the summary has them";
}

TEST_F(RunCommand, TheCaptureFileIsWritten) {
    addIn.onCycle = [](FakeDriver& driver) {
        sockaddr_in peer = Address("127.0.0.1", 47808);
        NLSocket socket{};
        NLInitSocket(&socket);
        NLSendReceive(&socket, &peer, "ask", 3, nullptr, 0, 1, 0, 0, 0);
        NLCloseSocket(&socket);
        Poll(driver);
    };
    options.captureFile = folder.Write("run.pcap", "");
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    std::ifstream capture(options.captureFile, std::ios::binary);
    std::string const octets{std::istreambuf_iterator<char>(capture), {}};
    EXPECT_EQ(octets.size(), 24u + 3 * (16 + 28 + 3));
}

TEST_F(RunCommand, ACaptureFileThatCannotBeWrittenIsAnError) {
    options.captureFile = folder.Path() + "/no/run.pcap";
    EXPECT_THROW(Run(), std::runtime_error);
    options.captureFile = "/dev/full";
    EXPECT_THROW(Run(), std::runtime_error);
}

TEST_F(RunCommand, AnOutputThatCannotBeWrittenEndsTheRun) {
    options.cycles = 0;
    out.setstate(std::ios::badbit);
    EXPECT_THROW(Run(), std::runtime_error);
}

TEST_F(RunCommand, AnInterruptEndsARunWithoutEnd) {
    std::atomic<int> cycles{0};
    addIn.onCycle = [&cycles](FakeDriver& driver) {
        Poll(driver);
        if (++cycles == 5) {
            raise(SIGINT);
        }
    };
    options.cycles = 0;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_GE(OutLines().size(), 4u);
}

TEST_F(RunCommand, AnInterruptedCycleIsNotAFault) {
    addIn.onCycle = [](FakeDriver&) { raise(SIGINT); };
    options.project = folder.Write("slow.lua", "Task{Name='slow', Period=60000}\n" + OneBlock);
    options.failOn = {Trouble::Fault};
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(out.str(), "");
}

TEST_F(RunCommand, AMistakeIsReportedBeforeAnyOutput) {
    options.project = folder.Write("bad.lua", "BACnet.new{}");
    try {
        Run();
        FAIL();
    } catch (ProjectError const& mistake) {
        EXPECT_NE(std::string(mistake.what()).find("bad.lua:1: block: field \"Name\": missing"),
                  std::string::npos);
    }
    EXPECT_EQ(out.str(), "");
}

TEST_F(RunCommand, AnUnusedParamIsAWarning) {
    options.params = {{"ahuu", "1"}};
    options.cycles = 1;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(), "warning: --define ahuu: the project does not use Param.ahuu\n");
}

TEST_F(RunCommand, AWarningIsALineOfAJsonLog) {
    options.params = {{"ahuu", "1"}};
    options.cycles = 1;
    options.logFormat = LogFormat::Json;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_NE(err.str().find(R"("text":"warning: --define ahuu: the project does not use Param.ahuu"})"),
              std::string::npos)
        << err.str();
    EXPECT_EQ(err.str().front(), '{');
}

TEST_F(RunCommand, AValueFromTheCommandLineIsWritten) {
    MakeWritable();
    options.sets = {"AHU.T=21.5"};
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(States(), "pending pending written written ");
    EXPECT_EQ(device, Float(21.5f));
}

TEST_F(RunCommand, AMistakeOnTheCommandLineEndsTheRunBeforeItBegins) {
    MakeWritable();
    options.sets = {"AHU.t=21.5"};
    try {
        Run();
        FAIL();
    } catch (ProjectError const& mistake) {
        EXPECT_STREQ(mistake.what(),
                     "--set: \"AHU.t\" is not a variable of the project (did you mean \"AHU.T\"?)");
    }
    EXPECT_EQ(out.str(), "");
}

TEST_F(RunCommand, AValueFromTheScriptIsWritten) {
    MakeWritable("Set('AHU.T', 21.5)\n");
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(States(), "pending pending written written ");
}

TEST_F(RunCommand, ValuesFromLinesAreAnsweredInJson) {
    MakeWritable();
    EXPECT_EQ(RunWith("# a remark\n\n set  AHU.T = 1\nset AHU.T = 22\nset AHU.T = x\nwhat\nset\nset "),
              tools::WorkbenchExit::Ok);
    auto const lines = OutLines();
    EXPECT_EQ(lines[0], R"({"set":"AHU.T","state":"pending","value":1})");
    EXPECT_EQ(lines[1], R"({"set":"AHU.T","state":"pending","value":22})");
    EXPECT_NE(lines[2].find(R"("state":"invalid","reason":"\"AHU.T\": \"x\" is not of type Float)"),
              std::string::npos);
    EXPECT_NE(lines[3].find("is not a command; expected set Block.Variable = value"), std::string::npos);
    EXPECT_NE(lines[4].find("is not a command"), std::string::npos);
    EXPECT_NE(lines[5].find("is not of the form Block.Variable = value"), std::string::npos);
    EXPECT_EQ(lines.size(), 6u + 4u);
    EXPECT_EQ(States(), "pending pending written written ");
    EXPECT_EQ(device, Float(22));
    EXPECT_EQ(err.str(), "");
}

TEST_F(RunCommand, ValuesFromLinesAreAnsweredOnStandardErrorWithoutJson) {
    MakeWritable();
    options.format = OutputFormat::Lines;
    EXPECT_EQ(RunWith("set AHU.T = 22\nset AHU.Q = 1\n"), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(),
              "2024-03-15T12:34:56.000+01:00 AHU.T = 22: pending\n"
              "2024-03-15T12:34:56.000+01:00 \"AHU.Q\" is not a variable of the project (did you mean "
              "\"AHU.T\"?)\n");
    auto const lines = OutLines();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_NE(lines[1].find("\t22 pending\t-\t-\t"), std::string::npos) << lines[1];
    EXPECT_NE(lines[3].find("\t22 written\t-\t-\t"), std::string::npos) << lines[3];
}

TEST_F(RunCommand, AStandbyPollsOnlyBlocksThatPollOnTheStandby) {
    std::string const blocks = Block(R"(Name="A", Address="1.2.3.4:47808")") +
                               Block(R"(Name="B", Address="1.2.3.4:47808", ExecuteOnSlave=true)");
    options.project = folder.Write("two.lua", "Task{Name='fast', Period=1}\n" + blocks);
    options.standby = true;
    options.failOn = {Trouble::Fault};
    options.cycles = 1;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_FALSE(dorvel::IsStandby());
    EXPECT_NE(OutLines()[0].find("\"block\":\"A\""), std::string::npos);
    EXPECT_NE(OutLines()[0].find("\"standby\":true"), std::string::npos);
    EXPECT_NE(OutLines()[1].find("\"standby\":false"), std::string::npos);
    EXPECT_NE(OutLines()[1].find("\"value\":21.5"), std::string::npos);
}

TEST_F(RunCommand, LinesSwitchTheStandbyOnAndOff) {
    MakeWritable();
    EXPECT_EQ(RunWith("standby on\nset AHU.T = 22\nstandby maybe\nstandby off\nstandby  on\n"),
              tools::WorkbenchExit::Ok);
    EXPECT_FALSE(dorvel::IsStandby());
    auto const lines = OutLines();
    EXPECT_EQ(lines[0], R"({"standby":true})");
    EXPECT_NE(
        lines[2].find("is not a command; expected set Block.Variable = value, standby on or standby off"),
        std::string::npos);
    EXPECT_EQ(lines[3], R"({"standby":false})");
    EXPECT_EQ(lines[4], R"({"standby":true})");
    EXPECT_EQ(States(), "pending pending pending pending ");
    EXPECT_EQ(device, Float(20));
}

TEST_F(RunCommand, AStandbyWritesOnlyWhereItMay) {
    MakeWritable();
    options.standby = true;
    options.sets = {"AHU.T=22"};
    auto const run = [this](std::string const& fields) {
        std::string variable = Temperature;
        variable.insert(variable.size() - 1, ", Write=true");
        options.project = folder.Write(
            "standby.lua", "Task{Name='fast', Period=1}\n" +
                               Block(R"(Name="AHU", Address="1.2.3.4:47808")" + fields, variable));
        out.str("");
        EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
        return States();
    };
    EXPECT_EQ(run(", ExecuteOnSlave=true"), "pending pending pending pending ");
    EXPECT_NE(out.str().find(R"("reason":"this host is the standby, and WriteOnSlave is not set")"),
              std::string::npos);
    EXPECT_EQ(device, Float(20));
    EXPECT_EQ(run(", ExecuteOnSlave=true, WriteOnSlave=true"), "pending pending written written ");
    EXPECT_EQ(out.str().find("\"reason\""), std::string::npos);
    EXPECT_EQ(device, Float(22));
}

TEST_F(RunCommand, AValueThatStaysPendingCanBeAFailure) {
    MakeWritable();
    options.sets = {"AHU.T=21.5"};
    options.failOn = {Trouble::Refused, Trouble::Pending};
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    options.cycles = 1;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Fault);
}

TEST_F(RunCommand, ACycleThatIsLongerThanThePeriodIsAnOverrun) {
    addIn.onCycle = [this](FakeDriver& driver) {
        world.time += 15000;
        Poll(driver);
    };
    options.failOn = {Trouble::Overrun};
    options.summary = true;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Fault);
    EXPECT_NE(OutLines()[2].find(R"("cycle_ms":{"last":1.5,"median":1.5,"maximum":1.5},"overruns":3)"),
              std::string::npos)
        << OutLines()[2];
    EXPECT_NE(err.str().find("AHU: cycle 1.5 ms median, 1.5 ms maximum, 3 overruns\n"), std::string::npos);
}

TEST_F(RunCommand, TheLogCanBeJson) {
    addIn.onCycle = [](FakeDriver& driver) {
        logMsg("0-1 std::bad_cast\n");
        Poll(driver);
    };
    options.cycles = 1;
    options.logFormat = LogFormat::Json;
    EXPECT_EQ(Run(), tools::WorkbenchExit::Ok);
    EXPECT_EQ(err.str(),
              R"({"time":"2024-03-15T12:34:56.000+01:00","block":"AHU","object":null,"variable":null,)"
              R"("text":"0-1 std::bad_cast"})"
              "\n");
}

TEST_F(RunCommand, AWriteToAnotherPropertyIsAWarning) {
    MakeWritable();
    options.project =
        folder.Write("name.lua", Block(R"(Name="AHU", Address="1.2.3.4:47808")",
                                       "{Name='N', Type='String', ObjectType='analog-value', "
                                       "ObjectProperties='description', ObjectNumber=1, Write=true}"));
    options.cycles = 1;
    Run();
    EXPECT_EQ(err.str(), "warning: AHU.N: the driver reads description and writes to present-value\n");
}

TEST_F(RunCommand, AWriteThatIsAlwaysRefusedIsAWarning) {
    MakeWritable();
    options.project =
        folder.Write("units.lua", Block(R"(Name="AHU", Address="1.2.3.4:47808")",
                                        "{Name='N', Type='Double', ObjectType='analog-value', "
                                        "ObjectProperties='units', ObjectNumber=1, Write=true}"));
    options.cycles = 1;
    Run();
    EXPECT_EQ(
        err.str(),
        "warning: AHU.N: the driver cannot write units of analog-value: every write ends with \"Property "
        "Type not supported\"\n");
}

}  // namespace
