#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Database.h"
#include "FakeEnvironment.h"
#include "RecordReader.h"
#include "RecordTime.h"
#include "Recorder.h"
#include "Snapshots.h"
#include "TemporaryFolder.h"

namespace test {

// Its clock can jump; the monotonic one goes on.
class JumpingWorld : public FakeEnvironment {
public:
    long long Now() override { return time + jump; }
    long long SteadyNow() override { return time; }

    long long jump = 0;
};

// A block with a number, a state and a text, and a recorder whose steps the test takes in virtual time.
class RecordTest : public testing::Test {
protected:
    RecordTest() : path(folder.Path() + "/plant.sqlite"), status("recording", log) {
        dorvel::SetEnvironment(&world);
        world.time = Noon;
        Describe(blocks);
    }
    ~RecordTest() override {
        recorder.reset();
        dorvel::SetEnvironment(nullptr);
    }

    static void Describe(std::deque<workbench::BlockConfig>& described) {
        using namespace workbench;
        described.emplace_back();
        described[0].name = "AHU";
        NameRow const* const value = Properties().FindCode(0);
        described[0].variables = {
            {"T", DataValueOf(OpcUaType_Float), ObjectTypes().FindCode(1), value, 1},
            {"Mode", DataValueOf(OpcUaType_UInt32), ObjectTypes().FindCode(1), value, 2},
            {"Note", OpcUaType_String, ObjectTypes().FindCode(1), Properties().FindCode(28), 1}};
        described[0].variables[0].unit = "degrees-celsius";
        described[0].variables[0].description = "Supply";
        described[0].variables[1].stateTexts = {"off", "on"};
    }

    void Begin() {
        recorder = std::make_unique<workbench::Recorder>(
            path, limits, workbench::RecordWriter::Run{"1.2.3", "p.lua", blocks, tasks}, events, status);
    }

    // A cycle at the time of the world.
    void Cycle(double number, std::string const& note = "as built", OpcUa_StatusCode quality = OpcUa_Good) {
        auto block = std::make_shared<workbench::BlockSnapshot>();
        block->config = &blocks[0];
        block->cycle = 1;
        block->isReported = true;
        block->time = world.Now();
        block->isStandby = isStandby;
        block->variables = {
            {&blocks[0].variables[0], {Float(static_cast<float>(number)), quality, world.time}},
            {&blocks[0].variables[1], {{}, OpcUa_Good, world.time}},
            {&blocks[0].variables[2], {Text(note), OpcUa_Good, world.time}}};
        block->variables[1].state.Value.SetUInt(2);
        events.Follow(block);
        recorder->Queue().Add(block);
    }
    void CycleAndStep(double number, std::string const& note = "as built") {
        Cycle(number, note);
        recorder->Step();
    }
    void Pass(long long seconds) { world.time += seconds * Second; }

    // Rows of a variable as "SECOND VALUE QUALITY", in seconds after noon.
    std::vector<std::string> Rows(std::string const& name, long long from = -1000000,
                                  long long to = 1000000) {
        workbench::RecordReader reader(path);
        std::vector<std::string> rows;
        long long const noon = workbench::RecordTime(Noon);
        reader.Read(reader.Find("AHU", name), noon + from * 1000, noon + to * 1000,
                    [&](workbench::RecordRow const& row) {
                        std::string value = row.isText ? row.text : std::to_string(row.number).substr(0, 4);
                        rows.push_back(std::to_string((row.time - noon) / 1000) + " " + value + " " +
                                       "gub"[static_cast<int>(row.quality)]);
                        return true;
                    });
        return rows;
    }

    long long NumberIn(std::string const& query) {
        workbench::Database database(path, workbench::Database::Access::Read, 1000);
        return database.Number(query);
    }
    std::string TextIn(std::string const& query) {
        workbench::Database database(path, workbench::Database::Access::Read, 1000);
        return database.Text(query);
    }
    std::string BeginMistake() {
        try {
            Begin();
        } catch (std::runtime_error const& mistake) {
            return mistake.what();
        }
        return "began";
    }

    TemporaryFolder folder;
    std::string path;
    JumpingWorld world;
    workbench::LogBuffer log{nullptr};
    std::deque<workbench::BlockConfig> blocks;
    std::vector<workbench::TaskConfig> tasks;
    workbench::EventList events;
    workbench::OutletStatus status;
    workbench::RecordLimits limits;
    std::unique_ptr<workbench::Recorder> recorder;
    bool isStandby = false;
};

using Lines = std::vector<std::string>;

}  // namespace test
