#include "ProjectInventory.h"

#include <gtest/gtest.h>

#include "EdeTexts.h"
#include "EdeWriter.h"
#include "ProjectError.h"
#include "TemporaryFolder.h"

using workbench::InventoryOfProject;
using workbench::ProjectError;
using workbench::WriteEde;

namespace {

std::string Block(std::string const& name, std::string const& fields, std::string const& variables) {
    return "BACnet.new{ Name = \"" + name + "\", Address = \"10.0.0.1:47808\", MAC = \"10.0.0.1:47808\", " +
           fields + " Vars = {\n" + variables + "} }\n";
}

std::string Variable(std::string const& name, std::string const& type, int number,
                     std::string const& fields = "", std::string const& property = "present-value") {
    return "{ Name = \"" + name + "\", Type = \"DataValue\", ElementType = \"Float\", ObjectType = \"" +
           type + "\", ObjectNumber = " + std::to_string(number) + ", ObjectProperties = \"" + property +
           "\", " + fields + " },\n";
}

// The rows of the list of a project.
std::string RowsOf(std::string const& project) {
    test::TemporaryFolder const folder;
    std::string const text = WriteEde(InventoryOfProject(folder.Write("p.lua", project), {}), {}).ede;
    std::size_t const last = text.find("notification-class\r\n");
    return text.substr(last + 20);
}

}  // namespace

TEST(ProjectInventory, HasWhatTheFieldsSay) {
    EXPECT_EQ(
        RowsOf(Block(
            "AHU", "DeviceInstance = 2001,",
            Variable("Temp", "analog-input", 1,
                     "Unit = \"degrees-celsius\", Description = \"Supply\", Point = { KeyName = \"K1\", "
                     "ObjectName = \"AHU'T\", Minimum = -50, Maximum = 150.5, HighLimit = 80, LowLimit = 5, "
                     "Settable = false, Cov = true, NotificationClass = 3, VendorAddress = \"x/1\", Default "
                     "= 21 }") +
                Variable("Mode", "multi-state-output", 2,
                         "StateTexts = {\"off\", \"on\", \"auto\"}, Point = { Default = 2 }") +
                Variable("Fan", "binary-output", 1, "StateTexts = {\"stop\", \"run\"}"))),
        "AHU;2001;AHU;8;2001;;;;;;;;;;;;\r\n"
        "K1;2001;AHU'T;0;1;Supply;21;-50;150.5;N;Y;80;5;;62;x/1;3\r\n"
        "Fan;2001;Fan;4;1;;;;;Y;;;;1;;;\r\n"
        "Mode;2001;Mode;14;2;;2;1;3;Y;;;;2;;;\r\n");
}

TEST(ProjectInventory, HasMoreStatesThanTexts) {
    EXPECT_EQ(
        RowsOf(Block("A", "DeviceInstance = 1,",
                     Variable("M", "multi-state-input", 1, "StateTexts = {\"off\"}, Point = {Maximum = 3}") +
                         Variable("N", "multi-state-input", 2, "Point = {Maximum = 4}") +
                         Variable("O", "multi-state-input", 3,
                                  "StateTexts = {\"off\", \"on\"}, Point = {Maximum = 1}"))),
        "A;1;A;8;1;;;;;;;;;;;;\r\nM;1;M;13;1;;;1;3;N;;;;1;;;\r\nN;1;N;13;2;;;1;4;N;;;;;;;\r\n"
        "O;1;O;13;3;;;1;2;N;;;;2;;;\r\n");
}

TEST(ProjectInventory, HasOneObjectForAllOfItsVariables) {
    EXPECT_EQ(
        RowsOf(Block("A", "DeviceInstance = 1,",
                     Variable("T flags", "analog-input", 1, "", "status-flags") +
                         Variable("T", "analog-input", 1, "Unit = \"furlong\"")) +
               Block("B", "DeviceInstance = 1,", Variable("T limit", "analog-value", 1))),
        "A;1;A;8;1;;;;;;;;;;;;\r\nT;1;T;0;1;;;;;N;;;;;furlong;;\r\nT limit;1;T limit;2;1;;;;;Y;;;;;;;\r\n");
}

TEST(ProjectInventory, NeedsTheInstanceOfEachDevice) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("p.lua", "\n" + Block("AHU", "", Variable("T", "analog-input", 1)));
    try {
        InventoryOfProject(path, {});
        FAIL();
    } catch (ProjectError const& error) {
        EXPECT_EQ(
            std::string(error.what()).substr(std::string(error.what()).find("p.lua")),
            "p.lua:2: block \"AHU\": has no DeviceInstance, by which a point list names its device; add the "
            "instance of the Device object, such as DeviceInstance = 2001");
    }
    EXPECT_THROW(InventoryOfProject(folder.Path() + "/none.lua", {}), ProjectError);
}
