#include "LoginFile.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "FileText.h"
#include "Printable.h"

namespace workbench {

namespace {

// Of a text in MQTT.
constexpr std::size_t LongestText = 65535;

std::string TakeLine(std::string_view& rest) {
    std::size_t const end = std::min(rest.find('\n'), rest.size());
    std::string line(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

[[noreturn]] void Refuse(std::string const& path, std::string const& mistake) {
    throw std::runtime_error(path + ": " + mistake +
                             "; expected are two lines: the user, and below it the password");
}

}  // namespace

BrokerLogin ReadLoginFile(std::string const& path) {
    std::string const text = tools::FileText(path, 1);
    std::string_view rest = text;
    BrokerLogin login;
    login.user = TakeLine(rest);
    login.password = TakeLine(rest);
    if (login.user.empty()) {
        Refuse(path, "the first line, the user, is empty");
    }
    if (login.password.empty()) {
        Refuse(path, "the second line, the password, is empty");
    }
    if (rest.find_first_not_of("\r\n") != std::string_view::npos) {
        Refuse(path, "there is a third line");
    }
    if (login.user.size() > LongestText || login.password.size() > LongestText) {
        Refuse(path, "a line has more than 65535 octets");
    }
    if (tools::Printable(login.user) != login.user || login.password.find('\0') != std::string::npos) {
        Refuse(path, "a line has a control character, or the user is not UTF-8");
    }
    if (tools::IsReadableByOthers(path)) {
        login.warning =
            path + ": other users can read the password of the broker; chmod 600 makes it yours alone";
    }
    return login;
}

}  // namespace workbench
