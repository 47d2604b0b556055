#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace test {

// The fields of a protobuf message, read from its octets alone: numbers by varint or as fixed octets, and
// octets. std::runtime_error for octets that are not a message.
class WireFields {
public:
    explicit WireFields(std::string_view octets) : rest(octets) {
        while (!rest.empty()) {
            std::uint64_t const tag = Varint();
            Read(static_cast<unsigned>(tag >> 3), static_cast<unsigned>(tag & 7));
        }
    }

    bool Has(unsigned field) const { return numbers.count(field) + texts.count(field) > 0; }
    std::uint64_t Number(unsigned field) const { return numbers.at(field).back(); }
    std::string const& Text(unsigned field) const { return texts.at(field).back(); }
    std::vector<std::string> Texts(unsigned field) const {
        auto const found = texts.find(field);
        return found == texts.end() ? std::vector<std::string>() : found->second;
    }
    float Float(unsigned field) const {
        auto const octets = static_cast<std::uint32_t>(Number(field));
        float value = 0;
        std::memcpy(&value, &octets, sizeof value);
        return value;
    }
    double Double(unsigned field) const {
        std::uint64_t const octets = Number(field);
        double value = 0;
        std::memcpy(&value, &octets, sizeof value);
        return value;
    }

private:
    std::string Take(std::uint64_t count) {
        if (count > rest.size()) {
            throw std::runtime_error("cut");
        }
        std::string const taken(rest.substr(0, count));
        rest.remove_prefix(count);
        return taken;
    }

    std::uint64_t Varint() {
        std::uint64_t number = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            auto const octet = static_cast<unsigned char>(Take(1).front());
            number |= static_cast<std::uint64_t>(octet & 127U) << shift;
            if (octet < 128) {
                return number;
            }
        }
        throw std::runtime_error("a number without an end");
    }

    std::uint64_t Fixed(unsigned count) {
        std::uint64_t number = 0;
        std::string const octets = Take(count);
        for (unsigned i = count; i-- > 0;) {
            number = number << 8 | static_cast<unsigned char>(octets[i]);
        }
        return number;
    }

    void Read(unsigned field, unsigned kind) {
        switch (kind) {
            case 0:
                numbers[field].push_back(Varint());
                break;
            case 1:
                numbers[field].push_back(Fixed(8));
                break;
            case 2:
                texts[field].push_back(Take(Varint()));
                break;
            case 5:
                numbers[field].push_back(Fixed(4));
                break;
            default:
                throw std::runtime_error("an unknown kind of field");
        }
    }

    std::string_view rest;
    std::map<unsigned, std::vector<std::uint64_t>> numbers;
    std::map<unsigned, std::vector<std::string>> texts;
};

// What the tests need of messages of Sparkplug B, by the published numbers of the fields.
struct ReadMetric {
    explicit ReadMetric(std::string_view octets) : fields(octets) {
        WireFields const set(fields.Has(9) ? fields.Text(9) : std::string());
        std::vector<std::string> const keys = set.Texts(1);
        std::vector<std::string> const values = set.Texts(2);
        if (keys.size() != values.size()) {
            throw std::runtime_error("keys without values");
        }
        for (std::size_t i = 0; i < keys.size(); ++i) {
            properties.emplace(keys[i], WireFields(values[i]));
        }
    }

    std::string Name() const { return fields.Has(1) ? fields.Text(1) : ""; }
    std::uint64_t Alias() const { return fields.Number(2); }
    std::uint64_t Time() const { return fields.Number(3); }
    unsigned Type() const { return static_cast<unsigned>(fields.Number(4)); }
    bool IsNull() const { return fields.Has(7) && fields.Number(7) == 1; }
    bool HasValue() const {
        for (unsigned field = 10; field <= 19; ++field) {
            if (fields.Has(field)) {
                return true;
            }
        }
        return false;
    }
    // -1 without a quality.
    int Quality() const {
        auto const found = properties.find("Quality");
        return found == properties.end() ? -1 : static_cast<int>(found->second.Number(3));
    }
    std::string Property(std::string const& key) const {
        auto const found = properties.find(key);
        return found == properties.end() ? "" : found->second.Text(8);
    }

    WireFields fields;
    std::map<std::string, WireFields> properties;
};

struct ReadPayload {
    explicit ReadPayload(std::string_view octets) : fields(octets) {
        for (std::string const& metric : fields.Texts(2)) {
            metrics.emplace_back(metric);
        }
    }

    std::uint64_t Time() const { return fields.Number(1); }
    // -1 without one.
    int Seq() const { return fields.Has(3) ? static_cast<int>(fields.Number(3)) : -1; }
    ReadMetric const& Metric(std::string const& name) const {
        for (ReadMetric const& metric : metrics) {
            if (metric.Name() == name) {
                return metric;
            }
        }
        throw std::runtime_error("no metric " + name);
    }

    WireFields fields;
    std::vector<ReadMetric> metrics;
};

}  // namespace test
