#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "MetricFamilies.h"

namespace workbench {

// The text format of Prometheus, version 0.0.4.

// {block="AHU",variable="Supply air"}; empty without labels. Values are escaped, octets that are not UTF-8
// and control characters other than the line feed become U+FFFD, so that the text cannot control a terminal.
std::string MetricLabels(std::initializer_list<std::pair<char const*, std::string_view>> labels);

// "21.5", "NaN", "+Inf", "-Inf".
std::string MetricNumber(double number);
// The same of the text of a number, "nan", "inf" or "-inf".
std::string MetricNumber(std::string number);

// Writes metrics, each with its help, its type and its samples. A metric without samples is left out.
class MetricsText {
public:
    void Begin(Metric nextMetric);
    // labels as of MetricLabels.
    void Add(std::string_view labels, std::string_view number);
    void Add(std::string_view labels, double number) { Add(labels, MetricNumber(number)); }
    void Add(std::string_view labels, unsigned long long number) { Add(labels, std::to_string(number)); }

    std::string Take() { return std::move(text); }

private:
    std::string text;
    Metric metric{};
    bool hasHead = false;
};

}  // namespace workbench
