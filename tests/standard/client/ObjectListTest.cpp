#include "ObjectList.h"

#include <gtest/gtest.h>

#include <random>

#include "CutOff.h"
#include "ListDevice.h"

using namespace standard;
using std::chrono::milliseconds;
using test::ListDevice;
using test::Reply;
using test::ScriptedLink;

namespace {

constexpr ObjectId Device7{8, 7};
Peer const Device{test::DeviceEndpoint, std::nullopt};

struct Rig {
    ClientSettings settings;
    ObjectListSettings listSettings;
    std::vector<std::pair<std::size_t, std::size_t>> steps;

    ObjectListResult Read(Link& link) {
        Client client(link, settings);
        ObjectListReader reader(client, Device, Device7, listSettings);
        reader.OnProgress([this](std::size_t done, std::size_t length) { steps.emplace_back(done, length); });
        return reader.Read();
    }
};

using Steps = std::vector<std::pair<std::size_t, std::size_t>>;

}  // namespace

TEST(ObjectList, IsReadWholeWhereItFits) {
    ScriptedLink link;
    link.Then(
        {Reply("30 01 0C 0C 02 00 00 07 19 4C 3E C4 02 00 00 07 C4 00 00 00 05 C4 00 00 00 05 21 03 3F")});
    ObjectListResult const result = Rig().Read(link);
    EXPECT_EQ(link.SentApdus(), std::vector<std::string>{"02 75 01 0C 0C 02 00 00 07 19 4C"});
    EXPECT_EQ(result.objects, (std::vector<ObjectId>{Device7, {0, 5}}));
    EXPECT_TRUE(result.isComplete && result.isWhole);
    EXPECT_EQ(result.length, 4u);
    EXPECT_EQ(result.repeated, 1u);
    EXPECT_EQ(result.withoutObject, 1u);
    EXPECT_TRUE(result.reason.empty());
}

TEST(ObjectList, IsReadInSegments) {
    ScriptedLink link;
    link.Then({Reply("3C 01 00 01 0C 0C 02 00 00 07 19 4C 3E C4 02 00 00 07 C4 00")})
        .Then({Reply("38 01 01 01 0C 00 00 05 3F")});
    ObjectListResult const result = Rig().Read(link);
    EXPECT_EQ(link.SentApdus(),
              (std::vector<std::string>{"02 75 01 0C 0C 02 00 00 07 19 4C", "40 01 00 01", "40 01 01 01"}));
    EXPECT_EQ(result.objects, (std::vector<ObjectId>{Device7, {0, 5}}));
    EXPECT_TRUE(result.isComplete && result.isWhole);
}

TEST(ObjectList, IsReadElementByElementWhereItDoesNotFit) {
    ScriptedLink link;
    link.Then({Reply("71 01 04")})
        .Then({Reply("30 02 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 21 02 4F 29 9B 4E 21 09 4F 1F")})
        .Then({Reply(
            "30 03 0E 0C 02 00 00 07 1E 29 4C 39 01 4E C4 02 00 00 07 4F 29 4C 39 02 4E C4 00 00 00 05 "
            "4F 1F")})
        .Then({Reply("30 04 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 21 02 4F 29 9B 4E 21 09 4F 1F")});
    Rig rig;
    ObjectListResult const result = rig.Read(link);
    std::string const stamp = " 0E 0C 02 00 00 07 1E 09 4C 19 00 09 9B 1F";
    EXPECT_EQ(link.SentApdus(),
              (std::vector<std::string>{"02 75 01 0C 0C 02 00 00 07 19 4C", "02 75 02" + stamp,
                                        "02 75 03 0E 0C 02 00 00 07 1E 09 4C 19 01 09 4C 19 02 1F",
                                        "02 75 04" + stamp}));
    EXPECT_EQ(result.objects, (std::vector<ObjectId>{Device7, {0, 5}}));
    EXPECT_TRUE(result.isComplete);
    EXPECT_FALSE(result.isWhole);
    EXPECT_EQ(rig.steps, (Steps{{2, 2}}));
}

TEST(ObjectList, Of500ObjectsOfASmallDeviceTakesFewRequests) {
    ListDevice device(500);
    Rig rig;
    ObjectListResult const result = rig.Read(device);
    EXPECT_TRUE(result.isComplete) << result.reason;
    EXPECT_EQ(result.objects, device.list);
    EXPECT_LE(device.requests, 50u);
    EXPECT_EQ(rig.steps.back(), (Steps::value_type{500, 500}));
}

TEST(ObjectList, OfADeviceWithoutReadPropertyMultipleIsRead) {
    ListDevice device(120);
    device.knowsMultiple = false;
    device.revision.reset();
    device.maxApdu = 50;
    ObjectListResult const result = Rig().Read(device);
    EXPECT_TRUE(result.isComplete) << result.reason;
    EXPECT_EQ(result.objects, device.list);
    EXPECT_LE(device.requests, 120u + 8u);
}

TEST(ObjectList, ThatChangesOnceIsReadAgain) {
    ListDevice device(60);
    device.beforeAnswer = [&] {
        if (device.requests == 4) {
            device.list.push_back({19, 1});
        }
    };
    ObjectListResult const result = Rig().Read(device);
    EXPECT_TRUE(result.isComplete) << result.reason;
    EXPECT_EQ(result.changes, 1u);
    EXPECT_EQ(result.objects, device.list);
}

TEST(ObjectList, ThatChangesWithTheSameLengthIsNoticedByTheRevision) {
    ListDevice device(60);
    device.beforeAnswer = [&] {
        if (device.requests == 4) {
            device.list[1] = {19, 77};
            device.revision = 2;
        }
    };
    ObjectListResult const result = Rig().Read(device);
    EXPECT_TRUE(result.isComplete);
    EXPECT_EQ(result.changes, 1u);
    EXPECT_EQ(result.objects, device.list);
}

TEST(ObjectList, ThatShrinksMeanwhileIsReadAgain) {
    ListDevice device(60);
    device.beforeAnswer = [&] {
        if (device.requests == 4) {
            device.list.resize(20);
        }
    };
    ObjectListResult const result = Rig().Read(device);
    EXPECT_TRUE(result.isComplete) << result.reason;
    EXPECT_EQ(result.objects, device.list);
    EXPECT_EQ(result.length, 20u);
}

TEST(ObjectList, ThatWasShortForAMomentIsReadAgain) {
    ListDevice device(60);
    device.revision.reset();
    std::vector<ObjectId> const whole = device.list;
    device.beforeAnswer = [&] {
        if (device.requests == 4) {
            device.list.resize(20);
        } else if (device.requests == 6) {
            device.list = whole;
        }
    };
    ObjectListResult const result = Rig().Read(device);
    EXPECT_TRUE(result.isComplete) << result.reason;
    EXPECT_EQ(result.objects, whole);
    EXPECT_EQ(result.changes, 1u);
}

TEST(ObjectList, ThatAlwaysChangesIsKeptAsIncomplete) {
    ListDevice device(60);
    device.beforeAnswer = [&] { device.list.push_back({19, static_cast<std::uint32_t>(device.requests)}); };
    ObjectListResult const result = Rig().Read(device);
    EXPECT_FALSE(result.isComplete);
    EXPECT_EQ(result.reason, "the list changed each time that it was read");
    EXPECT_EQ(result.changes, 3u);
    EXPECT_GE(result.objects.size(), 60u);
    EXPECT_LT(device.requests, 60u);
}

TEST(ObjectList, OfADeviceThatFallsSilentIsKept) {
    ListDevice device(200);
    device.isSilent = [&] { return device.requests > 12; };
    Rig rig;
    rig.settings.retries = 0;
    ObjectListResult const result = rig.Read(device);
    EXPECT_FALSE(result.isComplete);
    EXPECT_EQ(result.failure.value().kind, Failure::Kind::Silent);
    EXPECT_EQ(result.length, 200u);
    EXPECT_GT(result.objects.size(), 20u);
    EXPECT_LT(result.objects.size(), 200u);
    EXPECT_EQ(result.reason, "element " + std::to_string(result.objects.size() + 1) + ": no answer");
}

TEST(ObjectList, AStopKeepsWhatWasRead) {
    ListDevice device(200);
    device.stopAfter = 12;
    ObjectListResult const result = Rig().Read(device);
    EXPECT_EQ(result.failure.value().kind, Failure::Kind::Stopped);
    EXPECT_GT(result.objects.size(), 20u);
    EXPECT_LT(result.objects.size(), 200u);
}

TEST(ObjectList, AnElementThatCannotBeReadIsMissing) {
    ListDevice device(60);
    device.unreadableIndex = 17;
    ObjectListResult const result = Rig().Read(device);
    EXPECT_EQ(result.objects.size(), 59u);
    EXPECT_FALSE(result.isComplete);
    EXPECT_EQ(result.reason, "element 17 of the list cannot be read: property: unknown-property");
    EXPECT_FALSE(result.failure);
}

TEST(ObjectList, OfASilentOrWrongDeviceIsAFailure) {
    ScriptedLink silent;
    Rig rig;
    rig.settings.retries = 0;
    ObjectListResult const none = rig.Read(silent);
    EXPECT_EQ(none.reason, "the length of the object list: no answer");
    EXPECT_TRUE(none.objects.empty());
    EXPECT_LE(silent.sent.size(), 4u);
    ScriptedLink other;
    other.Then({Reply("50 01 0C 91 01 91 1F")});
    EXPECT_EQ(rig.Read(other).reason, "the object list: object: unknown-object");
    EXPECT_EQ(other.sent.size(), 1u);
    ScriptedLink text;
    text.Then({Reply("71 01 04")})
        .Then({Reply("30 02 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 91 02 4F 29 9B 4E 21 09 4F 1F")});
    EXPECT_EQ(rig.Read(text).reason,
              "the length of the object list: malformed answer (the length of a list is a number)");
}

TEST(ObjectList, AnElementWithoutAValueIsNoObject) {
    ScriptedLink link;
    link.Then({Reply("71 01 04")})
        .Then({Reply("30 02 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 21 02 4F 29 9B 4E 21 09 4F 1F")})
        .Then({Reply("30 03 0E 0C 02 00 00 07 1E 29 4C 39 01 4E C4 02 00 00 07 4F 29 4C 39 02 4E 4F 1F")})
        .Then({Reply("30 04 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 21 02 4F 29 9B 4E 21 09 4F 1F")});
    ObjectListResult const result = Rig().Read(link);
    EXPECT_EQ(result.objects, std::vector<ObjectId>{Device7});
    EXPECT_EQ(result.withoutObject, 1u);
}

TEST(ObjectList, ALengthOfMoreThan32BitsIsNotTheRestOfIt) {
    std::string const length =
        " 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 25 05 01 00 00 00 00 4F 29 9B 4E 21 09 4F 1F";
    ScriptedLink link;
    link.Then({Reply("71 01 04")})
        .Then({Reply("30 02" + length)})
        .Then({Reply("30 03 0C 0C 02 00 00 07 19 4C 29 01 3E C4 02 00 00 07 3F")})
        .Then({Reply("30 04" + length)});
    Rig rig;
    rig.listSettings.mostObjects = 1;
    ObjectListResult const result = rig.Read(link);
    EXPECT_EQ(result.length, 0xFFFFFFFFu);
    EXPECT_EQ(result.reason, "the list has 4294967295 elements; the first 1 were read");
}

TEST(ObjectList, IsBounded) {
    ListDevice device(300);
    Rig rig;
    rig.listSettings.mostObjects = 100;
    ObjectListResult const elements = rig.Read(device);
    EXPECT_EQ(elements.objects.size(), 100u);
    EXPECT_EQ(elements.length, 300u);
    EXPECT_EQ(elements.reason, "the list has 300 elements; the first 100 were read");
    device.maxApdu = 1 << 16;
    ObjectListResult const whole = rig.Read(device);
    EXPECT_EQ(whole.objects.size(), 100u);
    EXPECT_FALSE(whole.isComplete);
    EXPECT_EQ(whole.reason, "the list has 300 elements; the first 100 objects were read");
}

TEST(ObjectList, AnswersThatAreCutOffAreNoObjects) {
    test::Octets answer = test::Hex("30 01 0C 0C 02 00 00 07 19 4C 3E C4 02 00 00 07 C4 00 00 00 05 3F");
    while (answer.size() > 3) {
        answer.pop_back();
        ScriptedLink link;
        link.Then({{test::Local(answer)}}).Then({Reply("50 02 0E 91 01 91 1F")});
        Rig rig;
        rig.settings.retries = 0;
        ObjectListResult const result = rig.Read(link);
        EXPECT_TRUE(result.objects.empty()) << test::ToHex(answer);
        EXPECT_FALSE(result.isComplete);
    }
}

TEST(ObjectList, RandomAnswersEndWithAResult) {
    std::mt19937 random(17);
    for (int run = 0; run < 300; ++run) {
        ListDevice device(40);
        device.isSilent = [&] {
            std::uint8_t const id = static_cast<std::uint8_t>(device.requests);
            char const* const texts[] = {
                "30 00 0E 0C 02 00 00 07 1E 29 4C 39 00 4E 21 20 4F 29 9B 4E 21 09 4F 1F",
                "30 00 0C 0C 02 00 00 07 19 4C 29 01 3E C4 02 00 00 07 3F", "71 00 04"};
            test::Octets octets = test::RandomOctets(random, texts[random() % 3], 40);
            if (octets.size() > 1) {
                octets[1] = static_cast<char>(id);
            }
            device.Deliver({test::Local(octets), milliseconds(random() % 40), test::DeviceEndpoint});
            return random() % 2 == 0;
        };
        Rig rig;
        rig.settings.retries = 0;
        ObjectListResult const result = rig.Read(device);
        EXPECT_EQ(result.isComplete, result.reason.empty()) << run;
        EXPECT_LE(result.objects.size(), 100000u);
    }
}
