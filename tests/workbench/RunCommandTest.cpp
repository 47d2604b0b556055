#include "RunCommand.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "ExitCode.h"
#include "FakeEnvironment.h"
#include "Projects.h"
#include "dorvelshare/NLSocket.h"
#include "dorvelshare/Trace.h"

using namespace test;
using namespace workbench;

namespace {

// A run from project file to output, with the fake driver and a scripted world.
class RunCommand : public testing::Test {
protected:
    void SetUp() override {
        folder = testing::TempDir() + "workbench-test-XXXXXX";
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        options.Project = Write("project.lua", "Task{Name='fast', Period=1}\n" + OneBlock);
        options.Format = OutputFormat::Json;
        options.Cycles = 3;
        world.time = 133549760960000000LL;
        dorvel::SetEnvironment(&world);
    }
    void TearDown() override {
        EXPECT_EQ(&dorvel::Environment(), &world);
        dorvel::SetEnvironment(nullptr);
        for (std::string const& file : files) {
            std::remove(file.c_str());
        }
        rmdir(folder.c_str());
    }

    std::string Write(std::string const& name, std::string const& text) {
        files.push_back(folder + "/" + name);
        std::ofstream(files.back()) << text;
        return files.back();
    }

    int Run() { return RunProject(options, {out, err, false, false}); }

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
        driver.Tell(false, "");
    }
    static void Fail(FakeDriver& driver) { driver.Tell(true, "No connection"); }

    FakeEnvironment world;
    FakeAddIn addIn{Poll};
    std::string folder;
    std::vector<std::string> files;
    Options options;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(RunCommand, AnObjectALineForEveryCycle) {
    EXPECT_EQ(Run(), ExitOk);
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

TEST_F(RunCommand, PlainLinesWhenThereIsNoTerminal) {
    options.Format = OutputFormat::Auto;
    options.Cycles = 2;
    EXPECT_EQ(Run(), ExitOk);
    auto const lines = OutLines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].front(), '#');
    EXPECT_NE(lines[2].find("\tAHU\t2\tOK\tT\tanalog-input 1\tpresent-value\t21.5\t"), std::string::npos);
}

TEST_F(RunCommand, FaultsAreShownAndCountOnlyWhenAskedFor) {
    addIn.OnCycle = Fail;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_NE(out.str().find("\"fault\":true,\"error\":\"No connection\""), std::string::npos);
    options.FailOnFault = true;
    EXPECT_EQ(Run(), ExitFault);
    addIn.OnCycle = Poll;
    EXPECT_EQ(Run(), ExitOk);
}

TEST_F(RunCommand, ABlockThatTheDriverDoesNotPollIsAFault) {
    addIn.OnCycle = [](FakeDriver&) { logMsg("Error create device for poll\n"); };
    options.FailOnFault = true;
    options.Cycles = 1;
    EXPECT_EQ(Run(), ExitFault);
    EXPECT_EQ(err.str(), "Error create device for poll\n");
    EXPECT_NE(out.str().find("\"fault\":true,\"error\":\"not polled\""), std::string::npos);
}

TEST_F(RunCommand, TheTraceIsOnForTheRunAlone) {
    addIn.OnCycle = [](FakeDriver& driver) {
        logMsgLn(IsEnableUserTrace() ? "traced" : "not traced");
        Poll(driver);
    };
    options.Cycles = 1;
    options.Trace = true;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_EQ(err.str(), "traced\n");
    EXPECT_FALSE(IsEnableUserTrace());
}

TEST_F(RunCommand, TheSummaryMeasuresTheTraffic) {
    addIn.OnCycle = [this](FakeDriver& driver) {
        sockaddr_in peer = Address("10.0.0.2", 47808);
        world.Arrives(peer, "answer");
        NLSocket socket{};
        NLInitSocket(&socket);
        char buffer[100];
        NLSendReceive(&socket, &peer, "ask", 3, buffer, sizeof buffer, 1000, 0, 1, 0);
        NLCloseSocket(&socket);
        Poll(driver);
    };
    options.Format = OutputFormat::Lines;
    options.Summary = true;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_NE(out.str().find("cycles                3\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("objects polled        3  (in cycles without fault)\n"), std::string::npos);
    EXPECT_NE(out.str().find("requests              3\nanswers               3\n"), std::string::npos);
    EXPECT_NE(out.str().find("round trip        0.000 ms median, 0.000 ms maximum\n"), std::string::npos);
}

TEST_F(RunCommand, TheSummaryStaysOutOfTheJsonLines) {
    addIn.OnCycle = [this](FakeDriver& driver) { Poll(driver); };
    options.Summary = true;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_EQ(out.str().find("objects polled"), std::string::npos) << out.str();
    EXPECT_NE(err.str().find("objects polled"), std::string::npos) << err.str();
}

TEST_F(RunCommand, TheCaptureFileIsWritten) {
    addIn.OnCycle = [](FakeDriver& driver) {
        sockaddr_in peer = Address("127.0.0.1", 47808);
        NLSocket socket{};
        NLInitSocket(&socket);
        NLSendReceive(&socket, &peer, "ask", 3, nullptr, 0, 1, 0, 0, 0);
        NLCloseSocket(&socket);
        Poll(driver);
    };
    options.CaptureFile = Write("run.pcap", "");
    EXPECT_EQ(Run(), ExitOk);
    std::ifstream capture(options.CaptureFile, std::ios::binary);
    std::string const octets{std::istreambuf_iterator<char>(capture), {}};
    EXPECT_EQ(octets.size(), 24u + 3 * (16 + 28 + 3));
}

TEST_F(RunCommand, ACaptureFileThatCannotBeWritten) {
    options.CaptureFile = folder + "/no/run.pcap";
    EXPECT_THROW(Run(), std::runtime_error);
    options.CaptureFile = "/dev/full";
    EXPECT_THROW(Run(), std::runtime_error);
}

TEST_F(RunCommand, AnOutputThatTakesNothingEndsTheRun) {
    options.Cycles = 0;
    out.setstate(std::ios::badbit);
    EXPECT_THROW(Run(), std::runtime_error);
}

TEST_F(RunCommand, AnInterruptEndsARunWithoutEnd) {
    std::atomic<int> cycles{0};
    addIn.OnCycle = [&cycles](FakeDriver& driver) {
        Poll(driver);
        if (++cycles == 5) {
            raise(SIGINT);
        }
    };
    options.Cycles = 0;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_GE(OutLines().size(), 4u);
}

TEST_F(RunCommand, ACycleThatAnInterruptCutsShortIsNoFault) {
    addIn.OnCycle = [](FakeDriver&) { raise(SIGINT); };
    options.Project = Write("slow.lua", "Task{Name='slow', Period=60000}\n" + OneBlock);
    options.FailOnFault = true;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_EQ(out.str(), "");
}

TEST_F(RunCommand, MistakesComeBeforeAnyOutput) {
    options.Project = Write("bad.lua", "BACnet.new{}");
    try {
        Run();
        FAIL();
    } catch (ProjectError const& mistake) {
        EXPECT_NE(std::string(mistake.what()).find("bad.lua:1: block: field \"Name\": missing"),
                  std::string::npos);
    }
    EXPECT_EQ(out.str(), "");
}

TEST_F(RunCommand, ParamsThatNobodyAsksForAreAWarning) {
    options.Params = {{"ahuu", "1"}};
    options.Cycles = 1;
    EXPECT_EQ(Run(), ExitOk);
    EXPECT_EQ(err.str(), "warning: the project does not ask for Param.ahuu\n");
}

TEST_F(RunCommand, CheckTellsWhatThereIs) {
    addIn.OnCycle = [](FakeDriver&) { FAIL() << "polled"; };
    EXPECT_EQ(CheckProject(options, {out, err, false, false}), ExitOk);
    EXPECT_EQ(out.str(), options.Project + ": no mistake (blocks: 1, variables: 1, tasks: 1)\n");
}

}  // namespace
