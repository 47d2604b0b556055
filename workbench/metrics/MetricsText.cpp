#include "MetricsText.h"

#include <cmath>

#include "NumberText.h"
#include "Utf8.h"

namespace workbench {

namespace {

constexpr char Replacement[] = "\xEF\xBF\xBD";

bool IsControl(long codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

void AppendEscaped(std::string& text, std::string_view value) {
    for (std::size_t at = 0; at < value.size();) {
        tools::Character const character = tools::CharacterAt(value, at);
        switch (character.codePoint) {
            case '\\':
                text += "\\\\";
                break;
            case '"':
                text += "\\\"";
                break;
            case '\n':
                text += "\\n";
                break;
            default:
                text += IsControl(character.codePoint) ? std::string_view(Replacement)
                                                       : value.substr(at, character.length);
        }
        at += character.length;
    }
}

}  // namespace

std::string MetricLabels(std::initializer_list<std::pair<char const*, std::string_view>> labels) {
    std::string text;
    for (auto const& [name, value] : labels) {
        text += text.empty() ? "{" : ",";
        text += name;
        text += "=\"";
        AppendEscaped(text, value);
        text += '"';
    }
    return text.empty() ? text : text + "}";
}

std::string MetricNumber(double number) {
    return MetricNumber(tools::NumberText(number));
}

std::string MetricNumber(std::string number) {
    if (number == "nan") {
        return "NaN";
    }
    if (number == "inf") {
        return "+Inf";
    }
    return number == "-inf" ? "-Inf" : number;
}

void MetricsText::Begin(Metric nextMetric) {
    metric = nextMetric;
    hasHead = false;
}

void MetricsText::Add(std::string_view labels, std::string_view number) {
    MetricFamily const& family = FamilyOf(metric);
    if (!hasHead) {
        hasHead = true;
        text.append("# HELP ").append(family.name).append(" ").append(family.help).append("\n");
        text.append("# TYPE ").append(family.name).append(family.isCounter ? " counter\n" : " gauge\n");
    }
    text.append(family.name).append(labels).append(" ").append(number).append("\n");
}

}  // namespace workbench
