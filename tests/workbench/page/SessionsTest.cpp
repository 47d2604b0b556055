#include "Sessions.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>

#include "FakeEnvironment.h"
#include "Secret.h"
#include "TemporaryFolder.h"

using namespace test;
using namespace workbench;

namespace {

class SessionsTest : public testing::Test {
protected:
    SessionsTest() { dorvel::SetEnvironment(&world); }
    ~SessionsTest() override { dorvel::SetEnvironment(nullptr); }

    Sessions::SignIn Open(std::string const& token, std::string const& sender = "10.0.0.1") {
        return sessions.Open(token, sender, session);
    }

    FakeEnvironment world;
    Sessions sessions{"right"};
    Sessions::Session session;
};

TEST_F(SessionsTest, BeginWithTheTokenAlone) {
    EXPECT_EQ(Open("right"), Sessions::SignIn::Done);
    EXPECT_TRUE(sessions.Find(session.id));
    EXPECT_NE(session.id, session.token);
    EXPECT_EQ(sessions.Find(session.id)->token, session.token);
    for (char const* token : {"", "Right", "right ", "righ", "rightx"}) {
        EXPECT_EQ(Open(token), Sessions::SignIn::WrongToken) << token;
    }
    EXPECT_FALSE(sessions.Find(""));
    EXPECT_FALSE(sessions.Find(session.token));
}

TEST_F(SessionsTest, AreBounded) {
    Open("right");
    std::string const first = session.id;
    for (std::size_t i = 1; i < Sessions::Most; ++i) {
        Open("right");
    }
    EXPECT_TRUE(sessions.Find(first));
    Open("right");
    EXPECT_FALSE(sessions.Find(first));
    EXPECT_TRUE(sessions.Find(session.id));
}

TEST_F(SessionsTest, ReportTooManyWrongTokensOfASenderAndStillBeginWithTheRightOne) {
    for (unsigned i = 0; i < Sessions::MostFailures; ++i) {
        EXPECT_EQ(Open("wrong"), Sessions::SignIn::WrongToken);
    }
    EXPECT_EQ(Open("wrong"), Sessions::SignIn::TooManyFailures);
    EXPECT_EQ(Open("right"), Sessions::SignIn::Done);
    EXPECT_EQ(Open("wrong", "10.0.0.2"), Sessions::SignIn::WrongToken);
    world.time += 600000000;
    EXPECT_EQ(Open("wrong"), Sessions::SignIn::WrongToken);
}

TEST_F(SessionsTest, ReportTooManyWrongTokensOfAllAndStillBeginWithTheRightOne) {
    for (unsigned i = 0; i < Sessions::MostFailuresOfAll; ++i) {
        EXPECT_EQ(Open("wrong", "10.0.0." + std::to_string(i)), Sessions::SignIn::WrongToken);
    }
    EXPECT_EQ(Open("wrong", "10.0.1.1"), Sessions::SignIn::TooManyFailures);
    EXPECT_EQ(Open("right", "10.0.1.1"), Sessions::SignIn::Done);
}

TEST(Secret, IsAnotherOneEachTime) {
    std::set<std::string> secrets;
    for (int i = 0; i < 100; ++i) {
        secrets.insert(RandomSecret());
        EXPECT_EQ(secrets.begin()->size(), 32u);
    }
    EXPECT_EQ(secrets.size(), 100u);
}

// The mistake, or the token.
std::string Read(TemporaryFolder const& folder, std::string const& text, mode_t mode = 0600) {
    std::string const path = folder.Write("token", text);
    chmod(path.c_str(), mode);
    try {
        SecretFile const file = ReadSecretFile(path);
        return file.token + (file.warning.empty() ? "" : " warning");
    } catch (std::runtime_error const& mistake) {
        return mistake.what();
    }
}

TEST(SecretFile, HasATokenOfAtLeast128Bits) {
    TemporaryFolder const folder;
    std::string const shortest(ShortestToken, 'a');
    EXPECT_EQ(Read(folder, shortest + "\nmore"), shortest);
    EXPECT_EQ(Read(folder, shortest + "\r\n"), shortest);
    EXPECT_NE(Read(folder, shortest.substr(1)).find("the token has 21 characters; expected is a line of 22"),
              std::string::npos);
    EXPECT_NE(Read(folder, "").find("the token has 0 characters"), std::string::npos);
    EXPECT_NE(Read(folder, std::string(300, 'a')).find("the token has 300 characters"), std::string::npos);
    EXPECT_NE(Read(folder, shortest + "&x").find("a character that is not allowed"), std::string::npos);
    EXPECT_NE(Read(folder, shortest + "ä").find("a character that is not allowed"), std::string::npos);
}

TEST(SecretFile, WarnsWhenOthersCanReadIt) {
    TemporaryFolder const folder;
    std::string const token(32, 'b');
    EXPECT_EQ(Read(folder, token, 0644), token + " warning");
    EXPECT_EQ(Read(folder, token, 0640), token + " warning");
    EXPECT_EQ(Read(folder, token, 0600), token);
}

}  // namespace
