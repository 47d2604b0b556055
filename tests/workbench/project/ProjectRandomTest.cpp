#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "ProjectChecks.h"
#include "Projects.h"

using namespace test;
using namespace workbench;
using tools::ScriptValue;

namespace {

// The message is one line that begins with start.
void ExpectMessage(std::string const& message, std::string const& start) {
    EXPECT_EQ(message.compare(0, start.size(), start), 0) << message;
    for (unsigned char const c : message) {
        EXPECT_GE(c, 0x20) << message;
    }
}

std::string const Project =
    "Task{ Name=\"air\", Period=1000 }\n"
    "local n = 3\n"
    "AHU = BACnet.new{ Name=\"AHU\", Task=\"air\", Address=Param.ahu or \"192.168.1.20:47808\",\n"
    "  MAC=\"10:20\", NetworkNumber=5, CountRepeat=n, Vars={\n  " +
    Temperature + ",\n  {Name=\"W\", Type=12, ObjectType=22, ObjectProperties=30, ObjectNumber=1} } }\n";

// The project with octets changed, removed, inserted and copied.
std::string Mutation(std::mt19937& random) {
    static std::string const pieces = "{}[]()=,\"'.:-+#\\\n 0123456789abcxyzNTVARS\xFF\x1B";
    std::string text = Project;
    for (unsigned changes = 1 + random() % 6; changes > 0; --changes) {
        std::size_t const place = random() % text.size();
        switch (random() % 4) {
            case 0:
                text[place] = pieces[random() % pieces.size()];
                break;
            case 1:
                text.erase(place, 1 + random() % 8);
                break;
            case 2:
                text.insert(place, 1, pieces[random() % pieces.size()]);
                break;
            default:
                text.insert(place, text.substr(random() % text.size(), random() % 24));
        }
        if (text.empty()) {
            text = " ";
        }
    }
    return text;
}

TEST(ProjectRandom, ChangedTextsEndInAMessageOrLoad) {
    FakeAddIn addIn;
    std::mt19937 random(2024);
    int loaded = 0;
    for (int i = 0; i < 4000; ++i) {
        std::string const text = Mutation(random);
        std::string const message = MistakeIn(text, {}, QuickLimits());
        if (message == "loaded") {
            ++loaded;
        } else {
            ExpectMessage(message, "p.lua:");
        }
    }
    EXPECT_GT(loaded, 40);
    EXPECT_LT(loaded, 3960);
}

class RandomTables {
public:
    explicit RandomTables(unsigned seed) : random(seed) {}

    ScriptValue Block() {
        ScriptValue block = Table();
        Put(block, "Name", ScriptValue::OfText("A" + std::to_string(random() % 5)));
        Put(block, "Address", ScriptValue::OfText("1.2.3.4:5"));
        Put(block, "CountRepeat", ScriptValue::OfInteger(3));
        ScriptValue list = Table();
        for (unsigned count = 1 + random() % 3; count > 0; --count) {
            list.list.push_back(Variable());
        }
        Put(block, "Vars", list);
        return block;
    }

private:
    static ScriptValue Table() {
        ScriptValue table;
        table.type = ScriptValue::Type::Table;
        return table;
    }

    ScriptValue Variable() {
        ScriptValue variable = Table();
        Put(variable, "Name", ScriptValue::OfText("V" + std::to_string(random() % 50)));
        Put(variable, "Type", ScriptValue::OfText("Float"));
        Put(variable, "ObjectType", ScriptValue::OfText("analog value"));
        Put(variable, "ObjectProperties", ScriptValue::OfInteger(random() % 38));
        Put(variable, "ObjectNumber", ScriptValue::OfInteger(random() % 4194304));
        return variable;
    }

    std::string AnyText() { return std::string(random() % 100, static_cast<char>(random())); }

    // Now and then the value is another one, it has another name or none, or the field is left out.
    void Put(ScriptValue& table, char const* name, ScriptValue const& value) {
        switch (random() % 60) {
            case 0:
                break;
            case 1:
                table.fields.push_back({AnyText(), value});
                break;
            case 2:
                table.fields.push_back({name, Any(2)});
                break;
            case 3:
                table.list.push_back(value);
                break;
            default:
                table.fields.push_back({name, value});
        }
    }

    ScriptValue Any(int depth) {
        switch (random() % 8) {
            case 0:
                return {};
            case 1:
                return ScriptValue::OfBoolean(random() % 2 == 0);
            case 2:
                return ScriptValue::OfInteger(
                    static_cast<std::int64_t>((static_cast<std::uint64_t>(random()) << 32) | random()));
            case 3:
                return ScriptValue::OfNumber(static_cast<double>(random()) /
                                             static_cast<double>(random() % 3));
            case 4:
                return ScriptValue::OfText(AnyText());
            case 5: {
                ScriptValue other;
                other.type = ScriptValue::Type::Other;
                other.text = "function";
                return other;
            }
            default:
                break;
        }
        ScriptValue table = Table();
        for (unsigned count = depth > 0 ? random() % 4 : 0; count > 0; --count) {
            if (random() % 2 == 0) {
                table.list.push_back(Any(depth - 1));
            } else {
                table.fields.push_back({AnyText(), Any(depth - 1)});
            }
        }
        return table;
    }

    std::mt19937 random;
};

TEST(ProjectRandom, TablesEndInAMessageOrABlockWithinItsLimits) {
    RandomTables tables(77);
    int good = 0;
    for (int i = 0; i < 10000; ++i) {
        Findings mistakes;
        BlockConfig const block = CheckBlock(tables.Block(), {}, mistakes);
        for (VariableConfig const& variable : block.variables) {
            EXPECT_FALSE(variable.name.empty());
            EXPECT_NE(variable.type.Type, OpcUaType_Null);
            ASSERT_NE(variable.objectType, nullptr);
            ASSERT_NE(variable.property, nullptr);
            EXPECT_GE(variable.objectNumber, 0);
            EXPECT_LE(variable.objectNumber, 4194302);
        }
        for (Finding const& mistake : mistakes) {
            ExpectMessage(mistake.Text(), "block");
        }
        if (mistakes.empty()) {
            ++good;
            EXPECT_FALSE(block.name.empty() || block.address.empty() || block.variables.empty());
        }
    }
    EXPECT_GT(good, 1000);
    EXPECT_LT(good, 9900);
}

}  // namespace
