#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace test {

// Compares a text that a test makes with the part of a document between "<!-- NAME: begin -->" and
// "<!-- NAME: end -->". With DORVEL_PRINT_TABLE in the environment the text is printed, to be copied there.
inline void ExpectInDocument(char const* path, std::string const& name, std::string const& text) {
    if (std::getenv("DORVEL_PRINT_TABLE")) {
        std::cout << text;
    }
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    std::string const document = content.str();
    std::string const begin = "<!-- " + name + ": begin -->\n";
    auto const from = document.find(begin);
    auto const to = document.find("<!-- " + name + ": end -->");
    ASSERT_NE(from, std::string::npos);
    ASSERT_NE(to, std::string::npos);
    EXPECT_EQ(document.substr(from + begin.size(), to - from - begin.size()), text);
}

}  // namespace test
