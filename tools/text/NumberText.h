#pragma once

#include <string>

namespace tools {

// The shortest decimal text that reads back as the same number: "21.5", "0.1", "1e+30", "nan", "-inf".
std::string NumberText(float value);
std::string NumberText(double value);

}  // namespace tools
