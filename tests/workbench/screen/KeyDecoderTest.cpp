#include "KeyDecoder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace workbench;

namespace {

// Each key as a word: "Up", "a", "Click 6".
std::string Word(Key const& key) {
    static char const* const names[] = {"Text",   "Enter",      "Escape",    "Tab",      "Backspace",
                                        "Delete", "DeleteLine", "Redraw",    "Up",       "Down",
                                        "Left",   "Right",      "PageUp",    "PageDown", "Home",
                                        "End",    "WheelUp",    "WheelDown", "Click"};
    if (key.kind == KeyKind::Text) {
        return key.text;
    }
    std::string const name = names[static_cast<std::size_t>(key.kind)];
    return key.kind == KeyKind::Click ? name + " " + std::to_string(key.line) : name;
}

std::string Words(std::vector<Key> const& keys) {
    std::string words;
    for (Key const& key : keys) {
        words += (words.empty() ? "" : ",") + Word(key);
    }
    return words;
}

std::string Decoded(std::string const& octets) {
    KeyDecoder decoder;
    return Words(decoder.Feed(octets));
}

TEST(KeyDecoder, KnowsTheKeysOfATerminal) {
    EXPECT_EQ(Decoded("\x1B[A\x1B[B\x1B[C\x1B[D"), "Up,Down,Right,Left");
    EXPECT_EQ(Decoded("\x1BOA\x1BOB\x1BOH\x1BOF"), "Up,Down,Home,End");
    EXPECT_EQ(Decoded("\x1B[H\x1B[F\x1B[1~\x1B[4~\x1B[7~\x1B[8~"), "Home,End,Home,End,Home,End");
    EXPECT_EQ(Decoded("\x1B[5~\x1B[6~\x1B[3~"), "PageUp,PageDown,Delete");
    EXPECT_EQ(Decoded("\x1B[1;5C\x1B[5;2~"), "Right,PageUp");
    EXPECT_EQ(Decoded("\r\n\t\b\x7F\x15\x01\x05\x0C"),
              "Enter,Enter,Tab,Backspace,Backspace,DeleteLine,Home,End,Redraw");
}

TEST(KeyDecoder, KnowsCharactersOfUtf8) {
    EXPECT_EQ(Decoded("aZ \xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA5~"),
              "a,Z, ,\xC3\xA4,\xE2\x82\xAC,\xF0\x9F\x94\xA5,~");
}

TEST(KeyDecoder, KnowsTheWheelAndTheFirstButtonOfTheMouse) {
    EXPECT_EQ(Decoded("\x1B[<64;10;5M\x1B[<65;10;5M\x1B[<0;3;7M\x1B[<0;3;7m"), "WheelUp,WheelDown,Click 6");
    EXPECT_EQ(Decoded("\x1B[<2;3;7M\x1B[<0;0;0M\x1B[<0M\x1B[<0;1;99999999999999999999Mx"), "x");
}

TEST(KeyDecoder, DropsTheMouseEventsOfOtherForms) {
    EXPECT_EQ(Decoded("\x1B[M !!x"), "x");
}

TEST(KeyDecoder, DropsSequencesThatItDoesNotKnow) {
    EXPECT_EQ(Decoded("\x1B[15~\x1BOPa\x1B[?1;2cb\x1B[200~c\x1B[Zd\x1B[;;;He"), "a,b,c,d,Home,e");
}

TEST(KeyDecoder, ReadsSequencesThatAreSplitAnywhere) {
    std::string const all = "\x1B[1;5A\x1BOB\x1B[<64;10;5Mx\xE2\x82\xAC\x1B[5~\x1B[M !!y";
    std::string const expected = "Up,Down,WheelUp,x,\xE2\x82\xAC,PageUp,y";
    EXPECT_EQ(Decoded(all), expected);
    for (std::size_t split = 0; split <= all.size(); ++split) {
        KeyDecoder decoder;
        std::vector<Key> keys = decoder.Feed(all.substr(0, split));
        for (Key const& key : decoder.Feed(all.substr(split))) {
            keys.push_back(key);
        }
        EXPECT_EQ(Words(keys), expected) << split;
        EXPECT_FALSE(decoder.IsWaiting());
    }
}

TEST(KeyDecoder, EscapeAloneIsAKeyOnceNothingFollows) {
    KeyDecoder decoder;
    EXPECT_EQ(Words(decoder.Feed("\x1B")), "");
    EXPECT_TRUE(decoder.IsWaiting());
    EXPECT_EQ(Words(decoder.Flush()), "Escape");
    EXPECT_FALSE(decoder.IsWaiting());
    EXPECT_EQ(Words(decoder.Feed("\x1Bs\x1B\x1B[A")), "Escape,s,Escape,Up");
    decoder.Feed("\x1B[");
    EXPECT_EQ(Words(decoder.Flush()), "");
    EXPECT_EQ(Words(decoder.Feed("x")), "x");
}

TEST(KeyDecoder, ASequenceInsideOfAnotherBeginsAgain) {
    EXPECT_EQ(Decoded("\x1B[12\x1B[A"), "Up");
    EXPECT_EQ(Decoded("\x1B[12\rx"), "Enter,x");
}

TEST(KeyDecoder, DropsOctetsThatAreNotUtf8AndControlCharacters) {
    EXPECT_EQ(Decoded("\xFFx\xC3(\x02\xC2\x85y\x80z"), "x,(,y,z");
}

TEST(KeyDecoder, DoesNotKeepASequenceThatDoesNotEnd) {
    KeyDecoder decoder;
    decoder.Feed("\x1B[" + std::string(1000000, '1'));
    EXPECT_FALSE(decoder.IsWaiting());
    EXPECT_EQ(Words(decoder.Feed("x")), "x");
}

TEST(KeyDecoder, WithstandsRandomOctets) {
    std::mt19937 random(15);
    static char const favourites[] = "\x1B[<;MO~0123Am\xC3\xE2";
    KeyDecoder decoder;
    std::size_t texts = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string octets;
        for (std::size_t n = random() % 12; n > 0; --n) {
            octets += random() % 3 == 0 ? static_cast<char>(random() % 256)
                                        : favourites[random() % (sizeof favourites - 1)];
        }
        for (Key const& key : decoder.Feed(octets)) {
            bool const isText = key.kind == KeyKind::Text;
            EXPECT_EQ(isText, !key.text.empty());
            EXPECT_LE(key.text.size(), 4u);
            texts += isText ? 1 : 0;
        }
    }
    EXPECT_GT(texts, 0u);
}

}  // namespace
