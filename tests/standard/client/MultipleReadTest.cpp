#include "MultipleRead.h"

#include <gtest/gtest.h>

#include "Client.h"
#include "ScriptedLink.h"

using namespace standard;
using test::Reply;
using test::ScriptedLink;

namespace {

using References = std::vector<PropertyReference>;

// Present_Value of the analog inputs 0 to count - 1.
References Inputs(std::size_t count) {
    References references;
    for (std::uint32_t i = 0; i < count; ++i) {
        references.push_back({{0, i}, 85, {}});
    }
    return references;
}

Failure Abort() {
    return {Failure::Kind::Abort, 0, 4, {}};
}

// Records what is requested: "list 3", "one 2"; a value is the number of its object.
struct Device {
    std::function<std::optional<Failure>(References const&)> failureOfList = [](auto const&) {
        return std::nullopt;
    };
    std::function<std::optional<Failure>(std::uint32_t)> failureOfOne = [](auto) { return std::nullopt; };
    std::vector<std::string> log;

    ReadResult One(PropertyReference const& reference) {
        Datum datum;
        datum.kind = DatumKind::Unsigned;
        datum.number = reference.object.instance;
        return {reference, {datum}, std::nullopt};
    }

    MultipleRead Made(std::size_t longest = 480, bool usesLists = true) {
        return MultipleRead(
            [this](References const& list) {
                log.push_back("list " + std::to_string(list.size()));
                MultipleRead::ListAnswer answer{failureOfList(list), {}};
                for (PropertyReference const& reference : list) {
                    answer.results.push_back(One(reference));
                }
                return answer;
            },
            [this](PropertyReference const& reference) {
                log.push_back("one " + std::to_string(reference.object.instance));
                auto const failure = failureOfOne(reference.object.instance);
                return failure ? ReadResult{reference, {}, failure} : One(reference);
            },
            longest, usesLists);
    }
};

void ExpectAll(std::vector<ReadResult> const& results, std::size_t count) {
    ASSERT_EQ(results.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(results[i].reference.object.instance, i);
        ASSERT_FALSE(results[i].failure) << i;
        EXPECT_EQ(results[i].values.at(0).number, i);
    }
}

using Log = std::vector<std::string>;

}  // namespace

TEST(MultipleRead, AsksForAllAtOnce) {
    Device device;
    ExpectAll(device.Made().Run(Inputs(5)), 5);
    EXPECT_EQ(device.log, (Log{"list 5"}));
    EXPECT_TRUE(device.Made().Run({}).empty());
}

TEST(MultipleRead, ListsFitTheirRequest) {
    Device device;
    // 4 octets of the header and 9 for each object.
    ExpectAll(device.Made(4 + 9 * 4).Run(Inputs(10)), 10);
    EXPECT_EQ(device.log, (Log{"list 4", "list 4", "list 2"}));
    device.log.clear();
    ExpectAll(device.Made(10).Run(Inputs(2)), 2);
    EXPECT_EQ(device.log, (Log{"one 0", "one 1"}));
}

TEST(MultipleRead, AnAbortedListIsHalved) {
    Device device;
    device.failureOfList = [](References const& list) {
        return list.size() > 2 ? std::optional(Abort()) : std::nullopt;
    };
    MultipleRead read = device.Made();
    ExpectAll(read.Run(Inputs(7)), 7);
    EXPECT_EQ(device.log, (Log{"list 7", "list 3", "one 0", "list 2", "list 4", "list 2", "list 2"}));
    EXPECT_FALSE(read.IsWithoutLists());
}

TEST(MultipleRead, WhatDoesNotFitAloneIsItsOwnFailure) {
    Device device;
    device.failureOfList = [](auto const&) { return Abort(); };
    device.failureOfOne = [](std::uint32_t i) { return i == 1 ? std::optional(Abort()) : std::nullopt; };
    auto const results = device.Made().Run(Inputs(4));
    EXPECT_EQ(device.log, (Log{"list 4", "list 2", "one 0", "one 1", "list 2", "one 2", "one 3"}));
    EXPECT_FALSE(results[0].failure);
    EXPECT_EQ(results[1].failure, Abort());
    EXPECT_FALSE(results[3].failure);
}

TEST(MultipleRead, AnUnknownServiceIsNotTriedAgain) {
    Device device;
    device.failureOfList = [](auto const&) { return Failure{Failure::Kind::Reject, 0, 9, {}}; };
    MultipleRead read = device.Made(40);
    ExpectAll(read.Run(Inputs(6)), 6);
    EXPECT_EQ(device.log, (Log{"list 4", "one 0", "one 1", "one 2", "one 3", "one 4", "one 5"}));
    EXPECT_TRUE(read.IsWithoutLists());
    device.log.clear();
    ExpectAll(device.Made(480, false).Run(Inputs(2)), 2);
    EXPECT_EQ(device.log, (Log{"one 0", "one 1"}));
}

TEST(MultipleRead, AfterAnErrorTheSinglePropertiesAreRead) {
    for (Failure::Kind const kind : {Failure::Kind::Error, Failure::Kind::Malformed, Failure::Kind::Reject}) {
        Device device;
        device.failureOfList = [kind](auto const&) { return Failure{kind, 1, 31, {}}; };
        device.failureOfOne = [](std::uint32_t i) {
            return i == 1 ? std::optional(Failure{Failure::Kind::Error, 1, 31, {}}) : std::nullopt;
        };
        MultipleRead read = device.Made();
        auto const results = read.Run(Inputs(3));
        EXPECT_EQ(device.log, (Log{"list 3", "one 0", "one 1", "one 2"}));
        EXPECT_EQ(FailureText(results[1].failure.value()), "object: unknown-object");
        EXPECT_FALSE(results[2].failure);
        EXPECT_FALSE(read.IsWithoutLists());
    }
}

TEST(MultipleRead, ASilentDeviceIsNotAskedForAll) {
    Device device;
    device.failureOfList = [](auto const&) { return Failure(); };
    device.failureOfOne = [](auto) { return Failure(); };
    MultipleRead read = device.Made();
    auto const results = read.Run(Inputs(100));
    EXPECT_EQ(device.log, (Log{"list 52", "one 0"}));
    ASSERT_EQ(results.size(), 100u);
    EXPECT_EQ(FailureText(results[0].failure.value()), "no answer");
    EXPECT_EQ(FailureText(results[99].failure.value()),
              "no answer (not requested, since the device did not answer before)");
    EXPECT_EQ(results[99].reference.object.instance, 99u);
    EXPECT_FALSE(read.IsWithoutLists());
}

TEST(MultipleRead, ADeviceThatIgnoresListsIsReadWithoutThem) {
    Device device;
    device.failureOfList = [](auto const&) { return Failure(); };
    MultipleRead read = device.Made(40);
    ExpectAll(read.Run(Inputs(6)), 6);
    EXPECT_EQ(device.log, (Log{"list 4", "one 0", "one 1", "one 2", "one 3", "one 4", "one 5"}));
    EXPECT_TRUE(read.IsWithoutLists());
}

TEST(MultipleRead, OnePropertyWithoutAnswerDoesNotEndTheList) {
    Device device;
    device.failureOfOne = [](std::uint32_t i) { return i == 1 ? std::optional(Failure()) : std::nullopt; };
    auto const results = device.Made(480, false).Run(Inputs(4));
    EXPECT_TRUE(results[1].failure);
    EXPECT_FALSE(results[2].failure);
    EXPECT_FALSE(results[3].failure);
}

TEST(MultipleRead, OnlySilenceInSuccessionEndsTheList) {
    Device device;
    device.failureOfOne = [](std::uint32_t i) {
        return i % 2 == 1 ? std::optional(Failure()) : std::nullopt;
    };
    auto const results = device.Made(480, false).Run(Inputs(7));
    EXPECT_EQ(device.log.size(), 7u);
    EXPECT_FALSE(results[6].failure);
}

TEST(MultipleRead, OneListWithoutAnswerDoesNotEndTheLists) {
    Device device;
    device.failureOfList = [](References const& list) {
        return list.front().object.instance == 4 ? std::optional(Failure()) : std::nullopt;
    };
    MultipleRead read = device.Made(40);
    ExpectAll(read.Run(Inputs(12)), 12);
    EXPECT_EQ(device.log, (Log{"list 4", "list 4", "one 4", "one 5", "one 6", "one 7", "list 4"}));
    EXPECT_FALSE(read.IsWithoutLists());
}

TEST(MultipleRead, StopsWhenItIsStopped) {
    Device device;
    device.failureOfOne = [](std::uint32_t i) {
        return i == 1 ? std::optional(Failure{Failure::Kind::Stopped, 0, 0, {}}) : std::nullopt;
    };
    auto const results = device.Made(480, false).Run(Inputs(4));
    EXPECT_EQ(device.log, (Log{"one 0", "one 1"}));
    EXPECT_FALSE(results[0].failure);
    EXPECT_EQ(FailureText(results[3].failure.value()), "stopped");
}

TEST(ReadMultiple, KeepsErrorsApartFromValues) {
    ScriptedLink link;
    link.Then({Reply("30 01 0E 0C 00 00 00 05 1E 29 55 4E 44 42 90 00 00 4F 29 67 5E 91 02 91 20 5F 1F")});
    Client client(link, {});
    auto const results =
        client.ReadMultiple({test::DeviceEndpoint, {}}, {{{0, 5}, 85, {}}, {{0, 5}, 103, {}}});
    EXPECT_EQ(link.SentApdus(), (Log{"02 75 01 0E 0C 00 00 00 05 1E 09 55 09 67 1F"}));
    EXPECT_EQ(results.at(0).values.at(0).real, 72.0);
    EXPECT_EQ(FailureText(results.at(1).failure.value()), "property: unknown-property");
    EXPECT_EQ(results.at(1).reference.property, 103u);
}

TEST(ReadMultiple, ReportsEachExchange) {
    ScriptedLink link;
    link.Then({Reply("60 01 09", 25)})
        .Then({Reply("50 02 0C 91 01 91 1F", 50)})
        .Then({Reply("50 03 0C 91 01 91 1F", 75)});
    Client client(link, {});
    std::vector<std::chrono::microseconds::rep> milliseconds;
    client.OnExchange(
        [&](Exchange const& exchange) { milliseconds.push_back(exchange.duration.count() / 1000); });
    client.ReadMultiple({test::DeviceEndpoint, {}}, Inputs(2));
    EXPECT_EQ(milliseconds, (std::vector<std::chrono::microseconds::rep>{25, 50, 75}));
}

TEST(ReadMultiple, RemembersADeviceWithoutTheService) {
    ScriptedLink link;
    link.Then({Reply("60 01 09")})
        .Then({Reply("30 02 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F")})
        .Then({Reply("50 03 0C 91 02 91 20")})
        .Then({Reply("30 04 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F")})
        .Then({Reply("50 05 0C 91 02 91 20")});
    Client client(link, {});
    for (int i = 0; i < 2; ++i) {
        auto const results =
            client.ReadMultiple({test::DeviceEndpoint, {}}, {{{0, 5}, 85, {}}, {{0, 5}, 103, {}}});
        EXPECT_FALSE(results.at(0).failure);
        EXPECT_EQ(FailureText(results.at(1).failure.value()), "property: unknown-property");
    }
    EXPECT_EQ(link.sent.size(), 5u);
}

TEST(ReadMultiple, AnAnswerForOtherPropertiesIsNotBelieved) {
    for (char const* const answer :
         {"30 01 0E 0C 00 00 00 05 1E 29 55 4E 44 42 90 00 00 4F 1F",
          "30 01 0E 0C 00 00 00 06 1E 29 55 4E 44 42 90 00 00 4F 29 67 4E 91 00 4F 1F", "30 01 0E",
          "30 01 0E 0C 00 00 00 05 1E 29 55 4E 44 42 90 00 00 4F 29 67 4E 91 00 4F"}) {
        ScriptedLink link;
        link.Then({Reply(answer)})
            .Then({Reply("30 02 0C 0C 00 00 00 05 19 55 3E 44 42 90 00 00 3F")})
            .Then({Reply("30 03 0C 0C 00 00 00 05 19 67 3E 91 00 3F")});
        Client client(link, {});
        auto const results =
            client.ReadMultiple({test::DeviceEndpoint, {}}, {{{0, 5}, 85, {}}, {{0, 5}, 103, {}}});
        EXPECT_FALSE(results.at(0).failure);
        EXPECT_FALSE(results.at(1).failure);
        EXPECT_EQ(link.sent.size(), 3u) << answer;
    }
}
