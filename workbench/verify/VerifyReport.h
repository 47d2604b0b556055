#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "Judge.h"
#include "Project.h"
#include "Verdict.h"

namespace workbench {

// The result of a run, from which every format is made. Texts from devices and projects are as they came:
// each format makes them safe.

struct PointResult {
    VariableConfig const* variable = nullptr;
    std::string objectName;  // what the device says of its object
    std::string description;
    std::string units;        // in words
    std::string stateText;    // of the device's present value
    std::string reliability;  // in words; empty without a fault
    std::string driverValue;  // in words; "-" without one
    std::string quality;      // of the driver's value, in words
    OpcUa_VariantHlp driverVariant;
    std::string deviceValue;  // in words; "-" without one
    std::string datatype;     // of the device's value
    Judgement judgement;
    std::vector<Remark> remarks;
    // How many of the rounds that compared the point ended in each verdict.
    std::map<Verdict, unsigned long long> rounds;
};

// What is said of a block as a whole.
struct BlockNote {
    bool isFinding = false;
    std::string text;
};

// The Device object that answers a block's requests. Empty texts were not answered.
struct DeviceIdentity {
    bool isKnown = false;
    unsigned instance = 0;
    std::string name;
    std::string vendor;
    std::string vendorId;
    std::string model;
    std::string firmware;
    std::string software;
    std::string protocolRevision;
    std::string answersFrom;  // the endpoint, and network and address behind a router
    bool lacksReadPropertyMultiple = false;
};

struct BlockResult {
    BlockConfig const* block = nullptr;
    std::string reachedAt;  // "127.0.0.1:47808", "127.0.0.1:47808, network 5, address 0A14"
    DeviceIdentity device;
    unsigned long long rounds = 0;  // throughout which the device answered
    std::vector<BlockNote> notes;
    std::vector<PointResult> points;
};

struct VerifyReport {
    std::string title;
    std::string project;
    std::string version;
    std::string addIn;
    long long begun = 0;  // file times
    long long ended = 0;
    long long localDiff = 0;
    unsigned long long rounds = 0;  // done, and all devices answered throughout
    unsigned long long roundsRequested = 1;
    bool isInterrupted = false;
    std::vector<BlockResult> blocks;
};

// The figures of a summary.
struct VerifyFigures {
    std::size_t blocks = 0;
    std::size_t points = 0;
    std::size_t findings = 0;  // points with a finding, and findings of blocks
    std::map<Verdict, std::size_t> verdicts;
    std::map<Remark, std::size_t> remarks;
};

VerifyFigures FiguresOf(VerifyReport const& report);
bool IsFinding(PointResult const& point);
std::size_t FindingsOf(BlockResult const& block);

// Takes the result of one more round into that of all. A verdict that is a finding stays, and one that says
// something of the point stays before silence; otherwise the latest counts.
void AddRound(PointResult& all, PointResult const& round);
// What explains the verdict; of a finding that not every round had also how many had which:
// "no answer; device silent in 2 of 20 rounds, agrees in 18".
std::string ExplanationText(PointResult const& point);

// "analog-input 1", and the property unless it is the present value: "analog-input 1 units".
std::string PointText(VariableConfig const& variable);
// "device 1001 "AHU-1", vendor, model, firmware 1.0"; "the device has not identified itself".
std::string IdentityText(DeviceIdentity const& device);
// "76 points in 4 blocks: 75 agrees, 1 moving; no findings".
std::string SummaryText(VerifyReport const& report);

}  // namespace workbench
