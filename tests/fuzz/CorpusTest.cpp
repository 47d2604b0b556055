#include "Corpus.h"

#include <sstream>
#include <stdexcept>

#include "TemporaryFolder.h"

using fuzz::CorpusInput;
using test::TemporaryFolder;

namespace {

using Octets = std::vector<std::uint8_t>;

std::vector<CorpusInput> Read(std::string const& bundle) {
    std::istringstream stream(bundle);
    return fuzz::ReadBundle(stream, "tags.txt");
}

template <class Function>
std::string MessageOf(Function read) {
    try {
        read();
    } catch (std::runtime_error const& mistake) {
        return mistake.what();
    }
    return "no mistake";
}

std::string MistakeIn(std::string const& bundle) {
    return MessageOf([&] { Read(bundle); });
}

std::string MistakeInArgument(std::string const& argument) {
    return MessageOf([&] { fuzz::ReadInputs(argument); });
}

std::vector<std::string> Names(std::vector<CorpusInput> const& inputs) {
    std::vector<std::string> names;
    for (CorpusInput const& input : inputs) {
        names.push_back(input.name);
    }
    return names;
}

}  // namespace

TEST(CorpusBundle, GivesNameAndOctetsOfEachLineInOrder) {
    auto const inputs = Read("b.2-x_Y: 00ff7f80\na: 9a\n");
    ASSERT_EQ(inputs.size(), 2u);
    EXPECT_EQ(inputs[0].name, "tags.txt:b.2-x_Y");
    EXPECT_EQ(inputs[0].octets, (Octets{0x00, 0xFF, 0x7F, 0x80}));
    EXPECT_EQ(inputs[1].name, "tags.txt:a");
    EXPECT_EQ(inputs[1].octets, Octets{0x9A});
}

TEST(CorpusBundle, LineThatEndsAtItsColonIsTheEmptyInput) {
    auto const inputs = Read("empty:\nzero: 00\n");
    ASSERT_EQ(inputs.size(), 2u);
    EXPECT_EQ(inputs[0].octets, Octets());
    EXPECT_EQ(inputs[1].octets, Octets{0});
}

TEST(CorpusBundle, LastLineNeedsNoLineEnd) {
    EXPECT_EQ(Read("a: 01\nb: 02").at(1).octets, Octets{2});
}

TEST(CorpusBundle, EmptyBundleHasNoInput) {
    EXPECT_TRUE(Read("").empty());
}

TEST(CorpusBundle, SameOctetsMayHaveTwoNames) {
    EXPECT_EQ(Read("a: 01\nb: 01\n").size(), 2u);
}

TEST(CorpusBundle, OddNumberOfDigitsIsRefused) {
    EXPECT_EQ(MistakeIn("a: 01\nb: 012\n"),
              "tags.txt:2: \"012\" has an odd number of hexadecimal digits, 3; an octet has two");
}

TEST(CorpusBundle, OtherDigitsThanLowerCaseHexadecimalAreRefused) {
    EXPECT_EQ(MistakeIn("a: 0g\n"),
              "tags.txt:1: \"g\" is not a hexadecimal digit; allowed are 0 to 9 and a to f");
    EXPECT_EQ(MistakeIn("a: A0\n"),
              "tags.txt:1: \"A\" is not a hexadecimal digit; allowed are 0 to 9 and a to f");
    EXPECT_EQ(MistakeIn("a: 001\r\n"),
              "tags.txt:1: \"\\x0D\" is not a hexadecimal digit; allowed are 0 to 9 and a to f");
}

TEST(CorpusBundle, LineWithoutAColonIsRefused) {
    EXPECT_EQ(MistakeIn("a: 01\nabc 01\n"),
              "tags.txt:2: \"abc 01\" has no colon; a line is NAME: OCTETS, or NAME: alone");
    EXPECT_EQ(MistakeIn("a: 01\n\nb: 02\n"),
              "tags.txt:2: \"\" has no colon; a line is NAME: OCTETS, or NAME: alone");
}

TEST(CorpusBundle, LongTextIsShownByItsBeginning) {
    EXPECT_EQ(MistakeIn(std::string(100, 'x')),
              "tags.txt:1: \"" + std::string(40, 'x') +
                  "...\" has no colon; a line is NAME: OCTETS, or NAME: alone");
}

TEST(CorpusBundle, AnythingButASpaceWithOctetsAfterTheColonIsRefused) {
    std::string const allowed =
        " after the colon is not an input; allowed is a space with octets in hexadecimal, or nothing";
    EXPECT_EQ(MistakeIn("a:01\n"), "tags.txt:1: \"01\"" + allowed);
    EXPECT_EQ(MistakeIn("a: \n"), "tags.txt:1: \" \"" + allowed);
    EXPECT_EQ(MistakeIn("a:\t01\n"), "tags.txt:1: \"\\x0901\"" + allowed);
}

TEST(CorpusBundle, NameThatIsNoFileNameIsRefused) {
    std::string const allowed =
        " is not allowed; a name consists of letters, digits, '.', '_' and '-' and begins with a letter or "
        "digit";
    for (std::string const name : {"", "a b", "a/b", "..", "-a", "_a", " a"}) {
        EXPECT_EQ(MistakeIn(name + ": 01\n"), "tags.txt:1: the name \"" + name + "\"" + allowed);
    }
}

TEST(CorpusBundle, NameThatIsUsedTwiceIsRefused) {
    EXPECT_EQ(MistakeIn("a: 01\nb: 02\na: 03\n"),
              "tags.txt:3: the name \"a\" is that of line 1; each name is used once");
}

TEST(CorpusArgument, BundleGivesAllOfItsInputs) {
    TemporaryFolder const folder;
    std::string const bundle = folder.Write("tags.txt", "a: 01\nb: 02\n");
    EXPECT_EQ(Names(fuzz::ReadInputs(bundle)), (std::vector<std::string>{bundle + ":a", bundle + ":b"}));
}

TEST(CorpusArgument, NameOfAnInputGivesItAlone) {
    TemporaryFolder const folder;
    std::string const bundle = folder.Write("tags.txt", "a: 01\nb: 02\n");
    auto const inputs = fuzz::ReadInputs(bundle + ":b");
    EXPECT_EQ(Names(inputs), std::vector<std::string>{bundle + ":b"});
    EXPECT_EQ(inputs.at(0).octets, Octets{2});
}

TEST(CorpusArgument, OtherFileIsOneInputAsItIs) {
    TemporaryFolder const folder;
    std::string const content("a: 01\n\0\xFF", 8);
    std::string const file = folder.Write("tags-crash-1", content);
    auto const inputs = fuzz::ReadInputs(file);
    EXPECT_EQ(Names(inputs), std::vector<std::string>{file});
    EXPECT_EQ(inputs.at(0).octets, Octets(content.begin(), content.end()));
}

TEST(CorpusArgument, EmptyFileIsAnEmptyInput) {
    TemporaryFolder const folder;
    EXPECT_EQ(fuzz::ReadInputs(folder.Write("empty", "")).at(0).octets, Octets());
}

TEST(CorpusArgument, FolderGivesItsFilesAndBundlesInTheOrderOfTheirPaths) {
    TemporaryFolder const folder;
    std::string const last = folder.Write("z", "1");
    std::string const bundle = folder.Write("m.txt", "b: 01\na: 02\n");
    std::string const first = folder.Write("c", "2");
    EXPECT_EQ(Names(fuzz::ReadInputs(folder.Path())),
              (std::vector<std::string>{first, bundle + ":b", bundle + ":a", last}));
}

TEST(CorpusArgument, MalformedBundleIsRefusedWithItsLine) {
    TemporaryFolder const folder;
    std::string const bundle = folder.Write("tags.txt", "a: 01\nb: 0\n");
    std::string const mistake =
        bundle + ":2: \"0\" has an odd number of hexadecimal digits, 1; an octet has two";
    EXPECT_EQ(MistakeInArgument(bundle), mistake);
    EXPECT_EQ(MistakeInArgument(bundle + ":a"), mistake);
}

TEST(CorpusArgument, WhatDoesNotExistIsRefused) {
    TemporaryFolder const folder;
    std::string const bundle = folder.Write("tags.txt", "a: 01\n");
    EXPECT_EQ(MistakeInArgument(bundle + ":b"), bundle + ": there is no input with the name \"b\"");
    std::string const missing = folder.Path() + "/missing";
    for (std::string const& argument : {missing, missing + ".txt", missing + ".txt:a", missing + ":a"}) {
        EXPECT_EQ(MistakeInArgument(argument), argument + ": no such file, folder or input of a bundle");
    }
}
