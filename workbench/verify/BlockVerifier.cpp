#include "BlockVerifier.h"

#include <algorithm>
#include <utility>

#include "BlockAddress.h"
#include "DatumText.h"
#include "DeviceAnswer.h"
#include "Identification.h"
#include "PropertyId.h"
#include "QualityText.h"
#include "ShownValue.h"
#include "Snapshot.h"

namespace workbench {

namespace {

using standard::PropertyId;

// A comparison is repeated so often while it has a finding that a moving value can explain.
constexpr int MostAttempts = 3;

constexpr PropertyId Descriptions[] = {PropertyId::Object_Name, PropertyId::Description,
                                       PropertyId::Units,       PropertyId::State_Text,
                                       PropertyId::Active_Text, PropertyId::Inactive_Text};
constexpr PropertyId Conditions[] = {PropertyId::Status_Flags, PropertyId::Reliability,
                                     PropertyId::Out_Of_Service};

standard::PropertyReference Reference(standard::ObjectId object, PropertyId property) {
    return {object, static_cast<std::uint32_t>(property), std::nullopt};
}

bool IsPresentValue(standard::PropertyReference const& reference) {
    return reference.property == static_cast<std::uint32_t>(PropertyId::Present_Value);
}

}  // namespace

BlockVerifier::BlockVerifier(BlockConfig const& verifiedBlock, standard::Client& client,
                             DriverPoll& driverPoll, long long localDiff, Progress progress)
    : block(verifiedBlock),
      device(client, PeerOf(verifiedBlock)),
      poll(driverPoll),
      report(std::move(progress)),
      objects(PolledObjects(verifiedBlock)),
      facts(FactsOf(verifiedBlock, localDiff)),
      states(objects.size()),
      objectOf(verifiedBlock.variables.size()) {
    result.block = &block;
    result.reachedAt = PeerText(device.Device());
    for (VariableConfig const& variable : block.variables) {
        PointResult point;
        point.variable = &variable;
        point.driverValue = point.deviceValue = "-";
        result.points.push_back(point);
    }
    for (std::size_t object = 0; object < objects.size(); ++object) {
        for (std::size_t const point : objects[object].points) {
            objectOf[point] = object;
        }
    }
}

BlockResult const& BlockVerifier::Result() {
    result.notes = NotesOf(device, result.device);
    result.rounds = device.Rounds() - device.RoundsGivenUp();
    return result;
}

bool BlockVerifier::Describe() {
    if (!report("device", 0, objects.size())) {
        return false;
    }
    result.device = Identify(device);
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (!report("objects", i, objects.size())) {
            return false;
        }
        DescribeObject(objects[i]);
    }
    isDescribed = !device.GivenUp();
    return true;
}

void BlockVerifier::DescribeObject(ObjectPoints const& object) {
    std::vector<standard::PropertyReference> references;
    for (PropertyId const property : Descriptions) {
        references.push_back(Reference(object.object, property));
    }
    std::vector<DeviceAnswerTime> const answers = device.Read(references);
    auto const words = [&answers](std::size_t i) { return WordsOf(answers[i].result); };
    for (std::size_t const i : object.points) {
        result.points[i].objectName = words(0);
        result.points[i].description = words(1);
        result.points[i].units = IsPresentValue(ReferenceOf(i)) ? words(2) : std::string();
    }
    States& state = states[objectOf[object.points.front()]];
    for (standard::Datum const& text : answers[3].result.values) {
        state.multiState.push_back(standard::DatumText(text));
    }
    state.active = words(4);
    state.inactive = words(5);
}

bool BlockVerifier::Round() {
    device.BeginRound();
    bool const goesOn = CompareAll();
    Merge();
    return goesOn && (isDescribed || device.GivenUp() || Describe());
}

bool BlockVerifier::CompareAll() {
    round = result.points;
    for (PointResult& point : round) {
        point.judgement = {};
    }
    std::set<std::size_t> which;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        which.insert(i);
    }
    bool goesOn = true;
    for (int attempt = 0; attempt < MostAttempts && goesOn && !which.empty(); ++attempt) {
        Readings before;
        Readings after;
        goesOn = ReadAll(which, "before the driver", false, before) &&
                 report("driver", objects.size() - which.size(), objects.size());
        if (goesOn && device.GivenUp()) {
            poll.Skip(block, "the driver was not called: the device has stopped answering");
        } else if (goesOn) {
            poll.Cycle(block);
        }
        goesOn = goesOn && ReadAll(which, "after the driver", true, after);
        std::set<std::size_t> again;
        for (std::size_t const i : which) {
            if (goesOn) {
                Judge(objects[i], before, after);
            }
        }
        for (std::size_t const i : which) {
            if (goesOn && !device.GivenUp() && IsWorthAgain(objects[i])) {
                again.insert(i);
            }
        }
        which = std::move(again);
    }
    return goesOn;
}

bool BlockVerifier::ReadAll(std::set<std::size_t> const& which, char const* step, bool withFlags,
                            Readings& readings) {
    std::size_t done = objects.size() - which.size();
    for (std::size_t const i : which) {
        if (!report(step, done++, objects.size())) {
            return false;
        }
        std::set<standard::PropertyReference> references;
        for (std::size_t const point : objects[i].points) {
            references.insert(ReferenceOf(point));
        }
        for (PropertyId const property : Conditions) {
            if (withFlags) {
                references.insert(Reference(objects[i].object, property));
            }
        }
        for (DeviceAnswerTime const& answer : device.Read({references.begin(), references.end()})) {
            readings[answer.result.reference] = ReadingOf(answer.result, answer.elapsed);
        }
    }
    return report(step, objects.size(), objects.size());
}

void BlockVerifier::Judge(ObjectPoints const& object, Readings& before, Readings& after) {
    auto const condition = [&](PropertyId property) {
        return after[Reference(object.object, property)].value;
    };
    auto const flags = condition(PropertyId::Status_Flags);
    auto const outOfService = condition(PropertyId::Out_Of_Service);
    std::vector<Remark> remarks = flags ? RemarksOfFlags(flags->text) : std::vector<Remark>();
    if (!flags && outOfService && outOfService->number != 0) {
        remarks.push_back(Remark::NotInService);
    }
    auto const reliability = condition(PropertyId::Reliability);
    for (std::size_t const i : object.points) {
        standard::PropertyReference const reference = ReferenceOf(i);
        round[i].reliability = reliability && reliability->number != 0 ? reliability->shown : std::string();
        JudgePoint(i, before[reference], after[reference], remarks);
    }
}

void BlockVerifier::JudgePoint(std::size_t index, DeviceReading const& before, DeviceReading const& after,
                               std::vector<Remark> remarks) {
    PointResult& point = round[index];
    PointFacts const& fact = facts[index];
    DriverReading const driver = poll.Reading(*point.variable);
    point.judgement = workbench::Judge(fact, driver, before, after);
    point.driverVariant = driver.state.Value;
    point.driverValue = ShownValue(*point.variable, driver.state.Value, fact.localDiff);
    bool const hasValue = driver.state.Value.GetType() != OpcUaType_Null;
    point.quality = hasValue ? QualityText(driver.state.Status) : std::string();
    std::optional<DeviceValue> const& value = after.value ? after.value : before.value;
    point.deviceValue = value ? value->shown : "-";
    point.datatype = value ? KindName(value->kind) : "";
    point.stateText = value ? StateText(index, *value) : std::string();
    if (value && fact.type == PropertyTypeEnum::Time && value->time[3] != 0 && !HasUnspecified(*value)) {
        remarks.push_back(Remark::HundredthsAsTenths);
    }
    if (value && fact.type == PropertyTypeEnum::Date_Time && fact.localDiff != 0) {
        remarks.push_back(Remark::LocalTime);
    }
    point.remarks = std::move(remarks);
}

// The object at which the poll ended explains a fault by itself: an error of the device, or its silence.
bool BlockVerifier::IsCauseOfFault(std::size_t index) const {
    Verdict const verdict = round[index].judgement.verdict;
    return facts[index].object == poll.Outcome().pollEndedAt && verdict != Verdict::NoValue &&
           verdict != Verdict::Late && RowOf(verdict).isFinding;
}

bool BlockVerifier::IsWorthAgain(ObjectPoints const& object) const {
    bool isExplained = false;
    for (std::size_t i = 0; i < round.size(); ++i) {
        isExplained = isExplained || IsCauseOfFault(i);
    }
    bool const isOpenFault = poll.Outcome().fault && !isExplained;
    return std::any_of(object.points.begin(), object.points.end(), [&](std::size_t i) {
        Verdict const verdict = round[i].judgement.verdict;
        return verdict == Verdict::Differs ||
               (isOpenFault && (verdict == Verdict::NoValue || verdict == Verdict::Late));
    });
}

std::string BlockVerifier::StateText(std::size_t index, DeviceValue const& value) const {
    States const& state = states[objectOf[index]];
    if (!IsPresentValue(ReferenceOf(index))) {
        return {};
    }
    if (value.kind == DeviceKind::Unsigned && value.number >= 1 && value.number <= state.multiState.size()) {
        return state.multiState[value.number - 1];
    }
    return value.kind != DeviceKind::Enumerated ? std::string()
           : value.number != 0                  ? state.active
                                                : state.inactive;
}

standard::PropertyReference BlockVerifier::ReferenceOf(std::size_t index) const {
    return {objects[objectOf[index]].object,
            static_cast<std::uint32_t>(block.variables[index].property->bacnetNumber), std::nullopt};
}

void BlockVerifier::Merge() {
    for (std::size_t i = 0; i < round.size(); ++i) {
        AddRound(result.points[i], round[i]);
    }
}

}  // namespace workbench
