#include "Numbers.h"

#include <charconv>
#include <system_error>

#include "Printable.h"

namespace workbench {

std::optional<unsigned long long> NumberParameter(HttpRequest const& request, std::string const& name,
                                                  unsigned long long otherwise, unsigned long long least,
                                                  unsigned long long greatest) {
    if (request.parameters.count(name) == 0) {
        return otherwise;
    }
    std::string const text = request.Parameter(name);
    unsigned long long number = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    bool const isNumber = error == std::errc() && end == text.data() + text.size();
    if (!isNumber || number < least || number > greatest) {
        return {};
    }
    return number;
}

HttpResponse NumberProblem(HttpRequest const& request, std::string const& name, std::string const& allowed) {
    return Problem(400, name + ": " + tools::Quoted(request.Parameter(name)) + " is not " + allowed);
}

}  // namespace workbench
