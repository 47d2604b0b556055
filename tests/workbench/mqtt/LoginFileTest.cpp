#include "LoginFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <stdexcept>

#include "TemporaryFolder.h"

namespace {

using workbench::ReadLoginFile;

class LoginFile : public ::testing::Test {
protected:
    std::string FileWith(std::string const& text, mode_t mode = 0600) {
        std::string const path = folder.Write("login", text);
        chmod(path.c_str(), mode);
        return path;
    }

    std::string MistakeOf(std::string const& text) {
        try {
            ReadLoginFile(FileWith(text));
        } catch (std::runtime_error const& mistake) {
            return mistake.what();
        }
        return "none";
    }

    test::TemporaryFolder folder;
};

TEST_F(LoginFile, HasTheUserAndThePasswordInTwoLines) {
    for (char const* const text :
         {"plant\ntop secret", "plant\ntop secret\n", "plant\r\ntop secret\r\n\r\n"}) {
        auto const login = ReadLoginFile(FileWith(text));
        EXPECT_EQ(login.user, "plant");
        EXPECT_EQ(login.password, "top secret");
        EXPECT_EQ(login.warning, "");
    }
}

TEST_F(LoginFile, NamesTheFileAndTheMistakeWithoutTheContent) {
    std::string const tooLong(65536, 's');
    for (std::string const& text :
         {std::string(), std::string("\nsecret"), std::string("plant"), std::string("plant\n\nsecret"),
          std::string("plant\nsecret\nsecret"), std::string("pl\tant\nsecret"),
          std::string("plant\nsec\0ret", 13), "plant\n" + tooLong}) {
        std::string const mistake = MistakeOf(text);
        EXPECT_EQ(mistake.find(folder.Path()), 0U) << mistake;
        EXPECT_NE(mistake.find("the user, and below it the password"), std::string::npos) << mistake;
        std::string const rest = mistake.substr(folder.Path().size());
        EXPECT_EQ(rest.find("secret"), std::string::npos);
        EXPECT_EQ(rest.find("plant"), std::string::npos);
    }
    EXPECT_THROW(ReadLoginFile(folder.Path() + "/missing"), std::runtime_error);
}

TEST_F(LoginFile, WarnsOfOtherReaders) {
    std::string const path = FileWith("plant\nsecret", 0640);
    EXPECT_EQ(ReadLoginFile(path).warning,
              path + ": other users can read the password of the broker; chmod 600 makes it yours alone");
}

}  // namespace
