#include <rapidjson/document.h>

#include <fstream>
#include <sstream>

#include "DocumentPart.h"
#include "PublishFixture.h"
#include "SetPayload.h"
#include "TopicLevel.h"

using namespace test;
using namespace workbench;

namespace {

constexpr char Folder[] = "dorvel/pc-plant/";

// What the examples of the document are made of, in code, a topic and its payload below one another.
class PublishDocumentTest : public PublishTest {
protected:
    std::string Example(std::string const& topic) const {
        auto const found = broker.retained.find(Folder + topic);
        EXPECT_NE(found, broker.retained.end()) << topic;
        return Line(Folder + topic, found == broker.retained.end() ? "" : found->second);
    }
    static std::string Line(std::string const& topic, std::string const& payload) {
        return "    " + topic + "\n        " + payload + "\n";
    }
    // The answers that have come since the last call.
    std::string Answers() {
        std::string lines;
        for (Message const& message : broker.sent) {
            if (!message.isRetained) {
                lines += Line(message.topic, message.payload);
            }
        }
        broker.sent.clear();
        return lines;
    }
};

TEST_F(PublishDocumentTest, HasTheMessagesOfARun) {
    Connect();
    Run();
    std::string text =
        "\n" + Example("$state") + Example("AHU/$state") + Example("AHU/T") + Example("AHU/Mode");
    isSilent = true;
    suspect = "device: unknown-object";
    Run();
    text += Example("AHU/$state") + Example("AHU/T");
    ExpectInDocument(PUBLISH_DOCUMENT, "json messages", text + "\n");
}

TEST_F(PublishDocumentTest, HasEveryField) {
    std::ostringstream content;
    content << std::ifstream(PUBLISH_DOCUMENT).rdbuf();
    Connect();
    quality = OpcUa_Bad;
    suspect = "device: unknown-object";
    Run();
    Receive("dorvel/pc-plant/AHU/T/set", "30");
    ASSERT_GT(broker.sent.size(), 7U);
    for (Message const& message : broker.sent) {
        rapidjson::Document payload;
        payload.Parse(message.payload.c_str());
        ASSERT_TRUE(payload.IsObject()) << message.payload;
        for (auto const& member : payload.GetObject()) {
            std::string const field = "`" + std::string(member.name.GetString()) + "`";
            EXPECT_NE(content.str().find(field), std::string::npos) << field;
        }
    }
}

TEST_F(PublishDocumentTest, HasTheAnswersToCommands) {
    Settle();
    Receive("dorvel/pc-plant/AHU/T/set", R"({"value":23.5,"id":"a17"})");
    Run(4);
    std::string text = Answers();
    Receive("dorvel/pc-plant/AHU/T/set", "warm");
    Receive("dorvel/pc-plant/AHU/T/set", "24");
    text += Answers();
    ExpectInDocument(PUBLISH_DOCUMENT, "json answers", "\n" + text + "\n");
}

TEST_F(PublishDocumentTest, HasTheLevelsOfNames) {
    std::string table = "\n| Name | Level |\n|---|---|\n";
    for (char const* name : {"Supply air", "Süd.T", "AHU/1", "50 % ~ #1+2", "$state", "a$b"}) {
        table += "| `" + std::string(name) + "` | `" + EscapedLevel(name) + "` |\n";
    }
    table += "| the empty name | `" + EscapedLevel("") + "` |\n";
    table += "| `a`, NUL, `b` | `" + EscapedLevel(std::string("a\0b", 3)) + "` |\n";
    table += "| `Süd` in Latin-1 | `" + EscapedLevel("S\xFC\x64") + "` |\n";
    table +=
        "| 201 times `a` | 150 times `a` and `" + EscapedLevel(std::string(201, 'a')).substr(150) + "` |\n";
    ExpectInDocument(PUBLISH_DOCUMENT, "json levels", table + "\n");
}

TEST_F(PublishDocumentTest, HasTheLimits) {
    std::string const table =
        "\n| Limit | |\n|---|---|\n| Prefix | " + std::to_string(LongestPrefix) +
        " octets |\n| Level of a name | " + std::to_string(LongestLevel) +
        " octets |\n| Payload of a command | " + std::to_string(SetPayload::Longest) +
        " octets |\n| `id` of a command, as JSON | " + std::to_string(SetPayload::LongestId) +
        " octets |\n| Nesting of a command | " + std::to_string(SetPayload::Deepest) +
        " objects or lists |\n| Age of a command, and its distance in the future | " +
        std::to_string(CommandGate::OldestCommand / Second) + " s |\n| Commands of a variable | one in " +
        std::to_string(CommandGate::LeastDistance / Second) +
        " s |\n| Answers that wait while the connection is busy | " +
        std::to_string(JsonPublisher::MostAnswers) + " |\n";
    ExpectInDocument(PUBLISH_DOCUMENT, "json limits", table + "\n");
}

}  // namespace
