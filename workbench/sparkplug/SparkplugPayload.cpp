#include "SparkplugPayload.h"

#include <utility>

#include "sparkplug.pb.h"

namespace workbench {

namespace {

// Sets the field of a property or of a metric that has the value. Octets are a metric's alone.
template <typename Owner>
struct FieldSetter {
    Owner& owner;

    void operator()(std::monostate) const {}
    void operator()(std::uint32_t value) const { owner.set_int_value(value); }
    void operator()(std::uint64_t value) const { owner.set_long_value(value); }
    void operator()(float value) const { owner.set_float_value(value); }
    void operator()(double value) const { owner.set_double_value(value); }
    void operator()(bool value) const { owner.set_boolean_value(value); }
    void operator()(std::string const& value) const { owner.set_string_value(value); }
    void operator()(SparkplugBytes const& value) const {
        if constexpr (std::is_same_v<Owner, schema::Metric>) {
            owner.set_bytes_value(value.octets);
        }
    }
};

void Fill(SparkplugProperty const& property, schema::Properties& set) {
    set.add_keys(property.key);
    schema::Property& value = *set.add_values();
    value.set_type(static_cast<std::uint32_t>(property.type));
    std::visit(FieldSetter<schema::Property>{value}, property.value);
}

void Fill(SparkplugMetric const& metric, schema::Metric& target) {
    if (!metric.name.empty()) {
        target.set_name(metric.name);
    }
    if (metric.alias) {
        target.set_alias(*metric.alias);
    }
    if (metric.timestamp) {
        target.set_timestamp(*metric.timestamp);
    }
    if (metric.type != SparkplugType::Unknown) {
        target.set_datatype(static_cast<std::uint32_t>(metric.type));
    }
    if (metric.isNull) {
        target.set_is_null(true);
    }
    for (SparkplugProperty const& property : metric.properties) {
        Fill(property, *target.mutable_properties());
    }
    std::visit(FieldSetter<schema::Metric>{target}, metric.value);
}

SparkplugValue ValueOf(schema::Metric const& metric) {
    switch (metric.value_case()) {
        case schema::Metric::kIntValue:
            return metric.int_value();
        case schema::Metric::kLongValue:
            return static_cast<std::uint64_t>(metric.long_value());
        case schema::Metric::kFloatValue:
            return metric.float_value();
        case schema::Metric::kDoubleValue:
            return metric.double_value();
        case schema::Metric::kBooleanValue:
            return metric.boolean_value();
        case schema::Metric::kStringValue:
            return metric.string_value();
        case schema::Metric::kBytesValue:
            return SparkplugBytes{metric.bytes_value()};
        case schema::Metric::VALUE_NOT_SET:
            break;
    }
    return {};
}

SparkplugMetric MetricOf(schema::Metric const& source) {
    SparkplugMetric metric;
    metric.name = source.name();
    if (source.has_alias()) {
        metric.alias = source.alias();
    }
    if (source.has_timestamp()) {
        metric.timestamp = source.timestamp();
    }
    metric.type = static_cast<SparkplugType>(source.datatype());
    metric.isNull = source.is_null();
    metric.value = ValueOf(source);
    return metric;
}

}  // namespace

std::string EncodePayload(SparkplugPayload const& payload) {
    schema::Payload message;
    if (payload.timestamp) {
        message.set_timestamp(*payload.timestamp);
    }
    for (SparkplugMetric const& metric : payload.metrics) {
        Fill(metric, *message.add_metrics());
    }
    if (payload.seq) {
        message.set_seq(*payload.seq);
    }
    return message.SerializeAsString();
}

std::optional<SparkplugPayload> DecodePayload(std::string_view octets) {
    schema::Payload message;
    if (octets.size() > LongestCommand ||
        !message.ParseFromArray(octets.data(), static_cast<int>(octets.size())) ||
        message.metrics_size() > static_cast<int>(MostCommandMetrics)) {
        return std::nullopt;
    }
    SparkplugPayload payload;
    if (message.has_timestamp()) {
        payload.timestamp = message.timestamp();
    }
    if (message.has_seq()) {
        payload.seq = message.seq();
    }
    for (schema::Metric const& metric : message.metrics()) {
        payload.metrics.push_back(MetricOf(metric));
    }
    return payload;
}

}  // namespace workbench
