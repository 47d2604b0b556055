// One project for each way to be wrong, and its correct twin.
#include <gtest/gtest.h>

#include <set>

#include "CheckedText.h"

using namespace test;
using namespace workbench;

namespace {

struct Way {
    std::string found;  // as Found has it
    std::string wrong;
    std::string right;
};

// A block with one variable, on line 2, from its complete fields.
std::string One(std::string const& variable, std::string const& fields = Local) {
    return ProjectOf(fields, {variable});
}

std::string Block(std::string const& fields) {
    return One(Variable("V", "Float", "analog-input", 1), fields);
}

std::string Read(char const* type, char const* object, char const* property = "present-value") {
    return One(Variable("V", type, object, 1, property));
}

std::string Write(char const* type, char const* object, char const* property = "present-value",
                  std::string const& fields = Local) {
    return One(Variable("V", type, object, 1, property, ", Write=true"), fields);
}

std::string Two(std::string const& first, std::string const& second) {
    return ProjectOf(Local, {first, second});
}

std::string const Point = Variable("V", "Float", "analog-input", 1);
std::string const Mode = Variable("V", "UInt32", "multi-state-value", 1);
std::string const Start = "Name='V', Type='DataValue', ElementType='Float', ";

std::vector<Way> Mistakes() {
    std::string const good = Block(Local);
    return {
        {"script-error 3  ", good + "x.y = 1", good + "x = 1"},
        {"script-error 1  ", "BACnet.new{", good},
        {"no-block 0  ", "local function make() " + good + " end", good},
        {"wrong-kind 1 B CountRepeat", Block(Local + ", CountRepeat='3'"), Block(Local + ", CountRepeat=3")},
        {"wrong-kind 1 B ExecuteOnSlave", Block(Local + ", ExecuteOnSlave=1"),
         Block(Local + ", ExecuteOnSlave=true")},
        {"wrong-kind 2 B.V Write", One(Point + ", Write=1"), One(Point + ", Write=false")},
        {"wrong-kind 1 B Vars", "BACnet.new{Name='B', " + Local + ", Vars={}}", good},
        {"unreadable-table 1 B Vars", "BACnet.new{Name='B', " + Local + ", Vars={V={" + Point + "}}}", good},
        {"unreadable-table 1  ", "BACnet.new{Name='B', " + Local + ", Vars={[3]={" + Point + "}}}", good},
        {"unnamed-entry 1 B ", Block(Local + ", 5"), good},
        {"unknown-field 1 B Timout", Block(Local + ", Timout=5"), good},
        {"unknown-field 2 B.V ReadId", One(Point + ", ReadId=1"), good},
        {"missing-field 1 B Address", Block("MAC=nil"), good},
        {"missing-field 2 B.V ObjectNumber", One(Start + "ObjectType=1, ObjectProperties=0"),
         One(Start + "ObjectType=1, ObjectProperties=0, ObjectNumber=1")},
        {"empty-text 1 B Task", Block(Local + ", Task=''"), good},
        {"out-of-range 1 B CountRepeat", Block(Local + ", CountRepeat=0"), Block(Local + ", CountRepeat=1")},
        {"out-of-range 1 B Priority", Block(Local + ", Priority=17"), Block(Local + ", Priority=16")},
        {"out-of-range 1 B NetworkNumber", Block(Local + ", NetworkNumber=65536"),
         Block(Local + ", NetworkNumber=65534")},
        {"out-of-range 2 B.V ObjectNumber", One(Variable("V", "Float", "analog-input", 4194303)),
         One(Variable("V", "Float", "analog-input", 4194302))},
        {"bad-address 1 B Address", Block("Address='192.168.1.20'"), Block("Address='192.168.1.20:47808'")},
        {"bad-address 1 B Address", Block("Address='ahu:47808'"), Block("Address='192.168.1.20:47808'")},
        {"bad-address 1 B MAC", Block("Address='192.168.1.20:47808', MAC='10:20:30'"), good},
        {"unknown-name 1 B Task", "Task{Name='air'} " + Block(Local + ", Task='ait'"),
         "Task{Name='air'} " + Block(Local + ", Task='air'")},
        {"unknown-name 2 B.V ObjectType", Read("Float", "analog-inptu"), good},
        {"unknown-name 2 B.V ObjectProperties", Read("Float", "analog-input", "presentt"), good},
        {"unknown-name 2 B.V ElementType", Read("Flaot", "analog-input"), good},
        {"unknown-name 1 B WriteCondition", Block(Local + ", WriteCondition='Allways'"),
         Block(Local + ", WriteCondition='Always'")},
        {"wrong-element-type 2 B.V ElementType",
         One("Name='V', Type='DataValue', ObjectType=1, ObjectProperties=0, ObjectNumber=1"), good},
        {"controller-field 1 B FaultItemId", Block(Local + ", FaultItemId=5"), good},
        {"workbench-field 1 B DeviceInstance", Block(Local + ", DeviceInstance=4194303"),
         Block(Local + ", DeviceInstance=4194302")},
        {"workbench-field 2 B.V Unit", One(Point + ", Unit=62"), One(Point + ", Unit='degrees-celsius'")},
        {"workbench-field 2 B.V StateTexts[2]", One(Mode + ", StateTexts={'off', 5}"),
         One(Mode + ", StateTexts={'off', 'on'}")},
        {"workbench-field 2 B.V Description", One(Point + ", Description=5"),
         One(Point + ", Description='5'")},
        {"workbench-field 2 B.V Point.Cov", One(Point + ", Point={Cov='Y'}"),
         One(Point + ", Point={Cov=true}")},
        {"name-taken 3 B.V Name", Two(Point, Variable("V", "Float", "analog-input", 2)),
         Two(Point, Variable("W", "Float", "analog-input", 2))},
        {"bad-set 1  ", "Set('B.V', 1) " + good, "Set('B.V', 1) " + Write("Float", "analog-value")},
        {"bad-set 1  ", "Set('B.V', 'x') " + Write("Float", "analog-value"),
         "Set('B.V', 5) " + Write("Float", "analog-value")},
    };
}

std::vector<Way> Traps() {
    return {
        {"not-decoded 2 B.V ObjectProperties", Read("Float", "analog-input", "low-limit"),
         Read("Float", "analog-input")},
        {"not-decoded 2 B.V ObjectProperties", Read("Float", "analog-value", "setpoint"),
         Read("Float", "loop", "setpoint")},
        {"lighting-output 2 B.V ObjectType", Read("Float", "lighting-output"),
         Read("Float", "analog-output")},
        {"averaging-present-value 2 B.V ObjectProperties", Read("Float", "averaging"),
         Read("Float", "averaging", "average-value")},
        {"sent-as-other-property 2 B.V ObjectProperties", Read("Float", "analog-value", "blink-warn-enable"),
         Read("UInt32", "analog-value", "units")},
        {"sent-as-other-property 2 B.V ObjectProperties", Read("Float", "analog-value", "power"),
         Read("Float", "analog-value")},
        {"sent-as-other-property 2 B.V ObjectProperties", Read("String", "schedule", "instantaneous-power"),
         Read("String", "schedule", "weekly-schedule")},
        {"sent-as-other-property 2 B.V ObjectProperties", Read("Boolean", "schedule", "is-utc"),
         Read("Boolean", "schedule", "out-of-service")},
        {"duplicate-property 3 B.W ObjectProperties", Two(Point, Variable("W", "Double", "analog-input", 1)),
         Two(Point, Variable("W", "Double", "analog-input", 2))},
        {"misread-feedback 2 B.V ObjectProperties", Read("Float", "binary-output", "feedback-value"),
         Read("Boolean", "binary-input")},
        {"sign-not-read 2 B.V ObjectType", Read("Int32", "integer-value"), Read("Float", "analog-value")},
        {"never-converts 2 B.V ElementType", Read("DateTime", "analog-input"),
         Read("DateTime", "date-value")},
        {"may-not-convert 2 B.V ElementType", Read("Boolean", "analog-input", "description"),
         Read("String", "analog-input", "description")},
        {"may-not-convert 2 B.V ElementType", Read("Byte", "accumulator"), Read("UInt32", "accumulator")},
        {"loses-information 2 B.V ElementType", Read("Boolean", "analog-input", "event-state"),
         Read("UInt32", "analog-input", "event-state")},
        {"loses-information 2 B.V ElementType", Read("Float", "large-analog-value"),
         Read("Double", "large-analog-value")},
        {"count-cut 2 B.V ElementType", Read("UInt64", "positive-integer-value"),
         Read("UInt32", "positive-integer-value")},
        {"no-quality 2 B.V Type",
         One("Name='V', Type='Float', ObjectType=1, ObjectProperties=0, ObjectNumber=1"), One(Point)},
        {"write-refused 2 B.V Write", Write("UInt32", "analog-value", "units"),
         Read("UInt32", "analog-value", "units")},
        {"write-refused 2 B.V Write", Write("String", "octetstring-value"),
         Read("String", "octetstring-value")},
        {"write-other-property 2 B.V Write", Write("Float", "loop", "setpoint"), Write("Float", "loop")},
        {"write-other-property 2 B.V Write", Write("Boolean", "analog-value", "out-of-service"),
         Read("Boolean", "analog-value", "out-of-service")},
        {"write-text 2 B.V Write", Write("String", "analog-value"), Write("Float", "analog-value")},
        {"priority-on-schedule 2 B.V Write",
         Write("String", "schedule", "weekly-schedule", Local + ", Priority=8"),
         Write("String", "schedule", "weekly-schedule")},
    };
}

std::vector<Way> ShownTraps() {
    std::string const fan = Variable("V", "Boolean", "binary-value", 1);
    return {
        {"similar-unit 2 B.V Unit", One(Point + ", Unit='degree-celsius'"),
         One(Point + ", Unit='Degrees Celsius'")},
        {"similar-unit 2 B.V Unit", One(Point + ", Unit='kilowat-hours'"), One(Point + ", Unit='eggs'")},
        {"unit-not-shown 2 B.V Unit", One(Mode + ", Unit='percent'"), One(Point + ", Unit='percent'")},
        {"unit-not-shown 2 B.V Unit",
         One(Variable("V", "String", "analog-input", 1, "description", ", Unit='percent'")), One(Point)},
        {"state-texts-not-shown 2 B.V StateTexts", One(Point + ", StateTexts={'a', 'b'}"),
         One(Mode + ", StateTexts={'a', 'b', 'c'}")},
        {"state-texts-missing 2 B.V StateTexts", One(fan + ", StateTexts={'a'}"),
         One(fan + ", StateTexts={'a', 'b'}")},
        {"state-texts-missing 2 B.V StateTexts", One(fan + ", StateTexts={'a', 'b', 'c'}"), One(fan)},
    };
}

std::vector<Way> BlockTraps() {
    std::string const tasks = "Task{Name='a', Period=10} Task{Name='b'}\n";
    auto const block = [](char const* name, char const* address, char const* task, int object) {
        return std::string("BACnet.new{Name='") + name + "', Address='" + address + "', Task='" + task +
               "', Vars={{" + Variable("V", "Float", "analog-input", object) + "}}}\n";
    };
    char const* const other = "192.168.1.21:47808";
    std::string many;
    for (int i = 1; i <= 20; ++i) {
        many += "{" + Variable(("V" + std::to_string(i)).c_str(), "Float", "analog-input", i) + "},";
    }
    std::string const twenty = "', Address='192.168.1.20:47808', Vars={" + many + "}}";
    return {
        {"mac-missing 1 B NetworkNumber", Block("Address='192.168.1.1:47808', NetworkNumber=5"),
         Block("Address='192.168.1.1:47808', NetworkNumber=5, MAC='10'")},
        {"mac-differs 1 B MAC", Block("Address='192.168.1.20:47808', MAC='192.168.1.2:47808'"), Block(Local)},
        {"broadcast-address 1 B MAC", Block("Address='192.168.1.1:47808', NetworkNumber=5, MAC=''"),
         Block("Address='192.168.1.1:47808', NetworkNumber=5, MAC='0'")},
        {"field-without-effect 1 B Timeout", Block(Local + ", Timeout=5000"), Block(Local)},
        {"field-without-effect 1 B AddressNumber", Block(Local + ", AddressNumber=7"), Block(Local)},
        {"long-silence 1 B CountRepeat", Block(Local + ", CountRepeat=100"),
         Block(Local + ", CountRepeat=60")},
        {"shared-task 3 C Task", tasks + block("B", Device, "a", 1) + block("C", other, "a", 1),
         tasks + block("B", Device, "a", 1) + block("C", other, "b", 1)},
        {"short-period 1  Period", tasks + "BACnet.new{Name='B', Task='a" + twenty,
         tasks + "BACnet.new{Name='B', Task='b" + twenty},
        {"object-polled-twice 3 C.V ObjectNumber",
         tasks + block("B", Device, "a", 1) + block("C", Device, "a", 1),
         tasks + block("B", Device, "a", 1) + block("C", Device, "a", 2)},
        {"similar-names 3 b Name", tasks + block("B", Device, "a", 1) + block("b", Device, "a", 2),
         tasks + block("B", Device, "a", 1) + block("C", Device, "a", 2)},
        {"similar-names 3 B.v Name", Two(Point, Variable("v", "Float", "analog-input", 2)),
         Two(Point, Variable("v 2", "Float", "analog-input", 2))},
    };
}

std::vector<Way> Ways() {
    std::vector<Way> ways = Mistakes();
    for (std::vector<Way> const& more : {Traps(), ShownTraps(), BlockTraps()}) {
        ways.insert(ways.end(), more.begin(), more.end());
    }
    return ways;
}

TEST(EveryFinding, IsFoundAndNothingIsReportedOfItsTwin) {
    for (Way const& way : Ways()) {
        EXPECT_EQ(Found(way.wrong), Lines{way.found}) << way.wrong;
        EXPECT_EQ(Found(way.right), Lines()) << way.right;
    }
}

TEST(EveryFinding, HasAWayToBeWrong) {
    // Of the command line; and of a type whose reading has a finding in any case.
    std::set<std::string> codes = {"unreadable-file", "unused-define", "write-sign"};
    std::vector<Way> const ways = Ways();
    EXPECT_GE(ways.size(), 60u);
    for (Way const& way : ways) {
        codes.insert(way.found.substr(0, way.found.find(' ')));
    }
    for (FindingRow const& row : FindingRows()) {
        EXPECT_EQ(codes.count(row.name), 1u) << row.name;
    }
}

}  // namespace
