#pragma once

#include <string>

namespace tools {

// The shortest decimal text that reads back as the same number: "21.5", "0.1", "1e+30", "nan", "-inf".
std::string NumberText(float value);
std::string NumberText(double value);

// The number that has the shortest text of the float: 21.1, not 21.100000381469727.
double Widened(float value);

}  // namespace tools
