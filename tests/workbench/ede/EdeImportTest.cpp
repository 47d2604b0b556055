#include "EdeImport.h"

#include <gtest/gtest.h>

#include "EdeTexts.h"
#include "ProjectError.h"
#include "TemporaryFolder.h"

using workbench::EdeImport;
using workbench::ImportEde;
using workbench::ProjectError;

namespace {

std::string Rows() {
    return std::string(test::EdeHeadings) + "K;1;A;3;1;;;;;;;;;4\nK;1;B;200;1;;;;;;;;;;\n";
}

}  // namespace

TEST(EdeImport, ReadsTheFilesBesideIt) {
    for (std::string const name : {"plant_EDE.csv", "Plant-ede.CSV", "plant.csv"}) {
        for (std::string const states :
             {"plant_StateTexts.csv", "PLANT-statetexts.txt", "plant_EDE_State Texts.csv"}) {
            test::TemporaryFolder const folder;
            std::string const path = folder.Write(name, Rows());
            folder.Write(states, "4;off;on\n");
            folder.Write("plant_ObjTypes.csv", "200;Meter\n");
            folder.Write("other_StateTexts.csv", "4;wrong;wrong\n");
            EdeImport const import = ImportEde(path);
            EXPECT_EQ(test::LinesOf(import), "") << name << " " << states;
            auto const& objects = import.inventory.devices.at(0).objects;
            EXPECT_EQ(StateTextsOf(objects.at(0)), (std::vector<std::string>{"off", "on"}));
            EXPECT_EQ(objects.at(1).listed.at("object-type-text"), "Meter");
        }
    }
}

TEST(EdeImport, ReadsTheFilesOfTheListWithThisName) {
    for (std::string const name : {"a-1", "a1", "暖", "冷"}) {
        test::TemporaryFolder const folder;
        std::string const path = folder.Write(name + "_EDE.csv", Rows());
        for (std::string const other : {"a-1", "a1", "a_1", "暖", "冷"}) {
            folder.Write(other + "_StateTexts.csv", "4;of " + other + ";on\n");
        }
        auto const devices = ImportEde(path).inventory.devices;
        EXPECT_EQ(StateTextsOf(devices.at(0).objects.at(0)).at(0), "of " + name);
    }
}

TEST(EdeImport, NotesASecondFileOfStateTexts) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("p_EDE.csv", Rows());
    folder.Write("p-StateTexts.csv", "4;off;on\n");
    folder.Write("p_StateTexts.csv", "4;aus;ein\n");
    EXPECT_EQ(test::LinesOf(ImportEde(path)), folder.Path() + "/p_StateTexts.csv: is not read, because " +
                                                  folder.Path() + "/p-StateTexts.csv is\n");
}

TEST(EdeImport, RejectsAFileWithoutPoints) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("x.csv", "a;b\nc;d\n");
    try {
        ImportEde(path);
        FAIL();
    } catch (ProjectError const& error) {
        EXPECT_EQ(error.what(),
                  path +
                      ": no row is a point; a point has a device instance, an object type and an object "
                      "instance in its columns 2, 4 and 5, or in those that the headings name; the first "
                      "mistake is: " +
                      path +
                      ":1: column 2 (device obj.-instance): \"b\" is not an instance; allowed is 0 to "
                      "4194302: row not used");
    }
    EXPECT_THROW(ImportEde(folder.Path() + "/missing_EDE.csv"), ProjectError);
}
